#!/usr/bin/env python3
"""The standard batch jobs, run by quorbel-batch and by the peer tools on the same pictures.

    bench/batch_peers.py QUORBEL_BATCH CORPUS OUT.md [RUNS]

Jobs: fit into 640x480 as JPEG q85, fit into 1920x1080 as JPEG q85, fit into 640x480 as
PNG; every picture of CORPUS (JPEG, PNG, TIFF). Each tool runs each job on one core and on
all cores, RUNS times (default 3); the table gives the median whole-run time per picture,
pictures per second, the peak memory of the run and each peer's time as a multiple of ours.
On all cores the peers, which take one picture at a time, run one process per core
(xargs -P), each held to one thread; quorbel-batch uses its own worker threads.
"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

JOBS = [  # name, width, height, output type text, extension, quality
    ("fit 640x480 JPEG q85", 640, 480, "JPEG (*.jpg)", "jpg", 85),
    ("fit 1920x1080 JPEG q85", 1920, 1080, "JPEG (*.jpg)", "jpg", 85),
    ("fit 640x480 PNG", 640, 480, "PNG (*.png)", "png", None),
]
ONE_THREAD = {"MAGICK_THREAD_LIMIT": "1", "OMP_NUM_THREADS": "1", "VIPS_CONCURRENCY": "1"}

PILLOW = r"""
import os, sys
from PIL import Image
w, h, ext, q, out = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3], sys.argv[4], sys.argv[5]
for path in sys.argv[6:]:
    im = Image.open(path)
    im.thumbnail((w, h), Image.LANCZOS)
    name = os.path.join(out, os.path.splitext(os.path.basename(path))[0] + "." + ext)
    if ext == "jpg":
        im.convert("RGB").save(name, quality=int(q))
    else:
        im.save(name)
"""


def peer_commands(pillow_script, w, h, ext, quality):
    """Each peer as a function of (output folder, files) giving one process's command."""
    q = str(quality or 0)
    return {
        "vipsthumbnail": lambda out, files: ["vipsthumbnail", "--size", f"{w}x{h}>", "-o",
                                             os.path.join(out, "%s." + ext + (f"[Q={q}]" if quality else ""))] + files,
        "ImageMagick mogrify": lambda out, files: ["mogrify", "-path", out, "-resize", f"{w}x{h}>"]
        + (["-quality", q] if quality else []) + ["-format", ext] + files,
        "GraphicsMagick mogrify": lambda out, files: ["gm", "mogrify", "-create-directories", "-output-directory", out, "-resize", f"{w}x{h}>"]
        + (["-quality", q] if quality else []) + ["-format", ext] + files,
        "Pillow": lambda out, files: ["/usr/bin/python3", pillow_script, str(w), str(h), ext, q, out] + files,
    }


def timed(argv, env):
    """Seconds and peak resident memory (MiB) of one command, through GNU time."""
    with tempfile.NamedTemporaryFile("r", suffix=".time") as report:
        start = time.perf_counter()
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name] + argv, env=env, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        seconds = time.perf_counter() - start
        return seconds, int(report.read().split()[-1]) / 1024


def write_job(path, source, target, w, h, type_text, quality):
    with open(path, "w") as f:
        f.write("[Job]\nType=Resize\n")
        f.write(f"Source={source}\nTarget={target}\nPreset=Custom\nWidth={w}\nHeight={h}\nUnit=Pixels\n")
        f.write("KeepAspect=1\nResample=1\nBestFit=1\nForceResize=0\n")
        f.write(f"OutputType={type_text}\nQuality={quality or 'Highest Quality'}\nOverwrite=YesToAll\n")


def main():
    batch, corpus, report = sys.argv[1], os.path.abspath(sys.argv[2]), sys.argv[3]
    runs = int(sys.argv[4]) if len(sys.argv) > 4 else 3
    files = sorted(os.path.join(corpus, n) for n in os.listdir(corpus)
                   if n.lower().endswith((".jpg", ".jpeg", ".png", ".tif", ".tiff")))
    cores = os.cpu_count() or 1
    work = tempfile.mkdtemp(prefix="quorbel-bench-")
    pillow_script = os.path.join(work, "pillow_fit.py")
    with open(pillow_script, "w") as f:
        f.write(PILLOW)
    base_env = dict(os.environ)
    lines = [f"# Batch jobs against the peers\n",
             f"{len(files)} pictures of `{os.path.basename(corpus)}`, {cores} cores, {runs} runs each, "
             f"median of whole runs (process start, decode, resize, encode, write), "
             f"{time.strftime('%Y-%m-%d %H:%M UTC', time.gmtime())}. "
             f"Ratio = the tool's time / quorbel-batch's time (above 1: we are faster).\n"]
    try:
        for name, w, h, type_text, ext, quality in JOBS:
            lines.append(f"\n## {name}\n")
            lines.append("| tool | cores | ms per picture | pictures/s | peak MiB | ratio |")
            lines.append("|:---|---:|---:|---:|---:|---:|")
            for mode in ("1", "all"):
                results = []
                out = os.path.join(work, "out")
                job = os.path.join(work, "job.ini")
                write_job(job, corpus, out, w, h, type_text, quality)
                threads = "1" if mode == "1" else str(cores)
                tools = [("quorbel-batch", [batch, job, "--threads", threads], base_env)]
                for peer, make in peer_commands(pillow_script, w, h, ext, quality).items():
                    env = dict(base_env, **ONE_THREAD)
                    if mode == "1":
                        argv = make(out, files)
                    else:  # one process per picture, as many at once as there are cores
                        argv = ["sh", "-c", 'printf "%s\\0" "$@" | xargs -0 -n 1 -P ' + str(cores) + " "
                                + " ".join(f"'{a}'" for a in make(out, [])) + "", "sh"] + files
                    tools.append((peer, argv, env))
                for tool, argv, env in tools:
                    times, peaks = [], []
                    for _ in range(runs):
                        shutil.rmtree(out, ignore_errors=True)
                        os.makedirs(out)
                        seconds, peak = timed(argv, env)
                        written = sum(len(names) for _, _, names in os.walk(out))
                        if written < len(files):
                            raise SystemExit(f"{tool} wrote {written} of {len(files)} pictures for {name}")
                        times.append(seconds)
                        peaks.append(peak)
                    results.append((tool, statistics.median(times), max(peaks)))
                ours = results[0][1]
                for tool, seconds, peak in results:
                    lines.append(f"| {tool} | {mode} | {1000 * seconds / len(files):.1f} | "
                                 f"{len(files) / seconds:.1f} | {peak:.0f} | {seconds / ours:.2f} |")
                print(f"{name}, {mode} core(s): done", file=sys.stderr)
    finally:
        shutil.rmtree(work, ignore_errors=True)
    with open(report, "w") as f:
        f.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
