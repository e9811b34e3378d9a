#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "core/SafeFile.h"

namespace quorbel {
namespace fs = std::filesystem;

namespace {
struct TempDir {
    TempDir() {
        std::string t = (fs::temp_directory_path() / "quorbel-core-XXXXXX").string();
        path = ::mkdtemp(t.data());
    }
    ~TempDir() { fs::remove_all(path); }
    fs::path path;
};

std::string Read(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
void Write(const fs::path& p, const std::string& s) { std::ofstream(p, std::ios::binary) << s; }
std::span<const uint8_t> Bytes(const std::string& s) {
    return {reinterpret_cast<const uint8_t*>(s.data()), s.size()};
}
int Entries(const fs::path& dir) { return static_cast<int>(std::distance(fs::directory_iterator(dir), {})); }
}  // namespace

TEST(SafeFile, ReplacingKeepsTheOldTimesAndPermissionsAndLeavesNoTemporary) {
    TempDir dir;
    const fs::path target = dir.path / "photo.jpg";
    Write(target, "old");
    ::chmod(target.c_str(), 0444);
    const timespec old[2] = {{1000000000, 5}, {1100000000, 7}};
    ::utimensat(AT_FDCWD, target.c_str(), old, 0);

    const std::string fresh = "new content";
    ASSERT_FALSE(ReplaceFileContents(target, Bytes(fresh)));
    struct stat st {};
    ::stat(target.c_str(), &st);  // before reading it back, which may touch the access time
    EXPECT_EQ(Read(target), fresh);
    EXPECT_EQ(st.st_mode & 07777, 0444u);  // a read-only file stays read-only
    EXPECT_EQ(st.st_mtim.tv_sec, 1100000000);
    EXPECT_EQ(st.st_mtim.tv_nsec, 7);
    EXPECT_EQ(st.st_atim.tv_sec, 1000000000);
    EXPECT_EQ(Entries(dir.path), 1);
}

TEST(SafeFile, ANewFileGetsTheCurrentTimeAndMustNotExistRefusesAnExistingOne) {
    TempDir dir;
    const fs::path target = dir.path / "new.png";
    const time_t before = ::time(nullptr);
    ASSERT_FALSE(ReplaceFileContents(target, Bytes("abc"), {.mustNotExist = true}));
    struct stat st {};
    ::stat(target.c_str(), &st);
    EXPECT_GE(st.st_mtime, before - 1);
    EXPECT_EQ(ReplaceFileContents(target, Bytes("xyz"), {.mustNotExist = true}),
              std::make_error_code(std::errc::file_exists));
    EXPECT_EQ(Read(target), "abc");
}

TEST(SafeFile, WritingThroughASymbolicLinkReplacesTheFileItNames) {
    TempDir dir;
    Write(dir.path / "real.bmp", "old");
    fs::create_symlink("real.bmp", dir.path / "link.bmp");
    ASSERT_FALSE(ReplaceFileContents(dir.path / "link.bmp", Bytes("new")));
    EXPECT_TRUE(fs::is_symlink(dir.path / "link.bmp"));
    EXPECT_EQ(Read(dir.path / "real.bmp"), "new");
}

TEST(SafeFile, AFailedWriteLeavesTheTargetAlone) {
    TempDir dir;
    // The folder is a regular file: nothing can be created there, even as root.
    Write(dir.path / "notafolder", "x");
    EXPECT_TRUE(ReplaceFileContents(dir.path / "notafolder" / "a.jpg", Bytes("data")));
    // A target that is a folder is refused and stays a folder.
    fs::create_directory(dir.path / "sub");
    EXPECT_TRUE(ReplaceFileContents(dir.path / "sub", Bytes("data")));
    EXPECT_TRUE(fs::is_directory(dir.path / "sub"));
    EXPECT_EQ(Entries(dir.path), 2);
}

TEST(SafeFile, OnlyOurOwnStaleTemporariesAreRemoved) {
    TempDir dir;
    for (const char* name : {".quorbel-a.jpg-Ab12Cd", ".quorbel-b.png-XYZ123", ".quorbel-c.jpg-new001",
                             "quorbel-a.jpg-Ab12Cd", ".quorbel-a.jpg-Ab!2Cd", "photo.jpg"})
        Write(dir.path / name, "x");
    const timespec old[2] = {{1000000000, 0}, {1000000000, 0}};
    for (const char* name : {".quorbel-a.jpg-Ab12Cd", ".quorbel-b.png-XYZ123", "quorbel-a.jpg-Ab12Cd",
                             ".quorbel-a.jpg-Ab!2Cd", "photo.jpg"})
        ::utimensat(AT_FDCWD, (dir.path / name).c_str(), old, 0);
    EXPECT_EQ(RemoveStaleTemporaries(dir.path), 2);
    EXPECT_FALSE(fs::exists(dir.path / ".quorbel-a.jpg-Ab12Cd"));
    EXPECT_TRUE(fs::exists(dir.path / ".quorbel-c.jpg-new001"));  // recent: may be a save in progress
    EXPECT_TRUE(fs::exists(dir.path / "quorbel-a.jpg-Ab12Cd"));
    EXPECT_TRUE(fs::exists(dir.path / ".quorbel-a.jpg-Ab!2Cd"));
    EXPECT_TRUE(fs::exists(dir.path / "photo.jpg"));
}

TEST(SafeFile, AVeryLongNameStillGetsATemporaryInTheSameFolder) {
    TempDir dir;
    const fs::path target = dir.path / (std::string(250, 'n') + ".jpg");
    ASSERT_FALSE(ReplaceFileContents(target, Bytes("ok")));
    EXPECT_EQ(Read(target), "ok");
}

}  // namespace quorbel
