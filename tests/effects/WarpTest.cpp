#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Pictures.h"
#include "effects/Remap.h"
#include "effects/Warp.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

constexpr double kEps = 1e-3;

TEST(Warp, WaveShiftsRowsByTheColumnsSine) {
    const WarpState s = MakeWarpState(2, 200, 100);
    EXPECT_NEAR(WarpMap(s, 0, 40).sy, 35, kEps);
    EXPECT_NEAR(WarpMap(s, 25, 40).sy, 25, kEps);
    EXPECT_NEAR(WarpMap(s, 75, 40).sy, 45, kEps);
    EXPECT_EQ(WarpMap(s, 75, 40).sx, 75);
    const WarpState d = MakeWarpState(5, 200, 100);
    EXPECT_NEAR(WarpMap(d, 0, 0).sx, -5, kEps);
    EXPECT_NEAR(WarpMap(d, 0, 25).sx, -15, kEps);
}

TEST(Warp, AngleFunction) {
    EXPECT_NEAR(VectorAngle(1, 1), 3.14159265 / 4, 1e-9);
    EXPECT_NEAR(VectorAngle(1, -1), 3 * 3.14159265 / 4, 1e-9);     // b negative: plus pi
    EXPECT_NEAR(VectorAngle(-1, -1), 5 * 3.14159265 / 4, 1e-9);    // above pi: not folded
    EXPECT_NEAR(VectorAngle(1, 0.01), 3.14159265 / 2, 1e-9);       // |b| not above 0.01
    EXPECT_NEAR(VectorAngle(-1, 0.005), -3.14159265 / 2, 1e-9);
    EXPECT_NEAR(VectorAngle(0, 0), 3.14159265 / 2, 1e-9);
}

TEST(Warp, TwistKeepsTheCentreAndMirrorsNearIt) {
    const WarpState s = MakeWarpState(1, 100, 80);  // centre (50, 40)
    EXPECT_EQ(WarpMap(s, 50, 40).sx, 50);
    EXPECT_EQ(WarpMap(s, 50, 40).sy, 40);
    const SourcePoint p = WarpMap(s, 50.6f, 40.8f);  // r = 1: turned by only 1/50 radian
    EXPECT_NEAR(p.sx - 50, -0.6, 0.03);
    EXPECT_NEAR(p.sy - 40, 0.8, 0.03);
    const SourcePoint q = WarpMap(s, 80, 40);  // r = 30: the mirror image turned by 0.6 rad
    EXPECT_NEAR(std::hypot(q.sx - 50, q.sy - 40), 30, kEps);
    EXPECT_NEAR(q.sx - 50, 30 * std::cos(3.14159265 - 0.6), 0.01);

    // Every pixel of a large picture against the written rule: the angle by VectorAngle, the
    // turn by r / 50, the point r × (cos, sin) of the sum; far out r / 50 is many turns.
    const WarpState big = MakeWarpState(1, 4001, 3001);
    double worst = 0;
    for (int y = 0; y <= 3000; y += 7)
        for (int x = 0; x <= 4000; x += 13) {
            const double dx = x - 2000.5, dy = y - 1500.5, r = std::hypot(dx, dy);
            const double a2 = VectorAngle(dx, dy) - r / 50 + 1.570796325;
            const SourcePoint t = WarpMap(big, float(x), float(y));
            worst = std::max({worst, std::fabs(t.sx - (r * std::cos(a2) + 2000.5)),
                              std::fabs(t.sy - (r * std::sin(a2) + 1500.5))});
        }
    EXPECT_LT(worst, 1e-3);
}

