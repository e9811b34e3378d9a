// Awkward file systems: odd names, read-only folders (as an ordinary user), a full disk,
// a target on another file system, link loops, FIFOs and a folder of 10,000 pictures.
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <set>

#include "Hardening.h"
#include "batch/BatchRun.h"
#include "batch/FolderScan.h"
#include "output/Codecs.h"

namespace quorbel {
namespace {

using namespace test;

Bytes SmallBmp(int w, int h) {
    cDib d;
    d.Create(w, h, 0x336699);
    Bytes bytes;
    EncodeBmp(d, bytes);
    return bytes;
}

BatchJob Job(const fs::path& source, const fs::path& target) {
    BatchJob job;
    job.source = source.string();
    job.target = target.string();
    job.overwrite = OverwritePolicy::YesToAll;
    return job;
}

std::set<std::string> NamesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& e : fs::directory_iterator(folder)) names.insert(e.path().filename().string());
    return names;
}

TEST(FileSystem, OddNamesAreReadAndWrittenByteForByteAlsoOntoAnotherFileSystem) {
    ScratchDir dir, shm;
    const std::set<std::string> names = {
        "with  two spaces .bmp", "quote's \"double\" `back`.bmp", "-leading-dash.bmp", "--.bmp",
        "Ünïcödé фото 写真.bmp", "bad\xff\xfe\xc3(utf8.bmp", std::string(251, 'n') + ".bmp"};
    ASSERT_EQ((std::string(251, 'n') + ".bmp").size(), 255u);
    fs::create_directory(dir.path / "in");
    for (const auto& name : names) WriteBytes(dir.path / "in" / name, SmallBmp(3, 2));
    // /dev/shm is a file system of its own: the temporary file must not cross it.
    const fs::path shmTarget = fs::exists("/dev/shm") ? fs::path("/dev/shm") / shm.path.filename() : dir.path / "shm";
    for (const fs::path& target : {dir.path / "out", shmTarget}) {
        fs::create_directories(target);
        const BatchRunReport report = RunBatch(Job(dir.path / "in", target), {});
        EXPECT_EQ(report.written, int(names.size())) << report.FailureText();
        EXPECT_EQ(NamesIn(target), names);
        fs::remove_all(target);
    }
}

