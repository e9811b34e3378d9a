#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Pictures.h"
#include "effects/Remap.h"
#include "effects/Warp.h"

namespace quorbel::test {
namespace {

constexpr double kEps = 1e-3;

// Where destination points of a w × h picture take their source, worked by hand.
struct Point {
    float x, y;
    char axis;  // 'x' or 'y': the source coordinate checked
    double want;
};
struct MapCase {
    const char* what;
    int16_t type;
    int w, h;
    std::vector<Point> points;
};

TEST(Warp, MappedPointsByHand) {
    const MapCase cases[] = {
        {"wave: rows shift by the column's sine", 2, 200, 100, {{0, 40, 'y', 35}, {25, 40, 'y', 25}, {75, 40, 'y', 45}, {75, 40, 'x', 75}}},
        {"double wave", 5, 200, 100, {{0, 0, 'x', -5}, {0, 25, 'x', -15}}},
        {"twist keeps the centre", 1, 100, 80, {{50, 40, 'x', 50}, {50, 40, 'y', 40}}},
        // R 75: kept at the centre, at R / 2 and at R; k = r / (R - r) × R / 2 inside; the other side beyond R.
        {"fisheye", 0, 100, 60,
         {{50, 30, 'x', 50}, {87.5f, 30, 'x', 87.5}, {65, 30, 'x', 50 + 15 / 60.0 * 37.5}, {150, 30, 'x', -100}, {125, 30, 'x', 125}, {125, 30, 'y', 30}}},
        {"small top: the bottom row stays, the top row 10 - 2 × (-1) × 5 / 1", 3, 20, 10, {{3, 9, 'x', 3}, {11, 0, 'x', 20}}},
        {"wiggles: factors 1.5 and 2", 4, 20, 10, {{14, 0, 'x', 16}, {14, 25, 'x', 18}}},
        {"an unknown transformation is none", 9, 20, 10, {{7, 3, 'x', 7}}},
    };
    for (const MapCase& c : cases)
        for (const Point& p : c.points) {
            const SourcePoint s = WarpMap(MakeWarpState(c.type, c.w, c.h), p.x, p.y);
            EXPECT_NEAR(p.axis == 'x' ? s.sx : s.sy, p.want, kEps) << c.what << " at " << p.x << "," << p.y;
        }
    EXPECT_EQ(MakeWarpState(0, 100, 60).radius, 75);
}

TEST(Warp, AngleFunction) {
    constexpr double pi = 3.14159265;
    // b negative: plus pi, not folded above pi; |b| up to 0.01 counts as 0.
    const std::array<std::array<double, 3>, 6> cases{
        {{1, 1, pi / 4}, {1, -1, 3 * pi / 4}, {-1, -1, 5 * pi / 4}, {1, 0.01, pi / 2}, {-1, 0.005, -pi / 2}, {0, 0, pi / 2}}};
    for (auto [a, b, want] : cases) EXPECT_NEAR(VectorAngle(a, b), want, 1e-9) << a << "," << b;
}

TEST(Warp, TwistTurnsByTheRadiusOverFifty) {
    const WarpState s = MakeWarpState(1, 100, 80);  // centre (50, 40)
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
}  // namespace quorbel::test
