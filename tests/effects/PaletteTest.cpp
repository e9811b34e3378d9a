// Palettes, the search for a colour's nearest entry, and error diffusion onto them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "Pictures.h"
#include "imaging/cDIBDither.h"
#include "imaging/cDIBPal.h"

namespace quorbel::test {
namespace {

RgbQuad Q(uint8_t r, uint8_t g, uint8_t b) { return {b, g, r, 0}; }

// The fast search agrees with the plain one (smallest squared distance, first wins).
void ExpectSearchExact(const cDIBPal& pal) {
    Random rnd(42);
    for (int k = 0; k < 20000; ++k) {
        const uint64_t v = rnd.Next();
        const int r = uint8_t(v), g = uint8_t(v >> 8), b = uint8_t(v >> 16);
        int best = 0, bestD = 1 << 30;
        for (int i = 0; i < pal.EntryCount(); ++i) {
            const RgbQuad& e = pal.Entries()[i];
            const int d = (e.red - r) * (e.red - r) + (e.green - g) * (e.green - g) + (e.blue - b) * (e.blue - b);
            if (d < bestD) bestD = d, best = i;
        }
        ASSERT_EQ(pal.ClosestIndex(r, g, b), best) << r << "," << g << "," << b;
    }
}

TEST(Palette, FixedPalettesByHand) {
    cDIBPal half, mono, g16, g256;
    half.CreateHalftone();
    mono.CreateMonochrome();
    g16.CreateGrey16();
    g256.CreateGrey256();
    // Halftone: red fastest, blue slowest, 4 × 64 becomes 255, black after the 125 colours.
    ASSERT_EQ(half.EntryCount(), 256);
    const std::pair<int, RgbQuad> entries[] = {{0, Q(0, 0, 0)},   {1, Q(64, 0, 0)},     {5, Q(0, 64, 0)},
                                               {25, Q(0, 0, 64)}, {4, Q(255, 0, 0)},    {124, Q(255, 255, 255)}};
    for (auto [i, e] : entries) EXPECT_EQ(half.Entries()[i], e) << i;
    for (int i = 125; i < 256; ++i) EXPECT_EQ(half.Entries()[i], Q(0, 0, 0));
    EXPECT_EQ(half.ClosestIndex(250, 250, 250), 124);
    EXPECT_EQ(half.ClosestIndex(1, 1, 1), 0);  // black at 0 wins over 125..255
    ExpectSearchExact(half);

    EXPECT_EQ(mono.EntryCount(), 2);
    EXPECT_EQ(mono.Entries()[1], Q(255, 255, 255));
    EXPECT_EQ(g16.Entries()[3], Q(51, 51, 51));
    EXPECT_EQ(g256.Entries()[77], Q(77, 77, 77));
    EXPECT_TRUE(mono.IsGrey() && g16.IsGrey() && g256.IsGrey() && !half.IsGrey());
    EXPECT_EQ(mono.ClosestIndex(127, 128, 128), 1);  // nearer white by a hair
    EXPECT_EQ(g16.ClosestIndex(25, 25, 25), 1);      // 17 beats 34
    uint8_t r, g, b;
    EXPECT_EQ(g256.ClosestIndex(90, 100, 110, r, g, b), 100);
    EXPECT_EQ(r, 100);
}

TEST(Palette, WebSafeHoldsThePrimariesAndTheGreys) {
    cDIBPal pal;
    pal.CreateWebSafe();
    ASSERT_EQ(pal.EntryCount(), 256);
    std::set<uint32_t> colours;
    for (const RgbQuad& e : pal.Entries()) colours.insert(uint32_t(e.red) << 16 | e.green << 8 | e.blue);
    auto has = [&](int r, int g, int b) { return colours.count(uint32_t(r) << 16 | g << 8 | b) == 1; };
    EXPECT_TRUE(has(255, 0, 0) && has(0, 255, 0) && has(0, 0, 255) && has(255, 255, 0));
    EXPECT_TRUE(has(204, 51, 0) && has(153, 102, 0));       // sums 255 with an end channel stay
    EXPECT_FALSE(has(51, 102, 102) || has(153, 153, 204));  // inner ones of sums 255 and 510 go
    EXPECT_TRUE(has(8, 8, 8) && has(248, 248, 248) && has(102, 102, 102));
    EXPECT_EQ(colours.size(), 204u + 31u);  // the left-over slots repeat black
    ExpectSearchExact(pal);
}

TEST(Palette, FilledByTheCallerTiesGoToTheLowerIndex) {
    cDIBPal pal;
    EXPECT_FALSE(pal.IsGrey());  // empty
    RgbQuad* e = pal.SetEntryCount(3);
    e[0] = Q(0, 0, 0), e[1] = Q(2, 2, 2), e[2] = Q(2, 2, 2);
    EXPECT_TRUE(pal.IsGrey());
    EXPECT_EQ(pal.ClosestIndex(1, 1, 1), 0);  // before the rebuild: the plain search
    EXPECT_EQ(pal.ClosestIndex(2, 2, 2), 1);
    pal.RebuildPalette();
    EXPECT_EQ(pal.ClosestIndex(1, 1, 1), 0);
    EXPECT_EQ(pal.ClosestIndex(3, 3, 3), 1);
    e[2] = Q(1, 2, 3);
    EXPECT_FALSE(pal.IsGrey());
    EXPECT_TRUE(pal.SetEntryCount(300) && pal.EntryCount() == 256);
}

TEST(Palette, OptimalPaletteFindsTheColoursOfASmallPicture) {
    const cDib pic = Make(9, 4, [](int x, int y) { return y < 2 ? Rgb(200, 30, 40) : x < 4 ? Rgb(10, 220, 90) : Rgb(0, 0, 250); });
    cDIBPal pal;
    ASSERT_TRUE(pal.CreateOptimal(pic, 8));
    ASSERT_EQ(pal.EntryCount(), 3);  // no box left to split
    for (const RgbQuad& want : {Q(200, 30, 40), Q(10, 220, 90), Q(0, 0, 250)})
        EXPECT_NE(std::find(pal.Entries().begin(), pal.Entries().end(), want), pal.Entries().end());
    cDIBPal big;
    big.CreateOptimal(Noisy(64, 64), 256);
    EXPECT_EQ(big.EntryCount(), 256);
    ExpectSearchExact(big);
}

TEST(Dither, ErrorSharesTruncateTowardZero) {
    int total = 0;
    std::array<int, 9> tapOf{};  // a tap of each weight
    for (int t = 0; t < 12; ++t) total += kStucki[t].weight, tapOf[kStucki[t].weight] = t;
    EXPECT_EQ(total, 42);
    // 255 × 8 / 42 = 48.6
    for (auto [weight, share] : {std::pair{8, 48}, {4, 24}, {2, 12}, {1, 6}}) {
        EXPECT_EQ(cDIBDither::ErrorShare(255, tapOf[weight]), share);
        EXPECT_EQ(cDIBDither::ErrorShare(-255, tapOf[weight]), -share);
        EXPECT_EQ(cDIBDither::ErrorShare(0, tapOf[weight]), 0);
    }
    EXPECT_EQ(cDIBDither::MeanGrey(765), 255);
    EXPECT_EQ(cDIBDither::MeanGrey(5), 1);
}

TEST(Dither, HandWorkedRowsAndTheirPacking) {
    cDIBPal mono, g16, empty;
    mono.CreateMonochrome();
    g16.CreateGrey16();
    // Grey 100: black, error 100 gives 19 to x + 1 and 9 to x + 2; 119: black, 22 to x + 2;
    // 100 + 9 + 22 = 131 is nearer white.
    cDIBDither d;
    cDib shown;
    ASSERT_TRUE(d.Dither(Flat(3, 1, Grey(100)), mono, &shown));
    EXPECT_EQ(d.BitsPerPixel(), 1);
    EXPECT_EQ((std::array<int, 3>{d.IndexAt(0, 0), d.IndexAt(1, 0), d.IndexAt(2, 0)}), (std::array{0, 0, 1}));
    EXPECT_EQ(d.Bits(), (std::vector<uint8_t>{0x20, 0, 0, 0}));  // high bits first, rows of four bytes
    EXPECT_EQ(At(shown, 2, 0), Grey(255));
    // Serpentine: the odd row runs backward, so its error lands on the other end.
    const cDib twoRows = Make(3, 2, [](int, int y) { return y ? Grey(100) : Grey(0); });
    cDIBDither plain, snake;
    snake.Serpentine = true;
    plain.Dither(twoRows, mono);
    snake.Dither(twoRows, mono);
    EXPECT_EQ(plain.IndexAt(2, 1), 1);
    EXPECT_EQ(snake.IndexAt(0, 1) * 2 + snake.IndexAt(2, 1), 2);
    EXPECT_EQ(snake.Bits()[0], 0x80);  // bottom row first in memory
    // Sixteen greys: two indices a byte.
    ASSERT_TRUE(d.Dither(Make(3, 1, [](int x, int) { return Grey(uint8_t(17 * (x + 1))); }), g16));
    EXPECT_EQ(d.BitsPerPixel(), 4);
    EXPECT_EQ((std::array{d.Bits()[0], d.Bits()[1]}), (std::array<uint8_t, 2>{0x12, 0x30}));
    EXPECT_FALSE(d.Dither(Flat(2, 2, Grey(0)), empty));
}

TEST(Dither, PaletteColoursComeThroughAndMidGreyIsHalfWhite) {
    cDIBPal half, mono;
    half.CreateHalftone();
    mono.CreateMonochrome();
    const cDib pic = Make(16, 8, [](int x, int y) { return Rgb(uint8_t(64 * (x % 4)), 128, uint8_t(y % 2 ? 255 : 0)); });
    cDIBDither d;
    cDib shown;
    ASSERT_TRUE(d.Dither(pic, half, &shown));
    EXPECT_EQ(d.BitsPerPixel(), 8);
    for (int i = 0; i < 16 * 8; ++i) {
        Px expect = At(pic, i % 16, i / 16);
        expect.x = 0;
        ASSERT_EQ(At(shown, i % 16, i / 16), expect) << i;
    }
    EXPECT_EQ(d.IndexAt(1, 1), 1 + 2 * 5 + 4 * 25);

    int last = -1, white = 0;
    d.Progress = [&](int p) { last = p; };
    ASSERT_TRUE(d.Dither(Flat(64, 64, Grey(128)), mono));
    EXPECT_EQ(last, 100);
    for (int i = 0; i < 64 * 64; ++i) white += d.IndexAt(i % 64, i / 64);
    EXPECT_NEAR(white, 64 * 64 / 2, 64 * 64 / 20);
}

}  // namespace
}  // namespace quorbel::test
