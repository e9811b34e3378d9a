#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "batch/BatchRun.h"
#include "effects/cDIBFilter.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

// A picture with a gradient and a mark in its top-left corner, so turns and resizes show.
cDib MakePicture(int w, int h, int seed) {
    cDib dib;
    EXPECT_TRUE(dib.Create(w, h));
    for (int y = 0; y < h; ++y) {
        uint8_t* row = dib.Row(y);
        for (int x = 0; x < w; ++x) {
            const bool mark = x < w / 4 && y < h / 4;
            row[4 * x + 0] = static_cast<uint8_t>(mark ? 0 : (x * 255 / w + seed) & 255);
            row[4 * x + 1] = static_cast<uint8_t>(mark ? 0 : (y * 255 / h) & 255);
            row[4 * x + 2] = static_cast<uint8_t>(mark ? 255 : (x + y + seed * 7) & 255);
        }
    }
    return dib;
}

std::vector<uint8_t> Bytes(const fs::path& file) {
    std::vector<uint8_t> bytes;
    EXPECT_FALSE(ReadWholeFile(file, bytes)) << file;
    return bytes;
}

void Write(const fs::path& file, const std::vector<uint8_t>& bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<uint8_t> Jpeg(int w, int h, int seed) {
    std::vector<uint8_t> bytes;
    EXPECT_EQ(EncodeJpeg(MakePicture(w, h, seed).View(), 90, bytes), kJpegOk);
    return bytes;
}

std::vector<uint8_t> Png(int w, int h, int seed) {
    std::vector<uint8_t> bytes;
    EXPECT_TRUE(EncodePng(MakePicture(w, h, seed), bytes));
    return bytes;
}

PixelSize SizeOf(const fs::path& file) {
    DecodedPicture picture;
    if (!DecodePicture(Bytes(file), picture)) return {};
    return {picture.pixels.Width(), picture.pixels.Height()};
}

class BatchRunTest : public testing::Test {
protected:
    void SetUp() override {
        root_ = fs::path(testing::TempDir()) /
                ("batch_run_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root_);
        fs::create_directories(src_ = root_ / "src");
        fs::create_directories(out_ = root_ / "out");
    }
    void TearDown() override { fs::remove_all(root_); }

    // Five pictures: three good ones (a PNG, a JPEG, a BMP), a truncated JPEG and an empty file.
    void MakeFive() {
        Write(src_ / "a.png", Png(40, 30, 1));
        Write(src_ / "b.jpg", Jpeg(64, 64, 2));
        std::vector<uint8_t> cut = Jpeg(64, 48, 3);
        cut.resize(cut.size() / 2);
        Write(src_ / "c.jpg", cut);
        Write(src_ / "d.jpg", {});
        std::vector<uint8_t> bmp;
        ASSERT_TRUE(EncodeBmp(MakePicture(10, 50, 4), bmp));
        Write(src_ / "e.bmp", bmp);
        std::ofstream(src_ / "notes.txt") << "not a picture, not listed";
    }

    BatchJob FitJob(int w, int h) const {
        BatchJob job;
        job.source = src_.string();
        job.target = out_.string();
        job.preset = "Custom";
        job.width = w;
        job.height = h;
        job.bestFit = true;
        job.outputType = OutputType::Jpeg;
        return job;
    }

    fs::path root_, src_, out_;
};

TEST_F(BatchRunTest, GoodPicturesAreWrittenAndBadOnesReportedByName) {
    MakeFive();
    BatchJob job = FitJob(20, 20);
    job.rename = true;
    job.newName = "Pic";
    // Left half-written by a run that was killed two minutes ago: cleared before this one.
    const fs::path stale = out_ / ".quorbel-Pic_001.jpg-a1b2c3";
    Write(stale, {1, 2, 3});
    fs::last_write_time(stale, fs::file_time_type::clock::now() - std::chrono::minutes(2));
    std::vector<int> percents;
    BatchRunOptions options;
    options.threads = 2;
    options.progress = [&](int percent, const std::string&) { percents.push_back(percent); };
    const BatchRunReport report = RunBatch(job, options);

    EXPECT_EQ(report.total, 5);
    EXPECT_EQ(report.written, 3);
    EXPECT_FALSE(report.stopped);
    // Numbers count only pictures written: c and d take none.
    ASSERT_EQ(report.outputs.size(), 3u);
    EXPECT_EQ(report.outputs[0], out_ / "Pic_001.jpg");
    EXPECT_EQ(report.outputs[1], out_ / "Pic_002.jpg");
    EXPECT_EQ(report.outputs[2], out_ / "Pic_003.jpg");
    // 40 × 30 into 20 × 20: 0.5 < 0.667, so 20 × 15; 64 × 64: 20 × 20; 10 × 50: 0.4, 4 × 20.
    EXPECT_EQ(SizeOf(out_ / "Pic_001.jpg"), (PixelSize{20, 15}));
    EXPECT_EQ(SizeOf(out_ / "Pic_002.jpg"), (PixelSize{20, 20}));
    EXPECT_EQ(SizeOf(out_ / "Pic_003.jpg"), (PixelSize{4, 20}));
    EXPECT_EQ(std::distance(fs::directory_iterator(out_), fs::directory_iterator()), 3);
    EXPECT_EQ(report.FailureText(), "2 pictures could not be processed\nc.jpg\nd.jpg");
    EXPECT_EQ(percents, (std::vector<int>{20, 40, 60, 80, 100}));
}

TEST_F(BatchRunTest, OutputDoesNotDependOnTheNumberOfThreads) {
    for (int i = 0; i < 7; ++i) Write(src_ / ("p" + std::to_string(i) + ".jpg"), Jpeg(120 + 16 * i, 90, i));
    Write(src_ / "q.png", Png(200, 150, 9));
    BatchJob job = FitJob(50, 40);
    job.effect = "Blur";
    job.rotation = "Rotate Left";
    job.outputType = OutputType::KeepOriginal;
    std::vector<std::vector<uint8_t>> results[2];
    int runs = 0;
    for (int threads : {1, 3}) {
        const fs::path out = root_ / ("out" + std::to_string(threads));
        fs::create_directories(out);
        job.target = out.string();
        BatchRunOptions options;
        options.threads = threads;
        const BatchRunReport report = RunBatch(job, options);
        EXPECT_EQ(report.written, 8);
        for (const auto& file : report.outputs) results[runs].push_back(Bytes(file));
        ++runs;
    }
    ASSERT_EQ(results[0].size(), 8u);
    EXPECT_TRUE(results[0] == results[1]);
    // Fitted into 50 × 40 and then turned: 136 × 90 gives 50 × 33 (50 / 136 × 90 = 33.09),
    // written 33 × 50.
    EXPECT_EQ(SizeOf(root_ / "out1" / "p1.jpg"), (PixelSize{33, 50}));
}

TEST_F(BatchRunTest, SameFolderYesToAllKeepsAFailingPicturesOriginal) {
    Write(src_ / "good.jpg", Jpeg(80, 40, 1));
    std::vector<uint8_t> bad = Jpeg(80, 40, 2);
    bad.resize(bad.size() / 3);
    Write(src_ / "bad.jpg", bad);
    BatchJob job = FitJob(40, 40);
    job.target = job.source;
    job.outputType = OutputType::KeepOriginal;
    job.overwrite = OverwritePolicy::YesToAll;
    const BatchRunReport report = RunBatch(job);
    EXPECT_EQ(report.written, 1);
    EXPECT_EQ(SizeOf(src_ / "good.jpg"), (PixelSize{40, 20}));
    EXPECT_EQ(Bytes(src_ / "bad.jpg"), bad);
    EXPECT_EQ(report.FailureText(), "1 pictures could not be processed\nbad.jpg");
    EXPECT_EQ(std::distance(fs::directory_iterator(src_), fs::directory_iterator()), 2);  // no leftovers
}

TEST_F(BatchRunTest, CollisionsFollowThePolicyAndTheAnswers) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) Write(src_ / name, Jpeg(30, 30, 1));
    const std::vector<uint8_t> old{'o', 'l', 'd'};
    Write(out_ / "a.jpg", old);
    Write(out_ / "c.jpg", old);
    BatchJob job = FitJob(10, 10);

    job.overwrite = OverwritePolicy::NoToAll;
    BatchRunReport report = RunBatch(job);
    EXPECT_EQ(report.written, 1);
    EXPECT_EQ(report.skipped, 2);
    EXPECT_EQ(Bytes(out_ / "a.jpg"), old);
    EXPECT_EQ(Bytes(out_ / "c.jpg"), old);

    // Ask: the question comes in list order; No for a, Yes to All then covers c unasked.
    fs::remove(out_ / "b.jpg");
    job.overwrite = OverwritePolicy::Ask;
    std::vector<std::string> asked;
    BatchRunOptions options;
    options.threads = 3;
    options.ask = [&](const fs::path& existing) {
        asked.push_back(existing.filename().string());
        return asked.size() == 1 ? OverwriteAnswer::No : OverwriteAnswer::YesToAll;
    };
    Write(out_ / "b.jpg", old);
    report = RunBatch(job, options);
    EXPECT_EQ(asked, (std::vector<std::string>{"a.jpg", "b.jpg"}));
    EXPECT_EQ(Bytes(out_ / "a.jpg"), old);
    EXPECT_EQ(SizeOf(out_ / "b.jpg"), (PixelSize{10, 10}));
    EXPECT_EQ(SizeOf(out_ / "c.jpg"), (PixelSize{10, 10}));

    // An e-mail job replaces without asking.
    job.type = "Email";
    Write(out_ / "a.jpg", old);
    asked.clear();
    report = RunBatch(job, options);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(report.written, 3);
}

