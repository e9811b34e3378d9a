#include <gtest/gtest.h>

#include "core/ThreadPool.h"
#include "imaging/ResizeDib.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

TEST(ResizeDib, AnEmptyPictureOrASizeThatCannotBeMadeGivesFalseAndKeepsThePicture) {
    cDib empty;
    EXPECT_FALSE(ResizeDib(empty, 10, 10, true));
    EXPECT_FALSE(empty.hDIB());
    cDib d = Numbered(3, 3);
    EXPECT_FALSE(ResizeDib(d, 0, 10, true));
    EXPECT_FALSE(ResizeDib(d, 10, -1, false));
    EXPECT_TRUE(Same(d, Numbered(3, 3)));
}

TEST(ResizeDib, TheSameSizeRunsThroughAndGivesTheSamePixelsInANewBuffer) {
    cDib d = Numbered(9, 7);
    const uint8_t* before = d.lpBits();
    ASSERT_TRUE(ResizeDib(d, 9, 7, true));
    EXPECT_NE(d.lpBits(), before);
    EXPECT_TRUE(Same(d, Numbered(9, 7)));
}

TEST(ResizeDib, FastEnlargingTwoByTwoToFourByFourGivesBlocks) {
    const Px corner[2][2] = {{Rgb(0, 0, 255), Rgb(0, 255, 0)}, {Rgb(255, 0, 0), Rgb(255, 255, 255)}};
    const auto blocks = [&](int x, int y) { return corner[y / 2][x / 2]; };
    cDib d = Make(2, 2, [&](int x, int y) { return corner[y][x]; }), hq = Copy(d);
    ASSERT_TRUE(ResizeDib(d, 4, 4, false));
    EXPECT_TRUE(Same(d, Make(4, 4, blocks)));

    // High quality blends: the inner pixels are neither of their neighbours' pure colours.
    ASSERT_TRUE(ResizeDib(hq, 4, 4, true));
    const Px inner = At(hq, 1, 1);
    EXPECT_GT(inner.b, 0);
    EXPECT_LT(inner.b, 255);
    EXPECT_GT(inner.r, 0);
}

TEST(ResizeDib, FlatPicturesStayFlatAtEverySize) {
    // Weights sum to exactly one, so no level drifts, and nothing overshoots at the edges.
    for (auto [w, h] : {std::pair{1, 1}, {3, 2}, {640, 480}, {17, 1000}}) {
        cDib d = Flat(50, 40, Rgb(200, 17, 255));
        ASSERT_TRUE(ResizeDib(d, w, h, true));
        EXPECT_EQ(MaxDiff(d, Flat(w, h, Rgb(200, 17, 255))), 0) << w << "x" << h;
    }
}

TEST(ResizeDib, FineStripesShrunkEightTimesComeOutFlatGrey) {
    // One-pixel black and white columns (and rows in the second picture): the widened kernel
    // must average them away; a plain bicubic would alias them into stripes.
    for (bool rows : {false, true}) {
        cDib d = Make(800, 800, [rows](int x, int y) { return Grey(((rows ? y : x) & 1) ? 0 : 255); });
        ASSERT_TRUE(ResizeDib(d, 100, 100, true));
        EXPECT_LE(MaxDiff(d, Flat(100, 100, Grey(128))), 3) << rows;
    }
}

TEST(ResizeDib, ShrinkingKeepsTheAverageAndMirroredInputGivesMirroredOutput) {
    const auto meanBlue = [](const cDib& d) {
        double sum = 0;
        for (int y = 0; y < d.Height(); ++y)
            for (int x = 0; x < d.Width(); ++x) sum += At(d, x, y).b;
        return sum / (d.Width() * d.Height());
    };
    cDib d = Numbered(301, 203), m = Numbered(301, 203);
    const double before = meanBlue(d);
    m.Orientation(true, false, false);
    ASSERT_TRUE(ResizeDib(d, 97, 61, true));
    ASSERT_TRUE(ResizeDib(m, 97, 61, true));
    EXPECT_NEAR(meanBlue(d), before, 0.5);
    m.Orientation(true, false, false);
    EXPECT_TRUE(Same(d, m));
}

TEST(ResizeDib, TheResultDoesNotDependOnTheNumberOfThreads) {
    cDib a = Numbered(1000, 700), b = Numbered(1000, 700);
    const int threads = ThreadCount();
    SetThreadCount(1);
    ASSERT_TRUE(ResizeDib(a, 333, 517, true));
    SetThreadCount(std::max(2, threads));
    ASSERT_TRUE(ResizeDib(b, 333, 517, true));
    SetThreadCount(threads);
    EXPECT_TRUE(Same(a, b));
}

TEST(ResizeDib, EnlargingInterpolatesAStepSmoothlyAndMonotonically) {
    // A dark/light edge enlarged 4x: values rise left to right with at most a small
    // overshoot from the cubic's negative lobes, and stay within 0..255.
    cDib d;
    d.Create(8, 1, 0);
    for (int x = 4; x < 8; ++x) Put(d, x, 0, Rgb(200, 200, 200));
    ASSERT_TRUE(ResizeDib(d, 32, 1, true));
    EXPECT_EQ(d.Row(0)[0], 0);
    EXPECT_EQ(d.Row(0)[31 * 4], 200);
    int previous = 0;
    for (int x = 10; x < 22; ++x) {
        const int v = d.Row(0)[x * 4];
        EXPECT_GE(v, previous - 12) << x;
        previous = v;
    }
    EXPECT_GT(d.Row(0)[16 * 4], 60);
    EXPECT_LT(d.Row(0)[15 * 4], 140);
}

}  // namespace quorbel
