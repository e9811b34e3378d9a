#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Pictures.h"
#include "imaging/cDIBPal.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

RgbQuad Q(uint8_t r, uint8_t g, uint8_t b) { return {b, g, r, 0}; }

// The plain search the fast one must agree with: smallest squared distance, first wins.
int BruteForce(const cDIBPal& pal, int r, int g, int b) {
    int best = 0, bestD = 1 << 30;
    for (int i = 0; i < pal.EntryCount(); ++i) {
        const RgbQuad& e = pal.Entries()[i];
        const int d = (e.red - r) * (e.red - r) + (e.green - g) * (e.green - g) + (e.blue - b) * (e.blue - b);
        if (d < bestD) bestD = d, best = i;
    }
    return best;
}

void ExpectSearchExact(const cDIBPal& pal) {
    Random rnd(42);
    for (int k = 0; k < 20000; ++k) {
        const uint64_t v = rnd.Next();
        const uint8_t r = uint8_t(v), g = uint8_t(v >> 8), b = uint8_t(v >> 16);
        ASSERT_EQ(pal.ClosestIndex(r, g, b), BruteForce(pal, r, g, b)) << int(r) << "," << int(g) << "," << int(b);
    }
}

TEST(Palette, HalftoneLayout) {
    cDIBPal pal;
    pal.CreateHalftone();
    ASSERT_EQ(pal.EntryCount(), 256);
    EXPECT_EQ(pal.Entries()[0], Q(0, 0, 0));
    EXPECT_EQ(pal.Entries()[1], Q(64, 0, 0));     // red fastest
    EXPECT_EQ(pal.Entries()[5], Q(0, 64, 0));
    EXPECT_EQ(pal.Entries()[25], Q(0, 0, 64));    // blue slowest
    EXPECT_EQ(pal.Entries()[4], Q(255, 0, 0));    // 4 × 64 becomes 255
    EXPECT_EQ(pal.Entries()[124], Q(255, 255, 255));
    for (int i = 125; i < 256; ++i) EXPECT_EQ(pal.Entries()[i], Q(0, 0, 0));
    EXPECT_EQ(pal.ClosestIndex(250, 250, 250), 124);
    EXPECT_EQ(pal.ClosestIndex(1, 1, 1), 0);  // black at 0 wins over 125..255
    ExpectSearchExact(pal);
}

TEST(Palette, GreyAndMonochromePalettes) {
    cDIBPal mono, g16, g256;
    mono.CreateMonochrome();
    g16.CreateGrey16();
    g256.CreateGrey256();
    EXPECT_EQ(mono.EntryCount(), 2);
    EXPECT_EQ(mono.Entries()[1], Q(255, 255, 255));
    EXPECT_EQ(g16.Entries()[15], Q(255, 255, 255));
    EXPECT_EQ(g16.Entries()[3], Q(51, 51, 51));
    EXPECT_EQ(g256.Entries()[77], Q(77, 77, 77));
    EXPECT_TRUE(mono.IsGrey() && g16.IsGrey() && g256.IsGrey());
    EXPECT_EQ(mono.ClosestIndex(127, 128, 128), 1);  // 3 × 127 ... nearer white by a hair
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
    EXPECT_FALSE(pal.IsGrey());
    ExpectSearchExact(pal);
}

TEST(Palette, FilledByTheCallerAndTiesGoToTheLowerIndex) {
    cDIBPal pal;
    RgbQuad* e = pal.SetEntryCount(3);
    e[0] = Q(0, 0, 0);
    e[1] = Q(2, 0, 0);
    e[2] = Q(2, 0, 0);
    EXPECT_EQ(pal.ClosestIndex(1, 0, 0), 0);  // before the rebuild: the plain search
    EXPECT_EQ(pal.ClosestIndex(2, 0, 0), 1);
    pal.RebuildPalette();
    EXPECT_EQ(pal.ClosestIndex(1, 0, 0), 0);
    EXPECT_EQ(pal.ClosestIndex(3, 0, 0), 1);
    EXPECT_TRUE(pal.SetEntryCount(300) && pal.EntryCount() == 256);
}

TEST(Palette, IsGrey) {
    cDIBPal pal;
    EXPECT_FALSE(pal.IsGrey());  // empty
    RgbQuad* e = pal.SetEntryCount(3);
    e[0] = Q(5, 5, 5);
    e[1] = Q(200, 200, 200);
    EXPECT_TRUE(pal.IsGrey());
    e[2] = Q(1, 2, 3);
    EXPECT_FALSE(pal.IsGrey());
}

TEST(Palette, OptimalPaletteFindsTheColoursOfASmallPicture) {
    const cDib pic = Make(9, 4, [](int x, int y) {
        if (y < 2) return Rgb(200, 30, 40);
        return x < 4 ? Rgb(10, 220, 90) : Rgb(0, 0, 250);
    });
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

}  // namespace
}  // namespace quorbel