TEST_F(BatchRunTest, ListRowsShardsAndAMissingTarget) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) Write(src_ / name, Jpeg(30, 20, 1));
    BatchJob job = FitJob(300, 300);  // smaller pictures keep their size
    job.rotateAll = false;
    job.rename = true;
    job.newName = "S";
    job.pictures = {{"d.jpg", "Rotate Right", "None", ""}, {"b.jpg", "None", "None", ""},
                    {"a.jpg", "None", "None", ""}};
    BatchRunOptions options;
    options.shardIndex = 0;
    options.shardCount = 2;
    BatchRunReport report = RunBatch(job, options);
    // Rows 1 and 3 of the list (d and a), numbered by their place in the whole list.
    ASSERT_EQ(report.outputs.size(), 2u);
    EXPECT_EQ(report.outputs[0], out_ / "S_001.jpg");
    EXPECT_EQ(report.outputs[1], out_ / "S_003.jpg");
    EXPECT_EQ(SizeOf(out_ / "S_001.jpg"), (PixelSize{20, 30}));  // d turned
    EXPECT_EQ(SizeOf(out_ / "S_003.jpg"), (PixelSize{30, 20}));

    job.target = (root_ / "gone").string();
    report = RunBatch(job);
    EXPECT_TRUE(report.stopped);
    EXPECT_EQ(report.written, 0);
}


