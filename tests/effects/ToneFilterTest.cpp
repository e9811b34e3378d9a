#include <gtest/gtest.h>

#include <cstdlib>

#include "EffectsPictures.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

bool IsGreyPx(Px p) { return p.r == p.g && p.g == p.b; }

TEST(PointFilters, GreysWeighsTheChannelsAndReachesTheBorders) {
    cDIBFilter f;
    cDib pic = Make(2, 1, [](int x, int) { return x == 0 ? Rgb(10, 20, 30) : Rgb(200, 100, 0); });
    f.Greys(pic);
    // 0.587 × 20 + 0.114 × 30 + 0.299 × 10 = 18.15; 58.7 + 0 + 59.8 = 118.5 -> 118 (halves to even)
    EXPECT_EQ(At(pic, 0, 0), Grey(18));
    EXPECT_EQ(At(pic, 1, 0), Grey(118));
}

TEST(PointFilters, NegativeComplementsAndTwiceIsIdentity) {
    cDIBFilter f;
    const cDib src = Noisy(7, 5);
    cDib pic = Copy(src);
    f.Negative(pic);
    const Px a = At(src, 3, 2), b = At(pic, 3, 2);
    EXPECT_EQ(b, (Px{uint8_t(255 - a.b), uint8_t(255 - a.g), uint8_t(255 - a.r), a.x}));
    f.Negative(pic);
    EXPECT_TRUE(Same(pic, src));
}

TEST(PointFilters, RgbLevelsAddsPerChannelAndClamps) {
    cDIBFilter f;
    cDib pic = Flat(3, 2, Rgb(200, 30, 77));
    f.RGBLevels(pic, 100, -50, 0);
    EXPECT_EQ(At(pic, 0, 0), Rgb(255, 0, 77));
    cDib out = Flat(1, 1, Rgb(1, 2, 3));
    f.RGBLevels(out, 900, -900, 0);  // clamped to ±255
    EXPECT_EQ(At(out, 0, 0), Rgb(255, 0, 3));
}

TEST(PointFilters, ContrastSpreadsAroundTheMiddle) {
    cDIBFilter f;
    auto ramp = [] { return Make(4, 1, [](int x, int) { return Grey(uint8_t(std::array{100, 127, 128, 200}[x])); }); };
    cDib same = ramp(), flat = ramp(), steep = ramp(), mild = ramp();
    f.Contrast(same, 0);
    EXPECT_TRUE(Same(same, ramp()));
    f.Contrast(flat, -100);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(At(flat, x, 0), Grey(128));
    f.Contrast(steep, 100);  // 128 + 2 (v - 128)
    EXPECT_EQ(At(steep, 0, 0), Grey(72));
    EXPECT_EQ(At(steep, 1, 0), Grey(126));
    EXPECT_EQ(At(steep, 3, 0), Grey(255));
    f.Contrast(mild, 50);  // 127: -1.5 truncates to -1
    EXPECT_EQ(At(mild, 1, 0), Grey(127));
}

TEST(PointFilters, SaturationMinus100GivesGreyAndZeroChangesNothing) {
    cDIBFilter f;
    const cDib src = Noisy(6, 6, 11);
    cDib grey = Copy(src), same = Copy(src), vivid = Flat(1, 1, Rgb(150, 100, 100));
    f.Saturation(grey, -100);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x) EXPECT_TRUE(IsGreyPx(At(grey, x, y)));
    f.Saturation(same, 0);
    EXPECT_TRUE(Same(same, src));
    // grey of (150, 100, 100) is 115; +100 % doubles the distances: 185, 85, 85
    f.Saturation(vivid, 100);
    EXPECT_EQ(At(vivid, 0, 0), Rgb(185, 85, 85));
}

TEST(PointFilters, SepiaTonesByGreyAndKeepsTheEnds) {
    cDIBFilter f;
    // Three colours of the same grey (115) and black and white.
    cDib pic = Make(5, 1, [](int x, int) {
        return std::array{Rgb(150, 100, 100), Rgb(115, 115, 115), Rgb(100, 125, 100), Grey(0), Grey(255)}[x];
    });
    f.Sepia(pic, 0.5f, 0.25f, 1.0f);
    const Px tone = At(pic, 0, 0);
    EXPECT_EQ(At(pic, 1, 0), tone);
    EXPECT_EQ(At(pic, 2, 0), tone);
    EXPECT_GT(tone.r, tone.g);
    EXPECT_GT(tone.g, tone.b);
    EXPECT_EQ(tone.b, 115);
    EXPECT_EQ(At(pic, 3, 0), Grey(0));
    EXPECT_EQ(At(pic, 4, 0), Grey(255));
}

TEST(PointFilters, ScanlinesDarkenOddRowsAndLightenEvenOnes) {
    cDIBFilter f;
    cDib pic = Flat(2, 4, Grey(100));
    f.Scanlines(pic, 100, 0);
    EXPECT_EQ(At(pic, 1, 0), Grey(100));
    EXPECT_EQ(At(pic, 1, 1), Grey(0));
    cDib soft = Flat(2, 2, Grey(100));
    f.Scanlines(soft, 50, 50);  // 100 - 50; 100 + 155 / 2 = 177.5 -> 177
    EXPECT_EQ(At(soft, 0, 0), Grey(177));
    EXPECT_EQ(At(soft, 0, 1), Grey(50));
}

