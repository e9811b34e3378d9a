#include <gtest/gtest.h>

#include "imaging/Blit.h"
#include "imaging/cDIBSection.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

TEST(Blit, BitBltClipsAgainstBothPicturesAndConvertsLayouts) {
    cDib src = Numbered(4, 4);
    cDib dst;
    dst.Create(3, 3, RGBColor(1, 1, 1));
    BitBlt(dst.View(), -1, 1, 4, 4, src.View(), 0, 0);
    EXPECT_EQ(At(dst, 0, 1), At(src, 1, 0));
    EXPECT_EQ(At(dst, 2, 2), At(src, 3, 1));
    EXPECT_EQ(At(dst, 0, 0), Rgb(1, 1, 1));

    cDIBSection s24;
    s24.Create(3, 3);
    BitBlt(s24.View(), 0, 0, 3, 3, src.View(), 1, 1);
    const uint8_t* p = s24.Row(2) + 2 * 3;
    EXPECT_EQ(p[0], 3);
    EXPECT_EQ(p[1], 3);
    EXPECT_EQ(p[2], 6);
}

TEST(Blit, ShrinkingHalftoneAveragesWholeBlocks) {
    // Left 2 × 2 block: 0, 10, 20, 30 -> 15; right block: all 100.
    const cDib src = Make(4, 2, [](int x, int y) { return Grey(uint8_t(x < 2 ? 10 * (x + 2 * y) : 100)); });
    cDib dst;
    dst.Create(2, 1, 0);
    StretchBlt(dst.View(), 0, 0, 2, 1, src.View(), 0, 0, 4, 2, StretchMode::Halftone);
    EXPECT_EQ(At(dst, 0, 0), Rgb(15, 15, 15));
    EXPECT_EQ(At(dst, 1, 0), Rgb(100, 100, 100));
}

TEST(Blit, ANegativeDestinationWidthMirrorsIntoAnotherPicture) {
    cDib src = Numbered(3, 1);
    cDib dst;
    dst.Create(3, 1, 0);
    StretchBlt(dst.View(), 2, 0, -3, 1, src.View(), 0, 0, 3, 1, StretchMode::ColorOnColor);
    for (int x = 0; x < 3; ++x) EXPECT_EQ(At(dst, x, 0), At(src, 2 - x, 0));
}

TEST(Blit, FillRectIsClippedToThePicture) {
    cDib d;
    d.Create(3, 3, 0);
    FillRect(d.View(), 1, 1, 10, 10, RGBColor(255, 0, 0));
    EXPECT_EQ(At(d, 0, 0), Px{});
    EXPECT_EQ(At(d, 2, 2), Rgb(255, 0, 0));
}

}  // namespace quorbel
