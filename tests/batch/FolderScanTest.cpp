#include <gtest/gtest.h>

#include <sys/stat.h>

#include "Pictures.h"
#include "Scratch.h"
#include "batch/BatchSession.h"
#include "output/Codecs.h"

namespace quorbel {
namespace {

using namespace test;

std::vector<std::string> Names(const std::vector<fs::path>& files) {
    std::vector<std::string> names;
    for (const fs::path& f : files) names.push_back(f.filename().string());
    return names;
}

TEST(FolderScan, DirectSubfoldersComeBeforeTheirDescendantsAndOnlyPlainFoldersCount) {
    const ScratchDir dir;
    const std::string src = (dir / "src/").string();
    for (const char* d : {"A/A1/A1x", "B/B1", "RO/inside", ".hidden", "\xff\xfe"}) fs::create_directories(src + d);
    ::chmod((src + "RO").c_str(), 0555);                        // read-only: 17
    fs::create_directory_symlink(src, src + "A/loop");  // a link back up: never followed
    // The recursive scan's order, not breadth-first (which would put B1 before A1x).
    EXPECT_EQ(ScanSubfolders(src), (std::vector<std::string>{src + "A/", src + "B/", src + "\xff\xfe/", src + "A/A1/",
                                                             src + "A/A1/A1x/", src + "B/B1/"}));
    EXPECT_EQ(FolderAttributes(src + "RO"), 17);
    EXPECT_EQ(FolderAttributes(src + ".hidden"), 18);
    EXPECT_EQ(FolderAttributes(src + "A/loop"), 16 + 1024);
    EXPECT_TRUE(ScanSubfolders(src + "missing").empty());
    // Every occurrence of the source root from the first on, case-sensitively.
    EXPECT_EQ(MirrorTarget("/p/src/A/A1/", "/p/src/", "/q/out/"), "/q/out/A/A1/");
    EXPECT_EQ(MirrorTarget("/P/SRC/A/", "/p/src/", "/q/out/"), "/P/SRC/A/");
    EXPECT_EQ(MirrorTarget("/a/b/a/", "/a/", "/t/"), "/t/b/t/");
}

TEST(FolderScan, TheFileFilterDecidesWhatAListingAdmits) {
    const ScratchDir dir;
    for (const char* f : {"a.JPG", "b.tiff", "c.txt", "noext", "\xff.png"}) WriteText(dir / f, "x");
    fs::create_directories(dir / "folder.jpg");
    EXPECT_EQ(Names(ListPictures(dir.path, PictureFilter())), (std::vector<std::string>{"a.JPG", "b.tiff", "\xff.png"}));
    const PictureFilter narrow = PictureFilter::FromText("*.png; JPG");
    EXPECT_EQ(narrow.Text(), "png;jpg");
    EXPECT_EQ(Names(ListPictures(dir.path, narrow)), (std::vector<std::string>{"a.JPG", "\xff.png"}));
    EXPECT_EQ(PictureFilter::FromText(" ; "), PictureFilter());
    EXPECT_EQ(PictureFilter().Text(), "bmp;gif;jpg;jpeg;png;tif;tiff;ico;webp;avif;heic;heif");
}

TEST(FolderScan, ARunOverSubfoldersMirrorsTheTreeAndKeepsNumbering) {
    const ScratchDir dir;
    fs::create_directories(dir / "src/B");
    fs::create_directories(dir / "out");
    Bytes png;
    ASSERT_TRUE(EncodePng(Grainy(40, 20), png));
    for (const char* f : {"src/root.png", "src/A/a.png", "src/A/A1/deep.png"}) WriteBytes(dir / f, png);
    BatchJob job = BatchJobFromIni(IniFile::FromText(
        "[Job]\nSubfolders=1\nCreateSubfolder=1\nRename=1\nNewName=Trip\nPreset=Custom\nWidth=20\nHeight=10\n"));
    job.source = (dir / "src").string();
    job.target = (dir / "out").string();
    const BatchRunReport report = RunBatchTree(job);
    // Numbers go on from folder to folder; the empty B is mirrored too.
    const fs::path out = dir / "out/Trip";
    EXPECT_EQ(report.outputs, (std::vector{out / "Trip_001.png", out / "A/Trip_002.png", out / "A/A1/Trip_003.png"}));
    EXPECT_TRUE(fs::is_directory(out / "B"));
}

}  // namespace
}  // namespace quorbel
