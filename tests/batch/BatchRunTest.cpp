#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <stdexcept>

#include "Pictures.h"
#include "Scratch.h"
#include "batch/BatchSession.h"
#include "effects/cDIBFilter.h"
#include "output/Codecs.h"
#include "output/PictureFormats.h"

namespace quorbel {
namespace {

using namespace test;
using Size = std::pair<int, int>;
using Files = std::vector<std::pair<std::string, Size>>;

Bytes Encoded(const cDib& picture, PictureFormat format) {
    Bytes out;
    EXPECT_TRUE(FormatRow(format)->encode(picture, {.quality = 90}, out));
    return out;
}

// The size of the picture in file; {0, 0} when it cannot be read.
Size FileSize(const fs::path& file) {
    DecodedPicture picture;
    return DecodePicture(ReadBytes(file), picture) ? SizeOf(picture.pixels) : Size{0, 0};
}

// The report's outputs by name, each with the size of the picture written.
Files Written(const BatchRunReport& report) {
    Files files;
    for (const fs::path& f : report.outputs) files.emplace_back(f.filename().string(), FileSize(f));
    return files;
}

long FilesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

// An icon holding one PNG picture, the form icons of 256 pixels and more take.
Bytes PngIcon(const cDib& picture) {
    const Bytes png = Encoded(picture, PictureFormat::Png);
    const uint32_t n = static_cast<uint32_t>(png.size());
    Bytes icon{0, 0, 1, 0, 1, 0, uint8_t(picture.Width()), uint8_t(picture.Height()), 0, 0, 1, 0, 32, 0,
               uint8_t(n), uint8_t(n >> 8), uint8_t(n >> 16), uint8_t(n >> 24), 22, 0, 0, 0};
    icon.reserve(icon.size() + png.size());  // GCC 12 at -O3 misreads the growing insert
    icon.insert(icon.end(), png.begin(), png.end());
    return icon;
}

Bytes Jpeg(int w, int h, int seed = 7) { return Encoded(Grainy(w, h, seed), PictureFormat::Jpeg); }
Bytes Cut(const Bytes& bytes, size_t part) { return {bytes.begin(), bytes.begin() + long(bytes.size() / part)}; }

class BatchRunTest : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(src_);
        fs::create_directories(out_);
    }
    void Put(const std::string& name, const Bytes& bytes) { WriteBytes(src_ / name, bytes); }
    BatchJob FitJob(int w, int h, OutputType type = OutputType::Jpeg) const {
        BatchJob job;
        job.source = src_.string();
        job.target = out_.string();
        job.preset = "Custom";
        job.width = w;
        job.height = h;
        job.outputType = type;
        return job;
    }
    ScratchDir dir_;
    fs::path src_ = dir_ / "src", out_ = dir_ / "out";
};

TEST_F(BatchRunTest, GoodPicturesAreWrittenAndBadOnesReportedByName) {
    // Three good pictures (PNG, JPEG, BMP), a truncated JPEG, an empty file and a text file.
    Put("a.png", Encoded(Grainy(40, 30), PictureFormat::Png));
    Put("b.jpg", Jpeg(64, 64));
    Put("c.jpg", Cut(Jpeg(64, 48), 2));
    Put("d.jpg", {});
    Put("e.bmp", Encoded(Grainy(10, 50), PictureFormat::Bmp));
    WriteText(src_ / "notes.txt", "not a picture, not listed");
    BatchJob job = FitJob(20, 20);
    job.rename = true;
    job.newName = "Pic";
    job.effect = "Blur";
    // Left half-written by a run that was killed two minutes ago: cleared before this one.
    const fs::path stale = out_ / ".quorbel-Pic_001.jpg-a1b2c3";
    WriteText(stale, "old");
    fs::last_write_time(stale, fs::file_time_type::clock::now() - std::chrono::minutes(2));
    std::vector<int> percents;
    const BatchRunReport report = RunBatch(job, {.threads = 2, .progress = [&](int percent, const std::string&) {
                                                     percents.push_back(percent);
                                                 }});
    // Numbers count only pictures written. 40 × 30 into 20 × 20: 0.5 < 0.667, so 20 × 15;
    // 64 × 64: 20 × 20; 10 × 50: 0.4, so 4 × 20.
    EXPECT_EQ(Written(report), (Files{{"Pic_001.jpg", {20, 15}}, {"Pic_002.jpg", {20, 20}}, {"Pic_003.jpg", {4, 20}}}));
    EXPECT_EQ(FilesIn(out_), 3);
    EXPECT_EQ(report.FailureText(), "2 pictures could not be processed\nc.jpg\nd.jpg");
    EXPECT_EQ(percents, (std::vector<int>{20, 40, 60, 80, 100}));
}

