#include <gtest/gtest.h>

#include "EffectsPictures.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

// 4 × 4 black with one grey-90 pixel at (1, 1).
cDib Spot(uint8_t v = 90, uint8_t background = 0) {
    return Make(4, 4, [=](int x, int y) { return x == 1 && y == 1 ? Grey(v) : Grey(background); });
}

TEST(Kernels, BlurAtBothEndsOfItsRange) {
    cDIBFilter f;
    cDib box = Spot();
    f.Blur(box, 100);  // Level 25: the plain box mean, 90 / 9
    EXPECT_EQ(At(box, 1, 1), Grey(10));
    EXPECT_EQ(At(box, 2, 2), Grey(10));
    EXPECT_EQ(At(box, 0, 0), Grey(0));  // border kept
    cDib heavy = Spot();
    f.Blur(heavy, 76);  // Level 1: 25 × 90 / 33 = 68.18; the neighbour 90 / 33 = 2.7
    EXPECT_EQ(At(heavy, 1, 1), Grey(68));
    EXPECT_EQ(At(heavy, 2, 2), Grey(2));
}

TEST(Kernels, SoftenUsesOnlyTheFourOrthogonalNeighbours) {
    cDIBFilter f;
    cDib pic = Spot();
    f.Soften(pic, 76);  // centre 25 × 90 / 29 = 77.6; right neighbour 90 / 29 = 3.1
    EXPECT_EQ(At(pic, 1, 1), Grey(77));
    EXPECT_EQ(At(pic, 2, 1), Grey(3));
    EXPECT_EQ(At(pic, 2, 2), Grey(0));  // diagonal: not counted
}

TEST(Kernels, SharpenTruncatesAndClamps) {
    cDIBFilter f;
    cDib mild = Spot(100, 40);
    f.Sharpen(mild, 76);  // (33 × 100 - 8 × 40) / 25 = 119.2; (33 × 40 - 100 - 7 × 40) / 25 = 37.6
    EXPECT_EQ(At(mild, 1, 1), Grey(119));
    EXPECT_EQ(At(mild, 2, 1), Grey(37));
    cDib hard = Spot();
    f.Sharpen(hard, 100);  // divisor 1: 9 × 90 saturates, the neighbours' -90 clamps to 0
    EXPECT_EQ(At(hard, 1, 1), Grey(255));
    EXPECT_EQ(At(hard, 2, 2), Grey(0));
}

TEST(Kernels, FlatPicturesStayFlatAndTheFourthByteIsKept) {
    cDIBFilter f;
    for (int s : {76, 88, 100}) {
        for (auto run : {&cDIBFilter::Blur, &cDIBFilter::Soften, &cDIBFilter::Sharpen}) {
            cDib pic = Flat(6, 5, Px{30, 140, 250, 9});
            (f.*run)(pic, s);
            EXPECT_TRUE(Same(pic, Flat(6, 5, Px{30, 140, 250, 9}))) << s;
        }
    }
}

TEST(Kernels, DividerIsExactWhereverTheFiltersUseIt) {
    for (uint32_t d : {1u, 2u, 3u, 7u, 9u, 25u, 29u, 33u, 100u, 255u}) {
        const Divider div(d);
        for (uint32_t n = 0; n < 300000; ++n) ASSERT_EQ(div(n), n / d) << n << " / " << d;
        ASSERT_EQ(div((1u << 24) - 1), ((1u << 24) - 1) / d);
        EXPECT_EQ(div.Signed(-7), -7 / static_cast<int32_t>(d));
    }
}

TEST(Kernels, EmbossRoundsTowardZeroAndTheDirectionMirrors) {
    cDIBFilter f;
    // Only the top-left neighbour of (1, 1) is lit: the rise there is -1, deepened 150 %.
    auto pic = [] { return Make(3, 3, [](int x, int y) { return x + y == 0 ? Grey(1) : Grey(0); }); };
    cDib a = pic(), b = pic();
    f.Emboss(a, 50, -1);  // 128 + trunc(-1.5) = 127, not the floor's 126
    f.Emboss(b, 50, 1);   // 128 + trunc(1.5) = 129
    EXPECT_EQ(At(a, 1, 1), Grey(127));
    EXPECT_EQ(At(b, 1, 1), Grey(129));
    cDib flat = Flat(4, 4, Rgb(200, 10, 90));
    f.Emboss(flat, 200, -1);  // no relief: mid grey
    EXPECT_EQ(At(flat, 1, 2), Grey(128));
    EXPECT_EQ(At(flat, 0, 2), Rgb(200, 10, 90));
}

TEST(Kernels, EdgeFiltersFindTheEdgeAndIgnoreFlatAreas) {
    cDIBFilter f;
    auto step = [] { return Make(6, 5, [](int x, int) { return x < 3 ? Rgb(20, 30, 40) : Rgb(220, 230, 240); }); };
    cDib contour = step();
    f.Contour(contour);
    const Px edge = At(contour, 2, 2);
    EXPECT_EQ(edge.r, edge.g);
    EXPECT_EQ(edge.g, edge.b);
    EXPECT_LT(edge.r, 100);
    EXPECT_EQ(At(contour, 1, 2), Grey(255));  // flat inside: white paper
    EXPECT_EQ(At(contour, 0, 2), Rgb(20, 30, 40));

    cDib outline = step();
    f.Outline(outline, 0, 0);
    EXPECT_EQ(At(outline, 1, 2), Grey(0));
    EXPECT_EQ(At(outline, 2, 2), Rgb(255, 255, 255));  // 3 × 200 across the edge saturates
    cDib raised = Flat(4, 4, Grey(50));
    f.Outline(raised, 0, 20);
    EXPECT_EQ(At(raised, 1, 1), Grey(20));

    cDib relief = Flat(5, 5, Rgb(10, 120, 230));
    f.Relieve(relief, 100);
    EXPECT_EQ(At(relief, 2, 2), Rgb(10, 120, 230));
    cDib greyRelief = step();
    f.EmbossGrey(greyRelief, 0, -1);
    const Px g = At(greyRelief, 2, 2);
    EXPECT_TRUE(g.r == g.g && g.g == g.b);
    EXPECT_GT(g.r, 128);  // the slope rises toward the light's far side
}

}  // namespace
}  // namespace quorbel
