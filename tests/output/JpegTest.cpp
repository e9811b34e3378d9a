#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <tuple>

#include "Pictures.h"
#include "Scratch.h"
#include "core/MessageBox.h"
#include "core/ProgramData.h"
#include "core/RuntimeError.h"
#include "imaging/cDIBSection.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"
#include "output/JpegFile.h"

namespace quorbel {
namespace {

using namespace test;

cDIBSection Section(const cDib& d) {
    cDIBSection s;
    s.Create(d.Width(), d.Height());
    s.LoadPictureBlt(d.View());
    return s;
}

cDib FromSection(const cDIBSection& s) {
    cDib d;
    d.Create(s.Width(), s.Height());
    d.LoadBlt(s.View(), 0, 0);
    return d;
}

std::vector<uint8_t> JpegOf(const cDib& d, int quality = 90) {
    std::vector<uint8_t> out;
    EXPECT_EQ(EncodeJpeg(d.View(), quality, out), kJpegOk);
    return out;
}

// Offset of the frame header's height field (SOF0..SOF2), or 0.
size_t FrameSizeOffset(const std::vector<uint8_t>& j) {
    for (size_t i = 2; i + 8 < j.size(); ++i)
        if (j[i] == 0xFF && j[i + 1] >= 0xC0 && j[i + 1] <= 0xC2) return i + 5;
    return 0;
}

TEST(Jpeg, RoundTripsEveryRowPaddingUpright) {
    // Widths 1..4 give row padding 3, 2, 1 and 0 bytes in the 24-bit buffer.
    for (int w : {1, 2, 3, 4, 37}) {
        cDib original = Smooth(w, 23);
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(SaveJPGToBytes(Section(original), bytes, 97));
        cDIBSection loaded;
        ScriptedMessageBox messages;
        ASSERT_TRUE(LoadJPGFromBytes(loaded, bytes, messages)) << w;
        EXPECT_TRUE(messages.Shown().empty());
        ASSERT_EQ(loaded.Width(), w);
        ASSERT_EQ(loaded.Height(), 23);
        // Green rises from top to bottom: a flipped decode would reverse it.
        EXPECT_LT(loaded.Row(0)[1], 20);
        EXPECT_GT(loaded.Row(22)[1], 150);
        EXPECT_LT(MeanDiff(original, FromSection(loaded)), 4.0) << w;
    }
}

TEST(Jpeg, QualityIsPassedThrough) {
    cDib picture = Gradient(64, 64);
    EXPECT_LT(JpegOf(picture, 20).size(), JpegOf(picture, 95).size());
}

TEST(Jpeg, SaveErrorCarriesNumberSourceAndStatus) {
    ScratchDir dir;
    cDIBSection section = Section(Gradient(8, 8));
    try {
        SaveJPG(section, (dir / "q0.jpg").string(), 101);  // the library accepts up to 100
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), 26001);
        EXPECT_EQ(e.Source(), ProgramName() + ".mIntelJPEGLibrary");
        EXPECT_EQ(e.Description(), "Failed to save to JPG -2");
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "q0.jpg"));
    try {
        SaveJPG(section, (dir / "no such folder" / "a.jpg").string(), 80);
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Description(), "Failed to save to JPG -3");
    }
    cDIBSection empty;
    EXPECT_THROW(SaveJPG(empty, (dir / "e.jpg").string(), 80), RuntimeError);
}

// Saved through the safe replacement (whose own tests pin the rest): the old file's dates
// and read-only bit stay, a failed save leaves it alone; awkward names are no trouble.
TEST(Jpeg, OverwriteKeepsTimesAndReadOnlyAndFailureKeepsOldFile) {
    ScratchDir dir;
    const auto target = dir / "été photo \xff.jpg";  // blank, non-ASCII and invalid UTF-8
    WriteBytes(target, {1, 2, 3});
    const timespec times[2] = {{1000000000, 5}, {1100000000, 7}};  // access, modification
    ASSERT_EQ(utimensat(AT_FDCWD, target.c_str(), times, 0), 0);
    ASSERT_EQ(chmod(target.c_str(), 0444), 0);

    cDIBSection section = Section(Gradient(16, 16));
    ASSERT_TRUE(SaveJPG(section, target.string(), 80));
    struct stat st {};
    ASSERT_EQ(stat(target.c_str(), &st), 0);
    EXPECT_EQ(st.st_mtim.tv_sec, 1100000000);
    EXPECT_EQ(st.st_mode & 0777, 0444u);
    const auto written = ReadBytes(target);
    ASSERT_GT(written.size(), 3u);
    EXPECT_EQ(written[0], 0xFF);

    EXPECT_THROW(SaveJPG(section, target.string(), 1000), RuntimeError);
    EXPECT_EQ(ReadBytes(target), written);
}