// The effect comes before the rotation, and the output does not depend on the number of threads.
TEST_F(BatchRunTest, EffectThenTurnTheSameOnAnyNumberOfThreads) {
    for (int i = 0; i < 6; ++i) Put("p" + std::to_string(i) + ".jpg", Jpeg(120 + 16 * i, 90, i));
    // Pixelate's blocks start at the top-left corner, so on a 10 × 7 picture it does not
    // commute with a quarter turn; BMP output keeps the pixels exact.
    Put("q.bmp", Encoded(Numbered(10, 7), PictureFormat::Bmp));
    BatchJob job = FitJob(50, 40, OutputType::KeepOriginal);
    job.effect = "Pixalate";
    job.rotation = "Rotate Left";
    std::vector<Bytes> results[2];
    for (int run = 0; run < 2; ++run) {
        job.target = (dir_ / ("out" + std::to_string(run))).string();
        fs::create_directories(job.target);
        const BatchRunReport report = RunBatch(job, {.threads = run == 0 ? 1 : 3});
        for (const auto& file : report.outputs) results[run].push_back(ReadBytes(file));
    }
    ASSERT_EQ(results[0].size(), 7u);
    EXPECT_TRUE(results[0] == results[1]);
    // Fitted into 50 × 40 and then turned: 136 × 90 gives 50 × 33 (50 / 136 × 90 = 33.09),
    // written 33 × 50.
    EXPECT_EQ(FileSize(dir_ / "out0" / "p1.jpg"), (Size{33, 50}));
    cDib expected = Numbered(10, 7);
    ASSERT_TRUE(cDIBFilter().Pixelate(expected, 4));
    expected.Orientation(true, true, true);
    DecodedPicture written;
    ASSERT_TRUE(DecodePicture(ReadBytes(dir_ / "out1" / "q.bmp"), written));
    EXPECT_EQ(MaxDiff(written.pixels, expected), 0);
}

TEST_F(BatchRunTest, SameFolderYesToAllKeepsAFailingPicturesOriginal) {
    Put("good.jpg", Jpeg(80, 40));
    const Bytes bad = Cut(Jpeg(80, 40), 3);
    Put("bad.jpg", bad);
    BatchJob job = FitJob(40, 40, OutputType::KeepOriginal);
    job.target = job.source;
    job.overwrite = OverwritePolicy::YesToAll;
    const BatchRunReport report = RunBatch(job);
    EXPECT_EQ(Written(report), (Files{{"good.jpg", {40, 20}}}));
    EXPECT_EQ(ReadBytes(src_ / "bad.jpg"), bad);
    EXPECT_EQ(report.FailureText(), "1 pictures could not be processed\nbad.jpg");
    EXPECT_EQ(FilesIn(src_), 2);  // no leftovers
}

TEST_F(BatchRunTest, CollisionsFollowThePolicyAndTheAnswers) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) Put(name, Jpeg(30, 30));
    const std::string old = "old";
    WriteText(out_ / "a.jpg", old);
    WriteText(out_ / "c.jpg", old);
    BatchJob job = FitJob(10, 10);
    job.overwrite = OverwritePolicy::NoToAll;
    BatchRunReport report = RunBatch(job);
    EXPECT_EQ(report.written, 1);
    EXPECT_EQ(report.skipped, 2);
    EXPECT_EQ(ReadText(out_ / "a.jpg"), old);
    EXPECT_EQ(ReadText(out_ / "c.jpg"), old);

    // Ask: the question comes in list order; No for a, Yes to All then covers c unasked.
    job.overwrite = OverwritePolicy::Ask;
    WriteText(out_ / "b.jpg", old);
    std::vector<std::string> asked;
    const BatchRunOptions options{.threads = 3, .ask = [&](const fs::path& existing) {
                                      asked.push_back(existing.filename().string());
                                      return asked.size() == 1 ? OverwriteAnswer::No : OverwriteAnswer::YesToAll;
                                  }};
    report = RunBatch(job, options);
    EXPECT_EQ(asked, (std::vector<std::string>{"a.jpg", "b.jpg"}));
    EXPECT_EQ(ReadText(out_ / "a.jpg"), old);
    EXPECT_EQ(FileSize(out_ / "b.jpg"), (Size{10, 10}));
    EXPECT_EQ(FileSize(out_ / "c.jpg"), (Size{10, 10}));

    // An e-mail job replaces without asking.
    job.type = "Email";
    WriteText(out_ / "a.jpg", old);
    asked.clear();
    EXPECT_EQ(RunBatch(job, options).written, 3);
    EXPECT_TRUE(asked.empty());
}

TEST_F(BatchRunTest, ListRowsShardsAThrowingCallbackAndAMissingTarget) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) Put(name, Jpeg(30, 20));
    BatchJob job = FitJob(300, 300);  // smaller pictures keep their size
    job.rotateAll = false;
    job.rename = true;
    job.newName = "S";
    job.pictures = {{"d.jpg", "Rotate Right", "None", ""}, {"b.jpg"}, {"a.jpg"}};
    // Rows 1 and 3 of the list (d and a), numbered by their place in the whole list; d turned.
    const BatchRunReport report = RunBatch(job, {.shardIndex = 0, .shardCount = 2});
    EXPECT_EQ(Written(report), (Files{{"S_001.jpg", {20, 30}}, {"S_003.jpg", {30, 20}}}));

    // A callback that throws ends the run with its workers stopped.
    job.pictures.clear();
    job.rename = false;
    int seen = 0;
    const BatchRunOptions throwing{.threads = 3, .onPicture = [&](const PictureResult&) {
                                       if (++seen == 2) throw std::runtime_error("window closed");
                                   }};
    EXPECT_THROW(RunBatch(job, throwing), std::runtime_error);
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(FilesIn(out_), 2 + 2);

    job.target = (dir_ / "gone").string();
    const BatchRunReport gone = RunBatch(job);
    EXPECT_TRUE(gone.stopped);
    EXPECT_EQ(gone.written, 0);
}

