#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "EffectsPictures.h"
#include "core/Random.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

TEST(Despeckle, PullsASpeckOneStepPerDifferingNeighbour) {
    cDIBFilter f;
    auto speck = [] { return Make(5, 5, [](int x, int y) { return x == 2 && y == 2 ? Grey(200) : Grey(100); }); };
    cDib once = speck();
    f.Despeckle(once);
    EXPECT_EQ(At(once, 2, 2), Grey(192));  // eight lower neighbours
    EXPECT_EQ(At(once, 1, 1), Grey(101));  // one higher neighbour
    cDib twice = speck();
    f.DespeckleMore(twice);
    EXPECT_EQ(At(twice, 2, 2), Grey(184));
    EXPECT_EQ(At(twice, 1, 1), Grey(102));
}

TEST(Despeckle, LeavesSoftGradientsAlone) {
    cDIBFilter f;
    const cDib ramp = Make(8, 6, [](int x, int) { return Grey(static_cast<uint8_t>(100 + x)); });
    cDib pic = Copy(ramp);
    f.DespeckleMore(pic);
    EXPECT_TRUE(Same(pic, ramp));
}

// The nudge rule written the plain way, one byte at a time, for comparing with the fast one.
int NudgeReference(const cDib& src, int x, int y, int c, int rounds) {
    int v = src.Row(y)[4 * x + c];
    const int ring[8][2] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}};
    for (int r = 0; r < rounds; ++r)
        for (const auto& d : ring) {
            const int n = src.Row(y + d[1])[4 * (x + d[0]) + c];
            if (n < v - 1 && v > 0) --v;
            else if (n > v + 1 && v < 255) ++v;
        }
    return v;
}

TEST(Despeckle, EveryByteOfANoisyPictureFollowsThePlainRule) {
    // 37 pixels wide: the inner rows are not a multiple of sixteen bytes, so both the wide
    // and the byte-by-byte paths run. Values near 0 and 255 test the limits.
    Random rnd(7);
    cDib src;
    src.Create(37, 9);
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 37 * 4; ++x) {
            const int r = static_cast<int>(rnd.Next() % 12);
            src.Row(y)[x] = static_cast<uint8_t>(r < 3 ? r : r > 8 ? 252 + (r - 9) : rnd.Next() & 255);
        }
    for (int rounds : {1, 2}) {
        cDib d;
        d.Create(37, 9);
        std::memcpy(d.lpBits(), src.lpBits(), static_cast<size_t>(src.Size()));
        cDIBFilter f;
        rounds == 1 ? f.Despeckle(d) : f.DespeckleMore(d);
        for (int y = 1; y < 8; ++y)
            for (int x = 1; x < 36; ++x)
                for (int c = 0; c < 3; ++c)
                    ASSERT_EQ(d.Row(y)[4 * x + c], NudgeReference(src, x, y, c, rounds)) << x << "," << y << "," << c;
    }
}

TEST(Morphology, DilateNeverDarkensAndErodeNeverBrightens) {
    cDIBFilter f;
    const cDib src = Noisy(23, 17);
    cDib dilated = Copy(src), eroded = Copy(src);
    f.Dilate(dilated);
    f.Erode(eroded);
    for (int y = 0; y < src.Height(); ++y)
        for (int x = 0; x < src.Width(); ++x) {
            const Px s = At(src, x, y), d = At(dilated, x, y), e = At(eroded, x, y);
            EXPECT_TRUE(d.b >= s.b && d.g >= s.g && d.r >= s.r);
            EXPECT_TRUE(e.b <= s.b && e.g <= s.g && e.r <= s.r);
            EXPECT_EQ(d.x, s.x);
        }
}

TEST(Morphology, ALoneWhitePixelGrowsUnderDilateAndVanishesUnderErode) {
    cDIBFilter f;
    auto dot = [] { return Make(5, 5, [](int x, int y) { return x == 2 && y == 2 ? Grey(255) : Grey(0); }); };
    cDib grown = dot(), gone = dot();
    f.Dilate(grown);
    f.Erode(gone);
    EXPECT_EQ(At(grown, 1, 1), Grey(255));
    EXPECT_EQ(At(grown, 3, 3), Grey(255));
    EXPECT_EQ(At(grown, 0, 0), Grey(0));  // border kept
    EXPECT_EQ(At(gone, 2, 2), Grey(0));
}

TEST(SaltPepper, RemovesALoneSpeckAndKeepsAStraightEdge) {
    cDIBFilter f;
    cDib pic = Make(8, 7, [](int x, int y) {
        if (x == 2 && y == 3) return Grey(255);  // salt in the dark half
        return x < 5 ? Grey(0) : Grey(200);
    });
    f.SaltPepper(pic, 255);  // the window's Threshold 0
    EXPECT_EQ(At(pic, 2, 3), Grey(0));
    for (int y = 1; y < 6; ++y) {
        EXPECT_EQ(At(pic, 4, y), Grey(0));
        EXPECT_EQ(At(pic, 5, y), Grey(200));
    }
}

TEST(SaltPepper, ThresholdDecidesWhichDifferencesCount) {
    cDIBFilter f;
    auto speck = [] { return Make(3, 3, [](int x, int y) { return x == 1 && y == 1 ? Grey(150) : Grey(100); }); };
    cDib kept = speck(), taken = speck();
    f.SaltPepper(kept, 255 - 50);   // differs by exactly 50: not more than the threshold
    f.SaltPepper(taken, 255 - 49);
    EXPECT_EQ(At(kept, 1, 1), Grey(150));
    EXPECT_EQ(At(taken, 1, 1), Grey(100));
}

TEST(SaltPepper, AtThresholdZeroItIsTheMedianOfEachBlock) {
    cDIBFilter f;
    const cDib src = Noisy(9, 8, 3);
    cDib pic = Copy(src);
    f.SaltPepper(pic, 255);
    for (int y = 1; y < 7; ++y)
        for (int x = 1; x < 8; ++x)
            for (int c = 0; c < 3; ++c) {
                uint8_t v[9];
                int n = 0;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx) v[n++] = src.Row(y + dy)[4 * (x + dx) + c];
                std::nth_element(v, v + 4, v + 9);
                ASSERT_EQ(pic.Row(y)[4 * x + c], v[4]) << x << "," << y << "," << c;
            }
}

}  // namespace
}  // namespace quorbel