TEST(Jpeg, UnreadableHeadersShowTheMessageAndLeaveTheTarget) {
    ScratchDir dir;
    const std::vector<uint8_t> good = JpegOf(Gradient(40, 30));
    std::vector<uint8_t> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13};
    std::vector<uint8_t> bomb = good;
    const size_t sof = FrameSizeOffset(bomb);
    ASSERT_NE(sof, 0u);
    bomb[sof] = bomb[sof + 1] = bomb[sof + 2] = bomb[sof + 3] = 0xFF;  // 65535 × 65535
    std::vector<uint8_t> zero = good;
    zero[sof] = zero[sof + 1] = 0;  // height 0
    const std::vector<std::vector<uint8_t>> bad = {{}, png, {good.begin(), good.begin() + 20}, bomb, zero};

    for (size_t i = 0; i < bad.size(); ++i) {
        cDIBSection target = Section(Gradient(5, 5));
        ScriptedMessageBox messages;
        EXPECT_FALSE(LoadJPGFromBytes(target, bad[i], messages)) << i;
        ASSERT_EQ(messages.Shown().size(), 1u) << i;
        EXPECT_EQ(messages.Shown()[0].text, "Failed to read JPG");
        EXPECT_EQ(messages.Shown()[0].icon, MsgIcon::Exclamation);
        EXPECT_EQ(target.Width(), 5);
    }
    ScriptedMessageBox messages;
    cDIBSection target;
    EXPECT_FALSE(LoadJPG(target, (dir / "missing.jpg").string(), messages));
    EXPECT_EQ(messages.Shown().size(), 1u);
}

TEST(Jpeg, HeaderBombIsRefusedBeforeAllocating) {
    std::vector<uint8_t> bomb = JpegOf(Gradient(16, 16));
    const size_t sof = FrameSizeOffset(bomb);
    bomb[sof] = bomb[sof + 2] = 0xEA;  // 60000 × 60000: within the side limit, over the pixel cap
    bomb[sof + 1] = bomb[sof + 3] = 0x60;
    cDib out;
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_EQ(DecodeJpeg(bomb, out), kJpegTooLarge);
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
    EXPECT_LT(ms, 50.0);
}

TEST(Jpeg, ScaleKeepsAtLeastTwiceTheTargetPerAxis) {
    // 640 x 480: 1/4 would give 1000 < 1280; 500 x 375: exactly twice at 1/4.
    for (auto [w, h, d] : {std::tuple{0, 0, 1}, {640, 480, 2}, {500, 375, 4}, {200, 150, 8}, {4000, 3000, 1}})
        EXPECT_EQ(JpegScaleDenominator(4000, 3000, w, h), d) << w;
    // A portrait asked for a landscape box is never enlarged nor over-shrunk.
    EXPECT_EQ(JpegScaleDenominator(2560, 3837, 3840, 2160), 1);
    EXPECT_EQ(JpegScaleDenominator(2560, 3837, 720, 1080), 1);
}

TEST(Jpeg, ScaledDecodeRoundsSizesUpAndKeepsColours) {
    cDib original = Gradient(100, 60);
    const auto bytes = JpegOf(original, 95);
    cDib eighth;
    ASSERT_EQ(DecodeJpeg(bytes, eighth, 8), kJpegOk);
    EXPECT_EQ(eighth.Width(), 13);
    EXPECT_EQ(eighth.Height(), 8);
    // Left half dark red, right half bright red, top rows little green.
    EXPECT_LT(eighth.Row(0)[2], 90);
    EXPECT_GT(eighth.Row(0)[12 * 4 + 2], 180);
    EXPECT_LT(eighth.Row(0)[1], 40);
    cDib half;
    ASSERT_EQ(DecodeJpeg(bytes, half, 2), kJpegOk);
    EXPECT_EQ(half.Width(), 50);
    EXPECT_EQ(half.Height(), 30);
}

TEST(Jpeg, CorpusPhotoFullAndEighth) {
    const char* corpus = Corpus();
    if (!corpus) GTEST_SKIP() << "corpus not present";
    std::vector<uint8_t> bytes;
    ASSERT_FALSE(ReadWholeFile(std::filesystem::path(corpus) / "mate-Garden.jpg", bytes));
    JpegInfo info;
    ASSERT_EQ(ReadJpegInfo(bytes, info), kJpegOk);
    for (int d : {1, 8}) {
        cDib out;
        ASSERT_EQ(DecodeJpeg(bytes, out, d), kJpegOk);
        EXPECT_EQ(out.Width(), (info.width + d - 1) / d);
    }
}

}  // namespace
}  // namespace quorbel