TEST(Warp, FishEyeMagnifiesInsideHalfTheRadiusAndGuardsTheRim) {
    const WarpState s = MakeWarpState(0, 100, 60);  // R 75, centre (50, 30)
    EXPECT_EQ(s.radius, 75);
    EXPECT_EQ(WarpMap(s, 50, 30).sx, 50);
    EXPECT_NEAR(WarpMap(s, 87.5f, 30).sx, 87.5, kEps);  // r = R / 2
    EXPECT_NEAR(WarpMap(s, 65, 30).sx, 50 + 15 / 60.0 * 37.5, kEps);  // k = r / (R - r) × R / 2
    EXPECT_NEAR(WarpMap(s, 150, 30).sx, 50 - 150, kEps);  // beyond R: the other side
    const SourcePoint rim = WarpMap(s, 125, 30);           // r = R: kept in place
    EXPECT_EQ(rim.sx, 125);
    EXPECT_EQ(rim.sy, 30);
}

TEST(Warp, SmallTopAndWiggles) {
    const WarpState s = MakeWarpState(3, 20, 10);  // centre (10, 5)
    EXPECT_NEAR(WarpMap(s, 3, 9).sx, 3, kEps);      // bottom row: identity
    EXPECT_NEAR(WarpMap(s, 11, 0).sx, 20, kEps);    // top row: 10 - 2 × (-1) × 5 / 1
    const WarpState w = MakeWarpState(4, 20, 10);
    EXPECT_NEAR(WarpMap(w, 14, 0).sx, 16, kEps);    // factor 1.5
    EXPECT_NEAR(WarpMap(w, 14, 25).sx, 18, kEps);   // factor 2
    const WarpState other = MakeWarpState(9, 20, 10);
    EXPECT_EQ(WarpMap(other, 7, 3).sx, 7);
}

TEST(Fish, NearTheCentreNothingMovesAndTheSourceRadiusIsRSquaredOverR) {
    FishState s{10, 20, 20};
    EXPECT_EQ(FishMap(s, 20.5f, 20.5f).sx, 20.5f);
    EXPECT_NEAR(FishMap(s, 25, 20).sx, 22.5, kEps);  // r 5 -> 25 / 10
    EXPECT_NEAR(FishMap(s, 20, 40).sy, 60, kEps);    // r 20 -> 40: compressed outside R
    const FishState m = MakeFishState(60, 80);
    EXPECT_NEAR(m.radius, 50, kEps);
}

TEST(Remap, SamplesBilinearlyAndFillsOutsideWithTheBackground) {
    const cDib two = Make(2, 2, [](int x, int) { return x ? Grey(255) : Grey(0); });
    EXPECT_EQ(SampleBilinear(two, 0.5f, 0.5f, 0), 0x808080u);  // 127.5 rounds up
    EXPECT_EQ(SampleBilinear(two, 1, 1, 0), 0xFFFFFFu);
    EXPECT_EQ(SampleBilinear(two, -0.01f, 0, RGBColor(1, 2, 3)), 0x010203u);
    EXPECT_EQ(SampleBilinear(two, NAN, 0, RGBColor(1, 2, 3)), 0x010203u);

    const cDib src = Noisy(30, 20);
    cDib same;
    ASSERT_TRUE(ApplyWarp(src, same, 6, 0));  // no transformation: each pixel its own source
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x) {
            Px expect = At(src, x, y);
            expect.x = 0;
            ASSERT_EQ(At(same, x, y), expect);
        }
    // Every mapping run over whole rows at once gives what the point-by-point mapping gives.
    for (int16_t t = 0; t < 6; ++t) {
        const WarpState state = MakeWarpState(t, 30, 20);
        cDib rows, points;
        ASSERT_TRUE(ApplyWarp(src, rows, t, RGBColor(1, 2, 3)));
        ASSERT_TRUE(Remap(src, points, [&](float x, float y) { return WarpMap(state, x, y); }, RGBColor(1, 2, 3)));
        EXPECT_TRUE(Same(rows, points)) << "transformation " << t;
    }
    cDib wave;
    ApplyWarp(src, wave, 2, RGBColor(9, 8, 7));  // x = 25 reads 15 rows up: off the top
    EXPECT_EQ(At(wave, 25, 10), Rgb(9, 8, 7));
    EXPECT_EQ(At(wave, 0, 10).r, At(src, 0, 5).r);
}

}  // namespace
}  // namespace quorbel
