#include <gtest/gtest.h>

#include "core/RuntimeError.h"
#include "imaging/RotateDC.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

TEST(RotateDC, DegreesBecomeWholeRadiansAsTabled) {
    for (auto [degrees, radians] : {std::pair{0, 0}, {90, 2}, {180, 3}, {270, 5}, {-90, -2}, {360, 6}})
        EXPECT_EQ(DegreesToWholeRadians(degrees), radians) << degrees;
}

TEST(RotateDC, NinetyDegreesTakesNewXYFromSourceYAndHMinusX) {
    const int w = 4, h = 3;
    cDib d = Numbered(w, h);
    ASSERT_TRUE(RotateByDegrees(d, 90));
    ASSERT_EQ(SizeOf(d), std::make_pair(h, w));
    for (int y = 0; y < w; ++y) {
        // The first column would come from the row one past the bottom: it stays black.
        EXPECT_EQ(At(d, 0, y), Px{});
        for (int x = 1; x < h; ++x) EXPECT_EQ(At(d, x, y), Rgb(y + h - x, h - x, y)) << x << "," << y;
    }
}

TEST(RotateDC, HalfAndThreeQuarterTurnsFollowTheWholeNumberSineAndCosine) {
    const int w = 4, h = 3;
    // 180 degrees: 3 radians, s = 0, c = -1. Corners give minX = -w, minY = -h, so new (x, y)
    // comes from (w - x, h - y): the first row and column stay black.
    cDib half = Numbered(w, h);
    ASSERT_TRUE(RotateByDegrees(half, 180));
    ASSERT_EQ(SizeOf(half), std::make_pair(w, h));
    EXPECT_EQ(At(half, 0, 1), Px{});
    EXPECT_EQ(At(half, 2, 0), Px{});
    EXPECT_EQ(At(half, 1, 1), Rgb(5, 2, 3));
    EXPECT_EQ(At(half, 3, 2), Rgb(2, 1, 1));

    // 270 degrees: 5 radians, s = -1, c = 0: minX = 0, minY = -w; new (x, y) = (w - y, x).
    cDib three = Numbered(w, h);
    ASSERT_TRUE(RotateByDegrees(three, 270));
    ASSERT_EQ(SizeOf(three), std::make_pair(h, w));
    EXPECT_EQ(At(three, 0, 0), Px{});
    EXPECT_EQ(At(three, 0, 1), Rgb(3, 0, 3));
    EXPECT_EQ(At(three, 2, 3), Rgb(3, 2, 1));
}

TEST(RotateDC, SizesAndTheDegenerateCases) {
    cDib one = Numbered(1, 1);
    ASSERT_TRUE(RotateByDegrees(one, 90));
    EXPECT_EQ(SizeOf(one), std::make_pair(1, 1));

    cDib same = Numbered(5, 2);
    ASSERT_TRUE(RotateByDegrees(same, 0));
    EXPECT_EQ(same.Width(), 5);
    EXPECT_EQ(At(same, 4, 1), Rgb(5, 1, 4));
    ASSERT_TRUE(RotateByDegrees(same, 360));
    EXPECT_EQ(At(same, 2, 0), Rgb(2, 0, 2));

    // 45 degrees is 1 radian: sine and cosine both round to 1, a shear, not a diagonal.
    const TurnedBox box = TurnedBounds(5, 2, 1, 1);
    EXPECT_EQ(std::make_pair(box.width, box.height), std::make_pair(7, 7));
    cDib sheared = Numbered(5, 2);
    ASSERT_TRUE(RotateByDegrees(sheared, 45));
    EXPECT_EQ(SizeOf(sheared), std::make_pair(7, 7));
}

TEST(RotateDC, AnOverflowInTheArithmeticRaisesAndLeavesThePicture) {
    EXPECT_THROW(TurnedBounds(2000000000, 2000000000, 1, 1), RuntimeError);
}

TEST(Orientation, FlipsMirrorAndTwiceGiveBackTheStart) {
    cDib d = Numbered(5, 3);
    d.Orientation(true, false, false);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) ASSERT_EQ(At(d, x, y), Rgb(4 - x + y, y, 4 - x));
    d.Orientation(true, false, false);
    d.Orientation(false, true, false);
    for (int x = 0; x < 5; ++x) ASSERT_EQ(At(d, x, 0), Rgb(x + 2, 2, x));
    d.Orientation(false, true, false);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) ASSERT_EQ(At(d, x, y), Rgb(x + y, y, x));
}

TEST(Orientation, OnePixelWideOrHighPicturesFlip) {
    cDib column = Numbered(1, 4), row = Numbered(4, 1);
    column.Orientation(true, true, false);
    row.Orientation(true, true, false);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(At(column, 0, i), Rgb(3 - i, 3 - i, 0));
        EXPECT_EQ(At(row, i, 0), Rgb(3 - i, 0, 3 - i));
    }
}

TEST(Orientation, TheQuarterTurnGoesClockwiseAndKeepsEveryPixel) {
    const int w = 150, h = 70;  // more than one 64-pixel tile each way
    cDib d = Numbered(w, h);
    std::vector<int> progress;
    d.Orientation(false, false, true, [&](int p) { progress.push_back(p); });
    ASSERT_EQ(SizeOf(d), std::make_pair(h, w));
    for (int y = 0; y < w; ++y)
        for (int x = 0; x < h; ++x) ASSERT_EQ(At(d, x, y), Rgb(y + h - 1 - x, h - 1 - x, y));
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.back(), 100);
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));

    // Same direction as the classic 90-degree routine, which only loses its edge.
    cDib a = Numbered(6, 4), b = Numbered(6, 4);
    a.Orientation(false, false, true);
    RotateByDegrees(b, 90);
    for (int y = 0; y < 6; ++y)
        for (int x = 1; x < 4; ++x) EXPECT_EQ(At(b, x, y), At(a, x - 1, y));

    // Four quarter turns come back to the start.
    cDib e = Numbered(9, 5);
    for (int i = 0; i < 4; ++i) e.Orientation(false, false, true);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 9; ++x) ASSERT_EQ(At(e, x, y), Rgb(x + y, y, x));
}

}  // namespace quorbel
