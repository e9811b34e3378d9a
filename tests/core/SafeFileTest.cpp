#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <string>

#include "Scratch.h"
#include "core/SafeFile.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

std::span<const uint8_t> Data(std::string_view s) { return {reinterpret_cast<const uint8_t*>(s.data()), s.size()}; }
int Entries(const fs::path& dir) { return static_cast<int>(std::distance(fs::directory_iterator(dir), {})); }
void SetTimes(const fs::path& p, timespec access, timespec modified) {
    const timespec t[2] = {access, modified};
    ::utimensat(AT_FDCWD, p.c_str(), t, 0);
}

TEST(SafeFile, ReplacingKeepsTheOldTimesAndPermissionsAndLeavesNoTemporary) {
    ScratchDir dir;
    const fs::path target = dir / "photo.jpg";
    WriteText(target, "old");
    ::chmod(target.c_str(), 0444);
    SetTimes(target, {1000000000, 5}, {1100000000, 7});

    ASSERT_FALSE(ReplaceFileContents(target, Data("new content")));
    struct stat st {};
    ::stat(target.c_str(), &st);  // before reading it back, which may touch the access time
    EXPECT_EQ(ReadText(target), "new content");
    EXPECT_EQ(st.st_mode & 07777, 0444u);  // a read-only file stays read-only
    EXPECT_EQ(st.st_mtim.tv_sec, 1100000000);
    EXPECT_EQ(st.st_mtim.tv_nsec, 7);
    EXPECT_EQ(st.st_atim.tv_sec, 1000000000);
    EXPECT_EQ(Entries(dir.path), 1);
}

TEST(SafeFile, ANewFileGetsTheCurrentTimeAndMustNotExistRefusesAnExistingOne) {
    ScratchDir dir;
    const fs::path target = dir / "new.png";
    const time_t before = ::time(nullptr);
    ASSERT_FALSE(ReplaceFileContents(target, Data("abc"), {.mustNotExist = true}));
    struct stat st {};
    ::stat(target.c_str(), &st);
    EXPECT_GE(st.st_mtime, before - 1);
    EXPECT_EQ(ReplaceFileContents(target, Data("xyz"), {.mustNotExist = true}),
              std::make_error_code(std::errc::file_exists));
    EXPECT_EQ(ReadText(target), "abc");
}

TEST(SafeFile, WritingThroughASymbolicLinkReplacesTheFileItNames) {
    ScratchDir dir;
    WriteText(dir / "real.bmp", "old");
    fs::create_symlink("real.bmp", dir / "link.bmp");
    ASSERT_FALSE(ReplaceFileContents(dir / "link.bmp", Data("new")));
    EXPECT_TRUE(fs::is_symlink(dir / "link.bmp"));
    EXPECT_EQ(ReadText(dir / "real.bmp"), "new");
}

// Each failure root meets too: nothing new stays in the folder and what was there is intact.
TEST(SafeFile, AFailedReplacementLeavesNoTemporaryAndTheOldContent) {
    const std::string tooLong(300, 'n');  // over the 255-byte name limit: the rename itself is refused
    const struct {
        const char* what;
        fs::path target;
        ReplaceOptions options;
    } cases[] = {
        {"inside a file", "notafolder/a.jpg", {}},
        {"a folder", "sub", {}},
        {"a name the rename refuses", tooLong + ".jpg", {}},
        {"a name the rename refuses, must not exist", tooLong + ".png", {.mustNotExist = true}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchDir dir;
        WriteText(dir / "notafolder", "old");
        WriteText(dir / "sub" / "kept.jpg", "old");
        EXPECT_TRUE(ReplaceFileContents(dir / c.target, Data("data"), c.options));
        EXPECT_EQ(Entries(dir.path), 2);
        EXPECT_EQ(Entries(dir / "sub"), 1);
        EXPECT_EQ(ReadText(dir / "notafolder"), "old");
        EXPECT_EQ(ReadText(dir / "sub" / "kept.jpg"), "old");
    }
}

TEST(SafeFile, OnlyOurOwnStaleTemporariesAreRemoved) {
    ScratchDir dir;
    const struct {
        const char* name;
        bool old, removed;
    } files[] = {
        {".quorbel-a.jpg-Ab12Cd", true, true}, {".quorbel-b.png-XYZ123", true, true},
        {".quorbel-c.jpg-new001", false, false},  // recent: may be a save in progress
        {"quorbel-a.jpg-Ab12Cd", true, false},    {".quorbel-a.jpg-Ab!2Cd", true, false},
        {"photo.jpg", true, false},
    };
    for (const auto& f : files) {
        WriteText(dir / f.name, "x");
        if (f.old) SetTimes(dir / f.name, {1000000000, 0}, {1000000000, 0});
    }
    EXPECT_EQ(RemoveStaleTemporaries(dir.path), 2);
    for (const auto& f : files) EXPECT_NE(fs::exists(dir / f.name), f.removed) << f.name;
}

TEST(SafeFile, AVeryLongNameStillGetsATemporaryInTheSameFolder) {
    ScratchDir dir;
    const fs::path target = dir / (std::string(250, 'n') + ".jpg");
    ASSERT_FALSE(ReplaceFileContents(target, Data("ok")));
    EXPECT_EQ(ReadText(target), "ok");
}

}  // namespace
}  // namespace quorbel
