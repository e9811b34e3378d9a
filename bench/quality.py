#!/usr/bin/python3
"""PSNR and SSIM of pictures against a reference: quality.py REF.ppm A.ppm [B.ppm ...]

PPM files of 8 or 16 bits per channel. PSNR over R, G and B with a peak of 255; SSIM after
Wang et al. (Gaussian window 11 x 11, sigma 1.5), averaged over R, G and B.
"""
import sys

import numpy as np


def read_ppm(path):
    with open(path, "rb") as f:
        data = f.read()
    fields, pos = [], 0
    while len(fields) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        if data[pos:pos + 1] == b"#":
            pos = data.index(b"\n", pos) + 1
            continue
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        fields.append(data[pos:end])
        pos = end
    pos += 1
    magic, w, h, maxval = fields[0], int(fields[1]), int(fields[2]), int(fields[3])
    assert magic == b"P6", path
    dtype = np.dtype(">u2") if maxval > 255 else np.uint8
    pixels = np.frombuffer(data, dtype=dtype, count=w * h * 3, offset=pos).reshape(h, w, 3)
    return pixels.astype(np.float64) * (255.0 / maxval)


def gaussian_filter(img, sigma=1.5, radius=5):
    x = np.arange(-radius, radius + 1)
    k = np.exp(-(x * x) / (2 * sigma * sigma))
    k /= k.sum()
    out = np.zeros((img.shape[0], img.shape[1] - 2 * radius))
    for i, w in enumerate(k):
        out += w * img[:, i:i + out.shape[1]]
    out2 = np.zeros((img.shape[0] - 2 * radius, out.shape[1]))
    for i, w in enumerate(k):
        out2 += w * out[i:i + out2.shape[0], :]
    return out2


def ssim_channel(a, b):
    c1, c2 = (0.01 * 255) ** 2, (0.03 * 255) ** 2
    mu_a, mu_b = gaussian_filter(a), gaussian_filter(b)
    saa = gaussian_filter(a * a) - mu_a * mu_a
    sbb = gaussian_filter(b * b) - mu_b * mu_b
    sab = gaussian_filter(a * b) - mu_a * mu_b
    s = ((2 * mu_a * mu_b + c1) * (2 * sab + c2)) / ((mu_a ** 2 + mu_b ** 2 + c1) * (saa + sbb + c2))
    return s.mean()


def main():
    ref = read_ppm(sys.argv[1])
    for path in sys.argv[2:]:
        img = read_ppm(path)
        if img.shape != ref.shape:
            print(f"{path}: size {img.shape} differs from the reference {ref.shape}")
            continue
        mse = ((img - ref) ** 2).mean()
        psnr = float("inf") if mse == 0 else 10 * np.log10(255.0 ** 2 / mse)
        ssim = np.mean([ssim_channel(img[:, :, c], ref[:, :, c]) for c in range(3)])
        print(f"{path}: PSNR {psnr:.2f} dB  SSIM {ssim:.4f}")


if __name__ == "__main__":
    main()
