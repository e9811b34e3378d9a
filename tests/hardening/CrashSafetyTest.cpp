// Kills at random moments: a batch that writes over its own source pictures, and a program
// rewriting its settings. Afterwards every file under a final name is the complete old or
// the complete new content, and every stray file is one of our temporaries, which the
// clean-up removes once stale.
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "Hardening.h"
#include "batch/BatchJob.h"
#include "core/SafeFile.h"
#include "output/Codecs.h"
#include "output/JpegCodec.h"
#include "settings/IniFile.h"

namespace quorbel {
namespace {

using namespace test;
using Clock = std::chrono::steady_clock;

// Starts argv with the given environment, kills it with SIGKILL after delay (counted from
// its first output when asked) unless it ended before; returns its standard output.
std::string KillAfter(const std::vector<std::string>& argv, std::chrono::microseconds delay,
                      const std::string& env = {}, bool fromFirstOutput = false) {
    int fds[2];
    if (::pipe(fds) != 0) return {};
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(fds[1], 1);
        ::close(fds[0]);
        if (!env.empty()) ::putenv(const_cast<char*>(env.c_str()));
        ::execl(argv[0].c_str(), argv[0].c_str(), argv.size() > 1 ? argv[1].c_str() : nullptr, nullptr);
        ::_exit(127);
    }
    ::close(fds[1]);
    std::string out;
    char buffer[4096];
    if (fromFirstOutput && ::read(fds[0], buffer, 1) == 1) out += buffer[0];
    std::this_thread::sleep_for(delay);
    ::kill(pid, SIGKILL);
    for (ssize_t n; (n = ::read(fds[0], buffer, sizeof buffer)) > 0;) out.append(buffer, size_t(n));
    ::close(fds[0]);
    ::waitpid(pid, nullptr, 0);
    return out;
}

// Each stray file must be our temporary and go at the clean-up once it is over a minute old.
void ExpectOnlyOurTemporaries(const fs::path& folder, const std::set<std::string>& finalNames) {
    const timespec old[2] = {{::time(nullptr) - 120, 0}, {::time(nullptr) - 120, 0}};
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (finalNames.count(name)) continue;
        EXPECT_TRUE(IsOurTemporaryName(name)) << name;
        ::utimensat(AT_FDCWD, entry.path().c_str(), old, 0);
    }
    RemoveStaleTemporaries(folder);
    size_t left = 0;
    for (const auto& entry : fs::directory_iterator(folder)) left += !finalNames.count(entry.path().filename().string());
    EXPECT_EQ(left, 0u);
}

TEST(CrashSafety, ABatchKilledAnywhereLeavesEachPictureWholeOldOrWholeNew) {
    ScratchDir dir;
    const fs::path photos = dir.path / "photos";
    fs::create_directory(photos);
    std::map<std::string, Bytes> olds;
    for (int i = 0; i < 8; ++i) {
        cDib d;
        d.Create(320, 240, 0x203040 * (i + 1));
        Bytes bytes;
        const std::string name = "photo" + std::to_string(i) + (i % 2 ? ".png" : ".jpg");
        ASSERT_TRUE(i % 2 ? EncodePng(d, bytes) : EncodeJpeg(d.View(), 90, bytes) == kJpegOk);
        olds[name] = bytes;
    }
    BatchJob job;
    job.source = job.target = photos.string();
    job.preset = "Custom";
    job.width = 160, job.height = 120;
    job.overwrite = OverwritePolicy::YesToAll;
    ASSERT_FALSE(SaveBatchJob(job, dir.path / "job.ini"));
    const std::vector<std::string> argv = {QUORBEL_BATCH, (dir.path / "job.ini").string()};
    std::set<std::string> finalNames;
    for (const auto& [name, bytes] : olds) finalNames.insert(name);
    auto restore = [&] {
        for (const auto& [name, bytes] : olds) WriteBytes(photos / name, bytes);
    };

    // A run to the end shows how long the kill window is.
    restore();
    const auto start = Clock::now();
    ASSERT_EQ(RunChild(argv), 0);
    const auto full = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);

    std::mt19937 random(8);
    int killedMidway = 0;
    for (int run = 0; run < 60; ++run) {
        restore();
        const auto delay = std::chrono::microseconds(random() % (full.count() + 1));
        KillAfter(argv, delay);
        int replaced = 0;
        for (const auto& [name, bytes] : olds) {
            const Bytes now = ReadBytes(photos / name);
            if (now == bytes) continue;
            ++replaced;
            DecodedPicture picture;
            EXPECT_TRUE(DecodePicture(now, picture)) << name << " run " << run;
            EXPECT_EQ(picture.pixels.Width(), 160) << name << " run " << run;
        }
        killedMidway += replaced > 0 && replaced < int(olds.size());
        ExpectOnlyOurTemporaries(photos, finalNames);
    }
    std::printf("60 kills within %.0f ms, %d of them between the first and the last picture\n",
                full.count() / 1000.0, killedMidway);
}

TEST(CrashSafety, SettingsKilledWhileWritingReadBackAsTheLastOrTheNextWrite) {
    ScratchDir dir;
    const std::string env = "XDG_CONFIG_HOME=" + dir.path.string();
    std::mt19937 random(9);
    fs::path file;
    int stored = 0;  // the counter the file held before this run
    for (int run = 0; run < 50; ++run) {
        const std::string out = KillAfter({QUORBEL_SETTINGS_WRITER}, std::chrono::microseconds(random() % 20000), env, true);
        int done = stored;  // the last write known complete
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) done = std::stoi(line);
        if (file.empty())
            for (const auto& e : fs::recursive_directory_iterator(dir.path))
                if (e.path().extension() == ".ini") file = e.path();
        const IniFile ini = IniFile::Load(file);
        ASSERT_EQ(ini.State(), IniFileState::Read);
        const int counter = std::stoi(ini.Get("Kill", "Counter").value_or("0"));
        EXPECT_TRUE(counter == done || counter == done + 1) << counter << " after " << done;
        stored = counter;
        EXPECT_EQ(ini.Get("Kill", "Payload"), std::string(8192, char('a' + counter % 26)));
        ExpectOnlyOurTemporaries(file.parent_path(), {file.filename().string()});
    }
    EXPECT_GE(stored, 50);  // every kill landed among writes
}

}  // namespace
}  // namespace quorbel
