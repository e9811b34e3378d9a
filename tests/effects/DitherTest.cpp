#include <gtest/gtest.h>

#include <array>

#include "Pictures.h"
#include "imaging/cDIBDither.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

int TapOfWeight(int weight) {
    for (int t = 0; t < 12; ++t)
        if (kStucki[t].weight == weight) return t;
    return -1;
}

TEST(Dither, ShareTablesTruncateTowardZero) {
    int total = 0;
    for (const StuckiTap& t : kStucki) total += t.weight;
    EXPECT_EQ(total, 42);
    EXPECT_EQ(cDIBDither::ErrorShare(255, TapOfWeight(8)), 48);  // 2040 / 42 = 48.6
    EXPECT_EQ(cDIBDither::ErrorShare(255, TapOfWeight(4)), 24);
    EXPECT_EQ(cDIBDither::ErrorShare(255, TapOfWeight(2)), 12);
    EXPECT_EQ(cDIBDither::ErrorShare(255, TapOfWeight(1)), 6);
    EXPECT_EQ(cDIBDither::ErrorShare(-255, TapOfWeight(8)), -48);
    for (int t = 0; t < 12; ++t) EXPECT_EQ(cDIBDither::ErrorShare(0, t), 0);
    EXPECT_EQ(cDIBDither::MeanGrey(765), 255);
    EXPECT_EQ(cDIBDither::MeanGrey(5), 1);
}

TEST(Dither, HandWorkedRowOnMonochrome) {
    // Grey 100: black, error 100 gives 19 (x + 1) and 9 (x + 2); 119: black, error 119 gives
    // 22 to x + 2; 100 + 9 + 22 = 131 is nearer white.
    cDIBPal mono;
    mono.CreateMonochrome();
    cDIBDither d;
    cDib shown;
    ASSERT_TRUE(d.Dither(Flat(3, 1, Grey(100)), mono, &shown));
    EXPECT_EQ(d.BitsPerPixel(), 1);
    EXPECT_EQ((std::array<int, 3>{d.IndexAt(0, 0), d.IndexAt(1, 0), d.IndexAt(2, 0)}), (std::array{0, 0, 1}));
    ASSERT_EQ(d.Bits().size(), 4u);   // one row padded to four bytes
    EXPECT_EQ(d.Bits()[0], 0x20);     // high bits first
    EXPECT_EQ(At(shown, 2, 0), Grey(255));
}

TEST(Dither, SerpentineRunsOddRowsBackward) {
    cDIBPal mono;
    mono.CreateMonochrome();
    const cDib pic = Make(3, 2, [](int, int y) { return y ? Grey(100) : Grey(0); });
    cDIBDither plain, snake;
    snake.Serpentine = true;
    plain.Dither(pic, mono);
    snake.Dither(pic, mono);
    EXPECT_EQ(plain.IndexAt(2, 1), 1);
    EXPECT_EQ(snake.IndexAt(0, 1), 1);
    EXPECT_EQ(snake.IndexAt(2, 1), 0);
    // Bottom row first in memory: the top row is the second padded row.
    EXPECT_EQ(snake.Bits()[0], 0x80);
}

TEST(Dither, ColoursOfThePaletteComeThroughUnchanged) {
    cDIBPal pal;
    pal.CreateHalftone();
    const cDib pic = Make(16, 8, [](int x, int y) { return Rgb(uint8_t(64 * (x % 4)), 128, uint8_t(y % 2 ? 255 : 0)); });
    cDIBDither d;
    cDib shown;
    ASSERT_TRUE(d.Dither(pic, pal, &shown));
    EXPECT_EQ(d.BitsPerPixel(), 8);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 16; ++x) {
            Px expect = At(pic, x, y);
            expect.x = 0;
            ASSERT_EQ(At(shown, x, y), expect);
        }
    EXPECT_EQ(d.IndexAt(1, 1), 1 + 2 * 5 + 4 * 25);
}

TEST(Dither, MidGreyOnBlackAndWhiteIsAboutHalfWhite) {
    cDIBPal mono;
    mono.CreateMonochrome();
    cDIBDither d;
    int last = -1;
    d.Progress = [&](int p) { last = p; };
    ASSERT_TRUE(d.Dither(Flat(64, 64, Grey(128)), mono));
    EXPECT_EQ(last, 100);
    int white = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) white += d.IndexAt(x, y);
    EXPECT_GT(white, 64 * 64 * 45 / 100);
    EXPECT_LT(white, 64 * 64 * 55 / 100);
}

TEST(Dither, SixteenGreysPackTwoIndicesABytePerRow) {
    cDIBPal g16;
    g16.CreateGrey16();
    cDIBDither d;
    ASSERT_TRUE(d.Dither(Make(3, 1, [](int x, int) { return Grey(uint8_t(17 * (x + 1))); }), g16));
    EXPECT_EQ(d.BitsPerPixel(), 4);
    EXPECT_EQ(d.Bits()[0], 0x12);
    EXPECT_EQ(d.Bits()[1], 0x30);
    cDIBPal empty;
    EXPECT_FALSE(d.Dither(Flat(2, 2, Grey(0)), empty));
}

}  // namespace
}  // namespace quorbel
