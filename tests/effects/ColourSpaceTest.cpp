#include <gtest/gtest.h>

#include "effects/ColourSpace.h"

namespace quorbel {
namespace {

TEST(ColourSpace, PrimariesAndGreysByHand) {
    // Pure red: max 1, min 0, L 0.5, S = 1 / 1, hue 0; green at 2, blue at 4.
    Hls red = RgbToHls(255, 0, 0);
    EXPECT_FLOAT_EQ(red.h, 0.0f);
    EXPECT_FLOAT_EQ(red.l, 0.5f);
    EXPECT_FLOAT_EQ(red.s, 1.0f);
    EXPECT_FLOAT_EQ(RgbToHls(0, 255, 0).h, 2.0f);
    EXPECT_FLOAT_EQ(RgbToHls(0, 0, 255).h, 4.0f);
    // Magenta: red holds the maximum, (g - b) / d = -1: the hue is not folded into 0..6.
    EXPECT_FLOAT_EQ(RgbToHls(255, 0, 255).h, -1.0f);
    Hls grey = RgbToHls(51, 51, 51);
    EXPECT_FLOAT_EQ(grey.s, 0.0f);
    EXPECT_FLOAT_EQ(grey.h, 0.0f);
    EXPECT_FLOAT_EQ(grey.l, 0.2f);
    // L above 0.5 takes the other saturation formula: (255, 204, 204) has L 0.9,
    // S = 0.2 / (2 - 1 - 0.8) = 1.
    EXPECT_NEAR(RgbToHls(255, 204, 204).s, 1.0f, 1e-6);
    // L below: (102, 51, 51): S = 0.2 / (0.4 + 0.2).
    EXPECT_NEAR(RgbToHls(102, 51, 51).s, 0.2f / 0.6f, 1e-6);
}

TEST(ColourSpace, InverseGivesBackEveryColourOfACoarseGrid) {
    for (int r = 0; r < 256; r += 15)
        for (int g = 0; g < 256; g += 17)
            for (int b = 0; b < 256; b += 51) {
                const Rgb8 back = HlsToRgb(RgbToHls(r, g, b));
                EXPECT_EQ(back, (Rgb8{uint8_t(r), uint8_t(g), uint8_t(b)})) << r << "," << g << "," << b;
            }
}

}  // namespace
}  // namespace quorbel
