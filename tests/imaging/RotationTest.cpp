#include <gtest/gtest.h>

#include <functional>

#include "core/RuntimeError.h"
#include "imaging/RotateDC.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

using SourceOf = std::function<std::pair<int, int>(int x, int y)>;

// The picture whose (x, y) is the source's from(x, y), black where that falls outside it.
cDib Mapped(const cDib& source, int w, int h, const SourceOf& from) {
    return Make(w, h, [&](int x, int y) {
        const auto [sx, sy] = from(x, y);
        return sx >= 0 && sx < source.Width() && sy >= 0 && sy < source.Height() ? At(source, sx, sy) : Px{};
    });
}

TEST(RotateDC, DegreesBecomeWholeRadiansAsTabled) {
    for (auto [degrees, radians] : {std::pair{0, 0}, {90, 2}, {180, 3}, {270, 5}, {-90, -2}, {360, 6}})
        EXPECT_EQ(DegreesToWholeRadians(degrees), radians) << degrees;
}

// Whole radians give whole sines and cosines; the corners' minimum is the new origin, so a
// row or column may come from one past the edge and stay black.
TEST(RotateDC, QuarterTurnsFollowTheWholeNumberSineAndCosine) {
    const int w = 4, h = 3;
    const cDib source = Numbered(w, h);
    const struct {
        int degrees;
        bool swapsSides;
        SourceOf from;
    } cases[] = {
        {0, false, [](int x, int y) { return std::pair{x, y}; }},
        {360, false, [](int x, int y) { return std::pair{x, y}; }},
        {90, true, [](int x, int y) { return std::pair{y, h - x}; }},       // 2 radians: s = 1, c = 0
        {180, false, [](int x, int y) { return std::pair{w - x, h - y}; }},  // 3 radians: s = 0, c = -1
        {270, true, [](int x, int y) { return std::pair{w - y, x}; }},       // 5 radians: s = -1, c = 0
    };
    for (const auto& c : cases) {
        cDib d = Copy(source);
        ASSERT_TRUE(RotateByDegrees(d, c.degrees));
        EXPECT_TRUE(Same(d, Mapped(source, c.swapsSides ? h : w, c.swapsSides ? w : h, c.from))) << c.degrees;
    }
}

TEST(RotateDC, SizesAndTheDegenerateCases) {
    cDib one = Numbered(1, 1);
    ASSERT_TRUE(RotateByDegrees(one, 90));
    EXPECT_EQ(SizeOf(one), std::make_pair(1, 1));
    // 45 degrees is 1 radian: sine and cosine both round to 1, a shear, not a diagonal.
    const TurnedBox box = TurnedBounds(5, 2, 1, 1);
    EXPECT_EQ(std::make_pair(box.width, box.height), std::make_pair(7, 7));
    cDib sheared = Numbered(5, 2);
    ASSERT_TRUE(RotateByDegrees(sheared, 45));
    EXPECT_EQ(SizeOf(sheared), std::make_pair(7, 7));
    EXPECT_THROW(TurnedBounds(2000000000, 2000000000, 1, 1), RuntimeError);  // overflow
}

TEST(Orientation, FlipsMirrorAndTwiceGiveBackTheStart) {
    for (const auto& size : {std::pair{5, 3}, {1, 4}, {4, 1}}) {
        const int w = size.first, h = size.second;  // plain names, so the lambdas can take them
        const cDib source = Numbered(w, h);
        const struct {
            bool mirror, upsideDown;
            SourceOf from;
        } cases[] = {
            {true, false, [w](int x, int y) { return std::pair{w - 1 - x, y}; }},
            {false, true, [h](int x, int y) { return std::pair{x, h - 1 - y}; }},
            {true, true, [w, h](int x, int y) { return std::pair{w - 1 - x, h - 1 - y}; }},
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << w << "x" << h << " mirror " << c.mirror << " upside down " << c.upsideDown);
            cDib d = Copy(source);
            d.Orientation(c.mirror, c.upsideDown, false);
            EXPECT_TRUE(Same(d, Mapped(source, w, h, c.from)));
            d.Orientation(c.mirror, c.upsideDown, false);
            EXPECT_TRUE(Same(d, source));
        }
    }
}

TEST(Orientation, TheQuarterTurnGoesClockwiseAndKeepsEveryPixel) {
    const int w = 150, h = 70;  // more than one 64-pixel tile each way
    const cDib source = Numbered(w, h);
    cDib d = Copy(source);
    std::vector<int> progress;
    d.Orientation(false, false, true, [&](int p) { progress.push_back(p); });
    EXPECT_TRUE(Same(d, Mapped(source, h, w, [](int x, int y) { return std::pair{y, h - 1 - x}; })));
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.back(), 100);
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));

    // Same direction as the classic 90-degree routine, which only loses its edge.
    cDib a = Numbered(6, 4), b = Numbered(6, 4);
    a.Orientation(false, false, true);
    RotateByDegrees(b, 90);
    EXPECT_TRUE(Same(b, Mapped(a, 4, 6, [](int x, int y) { return std::pair{x - 1, y}; })));

    // Four quarter turns come back to the start.
    for (int i = 0; i < 4; ++i) d.Orientation(false, false, true);
    EXPECT_TRUE(Same(d, Mapped(source, h, w, [](int x, int y) { return std::pair{y, h - 1 - x}; })));
}

}  // namespace quorbel
