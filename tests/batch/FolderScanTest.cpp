#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>

#include "batch/BatchSession.h"
#include "output/Codecs.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

class FolderScanTest : public testing::Test {
protected:
    void SetUp() override {
        root_ = fs::path(testing::TempDir()) /
                ("folder_scan_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root_);
        fs::create_directories(root_);
    }
    void TearDown() override {
        ::chmod((root_ / "src/RO").c_str(), 0755);
        fs::remove_all(root_);
    }
    std::string Dir(const std::string& relative) {
        fs::create_directories(root_ / relative);
        return (root_ / relative).string() + "/";
    }
    void Picture(const std::string& relative, int w, int h) {
        cDib dib;
        ASSERT_TRUE(dib.Create(w, h));
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(EncodePng(dib, bytes));
        std::ofstream(root_ / relative, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                                 static_cast<std::streamsize>(bytes.size()));
    }
    fs::path root_;
};

TEST_F(FolderScanTest, DirectSubfoldersComeBeforeTheirDescendantsAndOnlyPlainFoldersCount) {
    const std::string src = Dir("src");
    for (const char* d : {"src/A/A1/A1x", "src/B/B1", "src/RO/inside", "src/.hidden", "src/\xff\xfe"}) Dir(d);
    ::chmod((root_ / "src/RO").c_str(), 0555);                  // read-only: 17
    fs::create_directory_symlink(root_ / "src", root_ / "src/A/loop");  // a link back up: never followed
    // The recursive scan's order, not breadth-first (which would put B1 before A1x).
    EXPECT_EQ(ScanSubfolders(src), (std::vector<std::string>{src + "A/", src + "B/", src + "\xff\xfe/", src + "A/A1/",
                                                             src + "A/A1/A1x/", src + "B/B1/"}));
    EXPECT_EQ(FolderAttributes(src + "RO"), 17);
    EXPECT_EQ(FolderAttributes(src + ".hidden"), 18);
    EXPECT_EQ(FolderAttributes(src + "A/loop"), 16 + 1024);
    EXPECT_TRUE(ScanSubfolders(src + "missing").empty());
}

TEST_F(FolderScanTest, MirroredTargetsReplaceTheSourceRootCaseSensitively) {
    EXPECT_EQ(MirrorTarget("/p/src/A/A1/", "/p/src/", "/q/out/"), "/q/out/A/A1/");
    EXPECT_EQ(MirrorTarget("/P/SRC/A/", "/p/src/", "/q/out/"), "/P/SRC/A/");
    // Every occurrence from the first on.
    EXPECT_EQ(MirrorTarget("/a/b/a/", "/a/", "/t/"), "/t/b/t/");
}

TEST_F(FolderScanTest, TheFileFilterDecidesWhatAListingAdmits) {
    const std::string src = Dir("src");
    for (const char* f : {"a.JPG", "b.tiff", "c.txt", "noext", "\xff.png"}) std::ofstream(src + f) << "x";
    Dir("src/folder.jpg");
    ASSERT_EQ(::mkfifo((src + "pipe.png").c_str(), 0644), 0);
    auto names = [&](const PictureFilter& filter) {
        std::vector<std::string> out;
        for (const fs::path& p : ListPictures(src, filter)) out.push_back(p.filename().string());
        return out;
    };
    EXPECT_EQ(names(PictureFilter()), (std::vector<std::string>{"a.JPG", "b.tiff", "\xff.png"}));
    const PictureFilter narrow = PictureFilter::FromText("*.png; JPG");
    EXPECT_EQ(narrow.Text(), "png;jpg");
    EXPECT_EQ(names(narrow), (std::vector<std::string>{"a.JPG", "\xff.png"}));
    EXPECT_EQ(PictureFilter::FromText(" ; "), PictureFilter());
}

TEST_F(FolderScanTest, ARunOverSubfoldersMirrorsTheTreeAndKeepsNumbering) {
    Dir("src/A/A1");
    Dir("src/B");
    Dir("out");
    Picture("src/root.png", 40, 20);
    Picture("src/A/a.png", 40, 20);
    Picture("src/A/A1/deep.png", 20, 40);
    BatchJob job;
    job.source = (root_ / "src").string();
    job.target = (root_ / "out").string();
    job.subfolders = true;
    job.createSubfolder = true;
    job.rename = true;
    job.newName = "Trip";
    job.preset = "Custom";
    job.width = 20;
    job.height = 10;
    const BatchRunReport report = RunBatchTree(job);
    EXPECT_EQ(report.written, 3);
    // Numbers go on from folder to folder; the empty B is mirrored too.
    const fs::path out = root_ / "out/Trip";
    EXPECT_EQ(report.outputs, (std::vector<fs::path>{out / "Trip_001.png", out / "A/Trip_002.png",
                                                     out / "A/A1/Trip_003.png"}));
    EXPECT_TRUE(fs::is_directory(out / "B"));
}

TEST(BatchSize, APortraitPictureFitsTheBoxTurned) {
    BatchJob job;
    job.preset = "Custom";
    job.width = 640;
    job.height = 480;
    // 3000 × 4000 into 480 × 640: both ratios 0.16.
    EXPECT_EQ(BatchTargetSize(job, 3000, 4000), (PixelSize{480, 640}));
    EXPECT_EQ(BatchTargetSize(job, 4000, 3000), (PixelSize{640, 480}));
    EXPECT_EQ(BatchTargetSize(job, 2000, 2000), (PixelSize{480, 480}));
    // Keep aspect alone: the turned box's width 480, 480 / 1000 × 3000 = 1440.
    job.bestFit = false;
    EXPECT_EQ(BatchTargetSize(job, 1000, 3000), (PixelSize{480, 1440}));
    job.bestFit = true;
    job.fitTurned = false;
    EXPECT_EQ(BatchTargetSize(job, 3000, 4000), (PixelSize{360, 480}));
}

}  // namespace
}  // namespace quorbel
