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

TEST(Blit, ANegativeDestinationWidthMirrorsIntoAnotherPicture) {
    cDib src = Numbered(3, 1);
    cDib dst;
    dst.Create(3, 1, 0);
    StretchBlt(dst.View(), 2, 0, -3, 1, src.View(), 0, 0, 3, 1, StretchMode::ColorOnColor);
    EXPECT_TRUE(Same(dst, Make(3, 1, [&](int x, int) { return At(src, 2 - x, 0); })));
    FillRect(dst.View(), 1, 0, 10, 10, RGBColor(255, 0, 0));  // clipped to the picture
    EXPECT_TRUE(Same(dst, Make(3, 1, [&](int x, int) { return x ? Rgb(255, 0, 0) : At(src, 2, 0); })));
}

}  // namespace quorbel