TEST_F(BatchRunTest, ACallbackThatThrowsEndsTheRunWithItsWorkersStopped) {
    for (int i = 0; i < 6; ++i) Write(src_ / ("p" + std::to_string(i) + ".jpg"), Jpeg(40, 30, i));
    BatchRunOptions options;
    options.threads = 3;
    int seen = 0;
    options.onPicture = [&](const PictureResult&) {
        if (++seen == 2) throw std::runtime_error("window closed");
    };
    EXPECT_THROW(RunBatch(FitJob(20, 20), options), std::runtime_error);
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(std::distance(fs::directory_iterator(out_), fs::directory_iterator()), 2);
}

TEST_F(BatchRunTest, TheEffectComesBeforeTheRotation) {
    // Pixelate's blocks start at the top-left corner, so on a 10 × 7 picture it does not
    // commute with a quarter turn; BMP output keeps the pixels exact.
    std::vector<uint8_t> bmp;
    ASSERT_TRUE(EncodeBmp(MakePicture(10, 7, 5), bmp));
    Write(src_ / "p.bmp", bmp);
    BatchJob job = FitJob(100, 100);
    job.effect = "Pixalate";
    job.rotation = "Rotate Left";
    job.outputType = OutputType::Bmp;
    ASSERT_EQ(RunBatch(job).written, 1);

    cDib expected = MakePicture(10, 7, 5);
    cDIBFilter engine;
    ASSERT_TRUE(engine.Pixelate(expected, 4));
    expected.Orientation(true, true, true);
    DecodedPicture written;
    ASSERT_TRUE(DecodePicture(Bytes(out_ / "p.bmp"), written));
    ASSERT_EQ(written.pixels.Width(), 7);
    ASSERT_EQ(written.pixels.Height(), 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 7; ++x)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(written.pixels.Row(y)[4 * x + c], expected.Row(y)[4 * x + c]) << x << "," << y;
}

}  // namespace
}  // namespace quorbel
