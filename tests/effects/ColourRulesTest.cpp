#include <gtest/gtest.h>

#include "EffectsPictures.h"
#include "effects/ColourRules.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

TEST(Brightness, AddsToEachChannelOfTheColourValue) {
    EXPECT_EQ(Brighten(RGBColor(10, 20, 30), 5), RGBColor(15, 25, 35));
    EXPECT_EQ(Brighten(RGBColor(10, 200, 30), 0), RGBColor(10, 200, 30));
    EXPECT_EQ(Brighten(RGBColor(0, 1, 254), 255), RGBColor(255, 255, 255));
    EXPECT_EQ(Brighten(RGBColor(0, 100, 254), -101), RGBColor(0, 0, 153));
    cDib pic = Make(2, 2, [](int x, int y) { return Grey(uint8_t(60 * (x + 2 * y))); });
    Brighten(pic, 255);
    EXPECT_EQ(At(pic, 0, 0), Grey(255));
    EXPECT_EQ(At(pic, 1, 1), Grey(255));
}

TEST(Contrast, TheRuleWithItsOneSidedClamps) {
    EXPECT_EQ(ContrastChannel(128, 10), 118);
    EXPECT_EQ(ContrastChannel(127, 10), 137);
    EXPECT_EQ(ContrastChannel(200, 0), 200);
    EXPECT_EQ(ContrastChannel(250, -10), 255);  // upper half: only the top clamped
    EXPECT_EQ(ContrastChannel(5, -10), 0);      // lower half: only the bottom clamped
    EXPECT_EQ(ContrastChannel(130, 200), -70);  // the unclamped side, outside the window's range
    EXPECT_EQ(ContrastChannel(100, 200), 300);
}

TEST(Contrast, TheWindowsRangeKeepsTheUnclampedSideInsideAByte) {
    for (int a = kContrastRange.minimum; a <= kContrastRange.maximum; ++a)
        for (int v = 0; v < 256; ++v) {
            const int32_t r = ContrastChannel(v, a);
            ASSERT_TRUE(r >= 0 && r <= 255) << v << " " << a;
        }
    // One step more on either side would leave it.
    EXPECT_LT(ContrastChannel(128, kContrastRange.maximum + 1), 0);
    cDib pic = Make(2, 1, [](int x, int) { return x ? Grey(128) : Grey(127); });
    ContrastPicture(pic, 10);
    EXPECT_EQ(At(pic, 0, 0), Grey(137));
    EXPECT_EQ(At(pic, 1, 0), Grey(118));
}

TEST(ColourBalance, MovesTowardWhiteOrBlackAndRoundsHalvesToEven) {
    EXPECT_EQ(BalanceChannel(0, 0.5f), 128);    // 127.5
    EXPECT_EQ(BalanceChannel(253, -0.5f), 126); // 126.5
    EXPECT_EQ(BalanceChannel(100, 0.25f), 139); // 155 × 0.25 + 100 = 138.75
    for (int c = 0; c < 256; ++c) {
        EXPECT_EQ(BalanceChannel(c, 0.0f), c);
        EXPECT_EQ(BalanceChannel(c, BalanceFactor(100)), 255);
        EXPECT_EQ(BalanceChannel(c, BalanceFactor(-100)), 0);
    }
    cDib pic = Flat(3, 2, Rgb(10, 20, 30));
    ColourBalance(pic, 100, 0, -100);
    EXPECT_EQ(At(pic, 2, 1), Rgb(255, 20, 0));
    cDib same = Flat(2, 2, Rgb(10, 20, 30));
    ColourBalance(same, 0, 0, 0);
    EXPECT_EQ(At(same, 1, 1), Rgb(10, 20, 30));
}

}  // namespace
}  // namespace quorbel