// Read-only folders as an ordinary user (root would pass vacuously): runs quorbel-batch as
// nobody via setpriv when the test runs as root.
TEST(FileSystem, ReadOnlyFoldersKeepEveryFileAndSayWhy) {
    if (::geteuid() == 0 && !fs::exists("/usr/bin/setpriv")) GTEST_SKIP() << "no setpriv to drop root";
    ScratchDir dir;
    const uid_t nobody = ::geteuid() == 0 ? 65534 : ::geteuid();
    fs::permissions(dir.path, fs::perms(0755));
    auto folder = [&](const char* name, bool writable) {
        const fs::path p = dir.path / name;
        fs::create_directory(p);
        WriteBytes(p / "a.bmp", SmallBmp(4, 4));
        ::chown(p.c_str(), nobody, nobody);
        fs::permissions(p, fs::perms(writable ? 0755 : 0555));
        return p;
    };
    const fs::path readOnly = folder("ro", false), writable = folder("rw", true);
    const Bytes old = ReadBytes(readOnly / "a.bmp");
    struct Case {
        fs::path source, target;
        int exitCode;
        const char* says;
    } cases[] = {
        {readOnly, writable, 0, "1 written"},
        {writable, readOnly, 1, "The target folder cannot be written: Permission denied"},
        {readOnly, readOnly, 1, "The target folder cannot be written: Permission denied"},
    };
    for (const Case& c : cases) {
        BatchJob job = Job(c.source, c.target);
        job.preset = "Custom", job.width = 2, job.height = 2;
        const fs::path jobFile = dir.path / "job.ini";
        ASSERT_FALSE(SaveBatchJob(job, jobFile));
        std::string out;
        std::vector<std::string> argv = {QUORBEL_BATCH, jobFile.string()};
        if (::geteuid() == 0)
            argv.insert(argv.begin(), {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
        const int status = RunChild(argv, &out, [] { ::dup2(1, 2); });
        EXPECT_EQ(WEXITSTATUS(status), c.exitCode) << out;
        EXPECT_NE(out.find(c.says), std::string::npos) << out;
        EXPECT_EQ(ReadBytes(readOnly / "a.bmp"), old);
        EXPECT_EQ(NamesIn(readOnly), std::set<std::string>{"a.bmp"});
    }
}

// A file size limit stands in for a full disk: the old files stay whole, no temporary is left.
TEST(FileSystem, AFullDiskLeavesTheOldFilesWhole) {
    ScratchDir dir;
    fs::create_directory(dir.path / "in");
    fs::create_directory(dir.path / "out");
    for (const char* name : {"a.bmp", "b.bmp"}) {
        WriteBytes(dir.path / "in" / name, SmallBmp(200, 100));  // 60 KB out
        WriteBytes(dir.path / "out" / name, SmallBmp(4, 4));
    }
    const Bytes old = ReadBytes(dir.path / "out" / "a.bmp");
    ASSERT_FALSE(SaveBatchJob(Job(dir.path / "in", dir.path / "out"), dir.path / "job.ini"));
    std::string out;
    const int status = RunChild({QUORBEL_BATCH, (dir.path / "job.ini").string()}, &out, [] {
        const rlimit limit{16384, 16384};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::signal(SIGXFSZ, SIG_IGN);
    });
    EXPECT_EQ(WEXITSTATUS(status), 1) << out;
    EXPECT_NE(out.find("failed   a.bmp could not be written: File too large"), std::string::npos) << out;
    EXPECT_EQ(ReadBytes(dir.path / "out" / "a.bmp"), old);
    EXPECT_EQ(ReadBytes(dir.path / "out" / "b.bmp"), old);
    EXPECT_EQ(NamesIn(dir.path / "out"), (std::set<std::string>{"a.bmp", "b.bmp"}));
}

// A job file named like an option runs after "--" and is refused without it.
TEST(FileSystem, AJobFileStartingWithADashRunsAfterTheEndOfOptions) {
    ScratchDir dir;
    fs::create_directory(dir.path / "in");
    WriteBytes(dir.path / "in" / "a.bmp", SmallBmp(2, 2));
    ASSERT_FALSE(SaveBatchJob(Job(dir.path / "in", dir.path / "out"), dir.path / "-job.ini"));
    const std::string folder = dir.path.string();
    auto run = [&](std::vector<std::string> argv, std::string* out) {
        return WEXITSTATUS(RunChild(argv, out, [&] {
            if (::chdir(folder.c_str()) != 0) ::_exit(99);
            ::dup2(1, 2);
        }));
    };
    std::string out;
    EXPECT_EQ(run({QUORBEL_BATCH, "-job.ini"}, &out), 2) << out;
    EXPECT_NE(out.find("usage:"), std::string::npos) << out;
    EXPECT_FALSE(fs::exists(dir.path / "out"));
    EXPECT_EQ(run({QUORBEL_BATCH, "--threads", "1", "--", "-job.ini"}, &out), 0) << out;
    EXPECT_EQ(NamesIn(dir.path / "out"), std::set<std::string>{"a.bmp"});
}

// Link loops, dangling links and a FIFO named like a picture: nothing hangs, only the real
// picture is listed, and the subfolder scan never follows a link.
TEST(FileSystem, LinkLoopsAndFifosAreNeitherFollowedNorOpened) {
    ScratchDir dir;
    const fs::path root = dir.path / "root";
    fs::create_directories(root / "a" / "b");
    WriteBytes(root / "real.bmp", SmallBmp(2, 2));
    fs::create_directory_symlink("../..", root / "a" / "b" / "up");
    fs::create_directory_symlink(".", root / "a" / "self");
    fs::create_symlink("loop.bmp", root / "loop.bmp");
    fs::create_symlink("ping.bmp", root / "pong.bmp");
    fs::create_symlink("pong.bmp", root / "ping.bmp");
    ASSERT_EQ(::mkfifo((root / "fifo.bmp").c_str(), 0644), 0);
    EXPECT_EQ(ListPictures(root, PictureFilter()), std::vector<fs::path>{root / "real.bmp"});
    const std::string r = WithTrailingSlash(root.string());
    EXPECT_EQ(ScanSubfolders(root.string()), (std::vector<std::string>{r + "a/", r + "a/b/"}));
    fs::create_directory(dir.path / "out");
    EXPECT_EQ(RunBatch(Job(root, dir.path / "out"), {}).written, 1);
}

TEST(FileSystem, TenThousandPicturesInOneFolderAreAllListedAndWritten) {
    ScratchDir dir(fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());  // in memory: fast
    const fs::path in = dir.path / "in", outFolder = dir.path / "out";
    fs::create_directory(in);
    fs::create_directory(outFolder);
    const Bytes tiny = SmallBmp(1, 1);
    for (int i = 0; i < 10000; ++i) WriteBytes(in / (std::to_string(i) + ".bmp"), tiny);
    const auto start = std::chrono::steady_clock::now();
    const BatchRunReport report = RunBatch(Job(in, outFolder), {});
    std::printf("10,000 pictures in %.2f s\n",
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    EXPECT_EQ(report.written, 10000);
    EXPECT_EQ(NamesIn(outFolder), NamesIn(in));
}

}  // namespace
}  // namespace quorbel