TEST_F(BatchRunTest, EveryListedExtensionIsReadAndEveryOutputTypeWritesItsFormat) {
    // A file for each extension a listing admits, made by its format's encoder (an icon
    // holds a PNG); HEIF has no encoder here, the codec tests read real HEIC files.
    size_t listed = 0;
    for (const PictureFormatRow& row : PictureFormats()) {
        if (!row.readable || row.format == PictureFormat::Heif) continue;
        const Bytes bytes = row.format == PictureFormat::Ico ? PngIcon(Grainy(9, 6)) : Encoded(Grainy(9, 6), row.format);
        EXPECT_EQ(DetectPictureFormat(bytes), row.format) << row.Extension();
        for (int i = 0; i < row.listed; ++i, ++listed) {
            const std::string ext(row.extensions[static_cast<size_t>(i)]);
            Put("p-" + ext + "." + ext, bytes);
        }
    }
    EXPECT_EQ(listed, 10u);  // bmp gif jpg jpeg png tif tiff ico webp avif
    const std::tuple<OutputType, const char*, PictureFormat> types[] = {
        {OutputType::Jpeg, "jpg", PictureFormat::Jpeg}, {OutputType::Gif, "gif", PictureFormat::Gif},
        {OutputType::Png, "png", PictureFormat::Png},   {OutputType::Tiff, "tif", PictureFormat::Tiff},
        {OutputType::Bmp, "bmp", PictureFormat::Bmp},   {OutputType::Webp, "webp", PictureFormat::Webp},
        {OutputType::Avif, "avif", PictureFormat::Avif}};
    for (const auto& [type, extension, format] : types) {
        const BatchRunReport report = RunBatch(FitJob(100, 100, type));
        EXPECT_EQ(report.FailureText(), "") << extension;
        EXPECT_EQ(static_cast<size_t>(report.written), listed) << extension;
        const fs::path one = out_ / (std::string("p-ico.") + extension);
        EXPECT_EQ(DetectPictureFormat(ReadBytes(one)), format) << extension;
        EXPECT_EQ(FileSize(one), (Size{9, 6})) << extension;
    }
}

TEST_F(BatchRunTest, DirectSubfoldersComeBeforeTheirDescendantsAndOnlyPlainFoldersCount) {
    const std::string src = src_.string() + "/";
    for (const char* d : {"A/A1/A1x", "B/B1", "RO/inside", ".hidden", "\xff\xfe"}) fs::create_directories(src + d);
    ::chmod((src + "RO").c_str(), 0555);                // read-only: 17
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

TEST_F(BatchRunTest, TheFileFilterDecidesWhatAListingAdmits) {
    for (const char* f : {"a.JPG", "b.tiff", "c.txt", "noext", "\xff.png"}) WriteText(src_ / f, "x");
    fs::create_directories(src_ / "folder.jpg");
    EXPECT_EQ(ListPictures(src_, PictureFilter()), (std::vector{src_ / "a.JPG", src_ / "b.tiff", src_ / "\xff.png"}));
    const PictureFilter narrow = PictureFilter::FromText("*.png; JPG");
    EXPECT_EQ(narrow.Text(), "png;jpg");
    EXPECT_EQ(ListPictures(src_, narrow), (std::vector{src_ / "a.JPG", src_ / "\xff.png"}));
    EXPECT_EQ(PictureFilter::FromText(" ; "), PictureFilter());
    EXPECT_EQ(PictureFilter().Text(), "bmp;gif;jpg;jpeg;png;tif;tiff;ico;webp;avif;heic;heif");
}

TEST_F(BatchRunTest, ARunOverSubfoldersMirrorsTheTreeAndKeepsNumbering) {
    fs::create_directories(src_ / "B");
    for (const char* f : {"root.png", "A/a.png", "A/A1/deep.png"}) Put(f, Encoded(Grainy(40, 20), PictureFormat::Png));
    BatchJob job = BatchJobFromIni(IniFile::FromText(
        "[Job]\nSubfolders=1\nCreateSubfolder=1\nRename=1\nNewName=Trip\nPreset=Custom\nWidth=20\nHeight=10\n"));
    job.source = src_.string();
    job.target = out_.string();
    const BatchRunReport report = RunBatchTree(job);
    // Numbers go on from folder to folder; the empty B is mirrored too.
    const fs::path out = out_ / "Trip";
    EXPECT_EQ(report.outputs, (std::vector{out / "Trip_001.png", out / "A/Trip_002.png", out / "A/A1/Trip_003.png"}));
    EXPECT_TRUE(fs::is_directory(out / "B"));
}

}  // namespace
}  // namespace quorbel