TEST(PointFilters, ColorizeTintsByLuminosityAlone) {
    cDIBFilter f;
    cDib pic = Make(3, 1, [](int x, int) { return std::array{Rgb(200, 0, 0), Rgb(0, 0, 200), Grey(77)}[x]; });
    cDib grey = Copy(pic);
    f.Colorize(pic, 60, 80, 100);
    EXPECT_EQ(At(pic, 0, 0), At(pic, 1, 0));  // same max + min, same tint
    f.Colorize(grey, 30, 0, 100);  // no saturation: the pixel's own luminosity as grey
    EXPECT_EQ(At(grey, 0, 0), Grey(100));
    EXPECT_EQ(At(grey, 2, 0), Grey(77));
}

TEST(PointFilters, PixelateCopiesEachBlocksTopLeftPixel) {
    cDIBFilter f;
    const cDib src = Make(5, 3, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 9); });
    cDib one = Copy(src), two = Copy(src);
    f.Pixelate(one, 1);
    EXPECT_TRUE(Same(one, src));
    f.Pixelate(two, 2);
    EXPECT_EQ(At(two, 1, 1), Rgb(0, 0, 9));
    EXPECT_EQ(At(two, 3, 0), Rgb(2, 0, 9));
    EXPECT_EQ(At(two, 4, 2), Rgb(4, 2, 9));  // the narrower last block
}

TEST(ScatterFilters, DiffuseTakesPixelsFromWithinItsReach) {
    cDIBFilter f;
    const cDib src = Make(40, 30, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 0); });
    cDib zero = Copy(src);
    f.Diffuse(zero, 0, 0, 1);
    EXPECT_TRUE(Same(zero, src));
    cDib moved = Copy(src);
    f.Diffuse(moved, 3, 2, 2);
    int changed = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const Px p = At(moved, x, y);
            if (x % 2 || y % 2) {
                EXPECT_EQ(p, At(src, x, y));  // between the steps: untouched
                continue;
            }
            EXPECT_LE(std::abs(p.r - x), 3);
            EXPECT_LE(std::abs(p.g - y), 2);
            changed += p != At(src, x, y);
        }
    EXPECT_GT(changed, 100);
    cDib again = Copy(src);
    f.Diffuse(again, 3, 2, 2);
    EXPECT_TRUE(Same(again, moved));  // same seed, same picture
}

TEST(ScatterFilters, NoiseStaysWithinItsAmount) {
    cDIBFilter f;
    const cDib src = Flat(30, 20, Grey(128));
    cDib none = Copy(src), noisy = Copy(src);
    f.Noise(none, 0, 1);
    EXPECT_TRUE(Same(none, src));
    f.Noise(noisy, 20, 3);
    int spread = 0;
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x) {
            const Px p = At(noisy, x, y);
            if (x % 3 || y % 3) {
                EXPECT_EQ(p, Grey(128));
                continue;
            }
            for (int v : {p.r, p.g, p.b}) {
                EXPECT_LE(std::abs(v - 128), 20);
                spread = std::max(spread, std::abs(v - 128));
            }
        }
    EXPECT_GE(spread, 15);
}

TEST(ColourFilters, ReplaceByLuminosityAndByHueAndSaturation) {
    cDIBFilter f;
    auto pic = [] { return Make(3, 1, [](int x, int) { return std::array{Rgb(255, 0, 0), Rgb(0, 160, 0), Grey(250)}[x]; }); };
    cDib byL = pic();
    f.ReplaceL(byL, RGBColor(255, 0, 0), RGBColor(1, 2, 3), 255, 5);  // L 0.5 ± 0.05
    EXPECT_EQ(At(byL, 0, 0), Rgb(1, 2, 3));
    EXPECT_EQ(At(byL, 1, 0), Rgb(0, 160, 0));  // L 0.31
    EXPECT_EQ(At(byL, 2, 0), Grey(250));
    cDib none = pic();
    f.ReplaceL(none, RGBColor(255, 0, 0), RGBColor(1, 2, 3), 0, 100);
    EXPECT_TRUE(Same(none, pic()));

    cDib byHS = pic();
    f.ReplaceHS(byHS, RGBColor(255, 0, 0), RGBColor(0, 0, 255), 255, 5, 5);
    EXPECT_EQ(At(byHS, 0, 0), Rgb(0, 0, 255));  // same L, so exactly the new colour
    EXPECT_EQ(At(byHS, 1, 0), Rgb(0, 160, 0));
    EXPECT_EQ(At(byHS, 2, 0), Grey(250));
}

TEST(ColourFilters, ShiftMovesOnlyColoursNearItsColour) {
    cDIBFilter f;
    cDib pic = Make(3, 1, [](int x, int) { return std::array{Rgb(100, 100, 100), Rgb(110, 95, 100), Rgb(120, 100, 100)}[x]; });
    f.Shift(pic, RGBColor(100, 100, 100), 30, 10);
    EXPECT_EQ(At(pic, 0, 0), Rgb(130, 130, 130));
    EXPECT_EQ(At(pic, 1, 0), Rgb(140, 125, 130));
    EXPECT_EQ(At(pic, 2, 0), Rgb(120, 100, 100));
}

}  // namespace
}  // namespace quorbel
