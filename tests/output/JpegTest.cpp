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
        cDib original = Smooth(w, 23);  // green rises top to bottom: a flipped decode is far off
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(SaveJPGToBytes(Section(original), bytes, 97));
        cDIBSection loaded;
        ScriptedMessageBox messages;
        ASSERT_TRUE(LoadJPGFromBytes(loaded, bytes, messages)) << w;
        EXPECT_TRUE(messages.Shown().empty());
        EXPECT_LT(MeanDiff(original, FromSection(loaded)), 4.0) << w;
        EXPECT_EQ(SizeOf(FromSection(loaded)), SizeOf(original));
    }
}

TEST(Jpeg, SaveErrorCarriesNumberSourceAndStatus) {
    ScratchDir dir;
    cDIBSection section = Section(Gradient(8, 8)), empty;
    const auto error = [&](const cDIBSection& s, const fs::path& path, int quality) {
        try {
            SaveJPG(s, path.string(), quality);
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.Number(), 26001);
            EXPECT_EQ(e.Source(), ProgramName() + ".mIntelJPEGLibrary");
            return e.Description();
        }
        return std::string("no error raised");
    };
    EXPECT_EQ(error(section, dir / "q0.jpg", 101), "Failed to save to JPG -2");  // the library accepts up to 100
    EXPECT_FALSE(fs::exists(dir / "q0.jpg"));
    EXPECT_EQ(error(section, dir / "no such folder" / "a.jpg", 80), "Failed to save to JPG -3");
    EXPECT_NE(error(empty, dir / "e.jpg", 80), "no error raised");
}

// Saved through the safe replacement (whose own tests pin the rest): the old file's dates
// stay, a failed save leaves it alone.
TEST(Jpeg, OverwriteKeepsTimesAndFailureKeepsOldFile) {
    ScratchDir dir;
    const auto target = dir / "photo.jpg";
    WriteBytes(target, {1, 2, 3});
    const timespec times[2] = {{1000000000, 5}, {1100000000, 7}};  // access, modification
    ASSERT_EQ(utimensat(AT_FDCWD, target.c_str(), times, 0), 0);
    cDIBSection section = Section(Gradient(16, 16));
    ASSERT_TRUE(SaveJPG(section, target.string(), 80));
    struct stat st {};
    ASSERT_EQ(stat(target.c_str(), &st), 0);
    EXPECT_EQ(st.st_mtim.tv_sec, 1100000000);
    const auto written = ReadBytes(target);
    EXPECT_EQ(written.at(0), 0xFF);
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
    for (auto [d, w, h] : {std::tuple{8, 13, 8}, {2, 50, 30}}) {
        cDib scaled;
        ASSERT_EQ(DecodeJpeg(bytes, scaled, d), kJpegOk);
        EXPECT_EQ(SizeOf(scaled), std::make_pair(w, h));
        // Left edge dark red, right edge bright red.
        EXPECT_LT(At(scaled, 0, 0).r, 90);
        EXPECT_GT(At(scaled, w - 1, 0).r, 180);
    }
}

}  // namespace
}  // namespace quorbel
