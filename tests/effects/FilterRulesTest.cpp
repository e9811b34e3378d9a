// The filters' rules worked by hand on small pictures, and the properties that hold for any
// picture (limits, identities, the plain-rule references of the fast paths).
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

#include "Pictures.h"
#include "effects/ColourRules.h"
#include "effects/cDIBFilter.h"

namespace quorbel::test {
namespace {

using Op = std::function<void(cDIBFilter&, cDib&)>;

// w × h of grey background with one grey-v pixel at (x, y).
cDib Dot(int w, int h, int x, int y, uint8_t v, uint8_t background) {
    return Make(w, h, [=](int px, int py) { return px == x && py == y ? Grey(v) : Grey(background); });
}
cDib Spot(uint8_t v = 90, uint8_t background = 0) { return Dot(4, 4, 1, 1, v, background); }
// One row of the given pixels.
cDib Strip(std::vector<Px> row) {
    return Make(int(row.size()), 1, [row](int x, int) { return row[x]; });
}
// Dark on the left, light from column 3.
cDib Step() { return Make(6, 5, [](int x, int) { return x < 3 ? Rgb(20, 30, 40) : Rgb(220, 230, 240); }); }
cDib Ramp() { return Strip({Grey(100), Grey(127), Grey(128), Grey(200)}); }

struct Expect {
    int x, y;
    Px px;
};
struct Probe {
    const char* what;
    cDib picture;
    Op run;
    std::vector<Expect> expect;
};

TEST(FilterRules, HandWorkedPixels) {
    const Probe probes[] = {
        {"blur 100: the box mean 90 / 9, border kept", Spot(), [](auto& f, auto& p) { f.Blur(p, 100); },
         {{1, 1, Grey(10)}, {2, 2, Grey(10)}, {0, 0, Grey(0)}}},
        {"blur 76: 25 × 90 / 33; 90 / 33", Spot(), [](auto& f, auto& p) { f.Blur(p, 76); }, {{1, 1, Grey(68)}, {2, 2, Grey(2)}}},
        {"soften 76: 25 × 90 / 29, 90 / 29, diagonal not counted", Spot(), [](auto& f, auto& p) { f.Soften(p, 76); },
         {{1, 1, Grey(77)}, {2, 1, Grey(3)}, {2, 2, Grey(0)}}},
        {"sharpen 76: (33 × 100 - 8 × 40) / 25, (33 × 40 - 100 - 7 × 40) / 25", Spot(100, 40),
         [](auto& f, auto& p) { f.Sharpen(p, 76); }, {{1, 1, Grey(119)}, {2, 1, Grey(37)}}},
        {"sharpen 100: divisor 1 saturates and clamps", Spot(), [](auto& f, auto& p) { f.Sharpen(p, 100); },
         {{1, 1, Grey(255)}, {2, 2, Grey(0)}}},
        {"emboss 50 from the top left: 128 + trunc(-1.5)", Dot(3, 3, 0, 0, 1, 0), [](auto& f, auto& p) { f.Emboss(p, 50, -1); },
         {{1, 1, Grey(127)}}},
        {"emboss 50 from the bottom right: 128 + trunc(1.5)", Dot(3, 3, 0, 0, 1, 0), [](auto& f, auto& p) { f.Emboss(p, 50, 1); },
         {{1, 1, Grey(129)}}},
        {"emboss of a flat picture: mid grey", Flat(4, 4, Rgb(200, 10, 90)), [](auto& f, auto& p) { f.Emboss(p, 200, -1); },
         {{1, 2, Grey(128)}, {0, 2, Rgb(200, 10, 90)}}},
        {"contour: flat is white paper", Step(), [](auto& f, auto& p) { f.Contour(p); }, {{1, 2, Grey(255)}, {0, 2, Rgb(20, 30, 40)}}},
        {"outline: 3 × 200 across the edge saturates", Step(), [](auto& f, auto& p) { f.Outline(p, 0, 0); },
         {{1, 2, Grey(0)}, {2, 2, Grey(255)}}},
        {"outline raised by its shift", Flat(4, 4, Grey(50)), [](auto& f, auto& p) { f.Outline(p, 0, 20); }, {{1, 1, Grey(20)}}},
        {"relieve of a flat picture keeps it", Flat(5, 5, Rgb(10, 120, 230)), [](auto& f, auto& p) { f.Relieve(p, 100); },
         {{2, 2, Rgb(10, 120, 230)}}},
        {"despeckle: a step per differing neighbour", Dot(5, 5, 2, 2, 200, 100), [](auto& f, auto& p) { f.Despeckle(p); },
         {{2, 2, Grey(192)}, {1, 1, Grey(101)}}},
        {"despeckle more: the neighbours twice", Dot(5, 5, 2, 2, 200, 100), [](auto& f, auto& p) { f.DespeckleMore(p); },
         {{2, 2, Grey(184)}, {1, 1, Grey(102)}}},
        {"dilate grows a white dot", Dot(5, 5, 2, 2, 255, 0), [](auto& f, auto& p) { f.Dilate(p); },
         {{1, 1, Grey(255)}, {3, 3, Grey(255)}, {0, 0, Grey(0)}}},
        {"erode removes it", Dot(5, 5, 2, 2, 255, 0), [](auto& f, auto& p) { f.Erode(p); }, {{2, 2, Grey(0)}}},
        {"salt 'n pepper removes salt, keeps a straight edge",
         Make(8, 7, [](int x, int y) { return x == 2 && y == 3 ? Grey(255) : x < 5 ? Grey(0) : Grey(200); }),
         [](auto& f, auto& p) { f.SaltPepper(p, 255); }, {{2, 3, Grey(0)}, {4, 1, Grey(0)}, {5, 1, Grey(200)}, {4, 5, Grey(0)}, {5, 5, Grey(200)}}},
        {"salt 'n pepper: a difference of exactly the threshold stays", Dot(3, 3, 1, 1, 150, 100),
         [](auto& f, auto& p) { f.SaltPepper(p, 255 - 50); }, {{1, 1, Grey(150)}}},
        {"salt 'n pepper: one more goes", Dot(3, 3, 1, 1, 150, 100), [](auto& f, auto& p) { f.SaltPepper(p, 255 - 49); },
         {{1, 1, Grey(100)}}},
        {"greys: 0.299 r + 0.587 g + 0.114 b, 118.5 to even", Strip({Rgb(10, 20, 30), Rgb(200, 100, 0)}),
         [](auto& f, auto& p) { f.Greys(p); }, {{0, 0, Grey(18)}, {1, 0, Grey(118)}}},
        {"negative", Strip({Rgb(10, 20, 30)}), [](auto& f, auto& p) { f.Negative(p); }, {{0, 0, Rgb(245, 235, 225)}}},
        {"RGB levels clamp per channel", Strip({Rgb(200, 30, 77), Rgb(1, 2, 3)}),
         [](auto& f, auto& p) { f.RGBLevels(p, 100, -50, 0); }, {{0, 0, Rgb(255, 0, 77)}, {1, 0, Rgb(101, 0, 3)}}},
        {"RGB levels beyond ±255 clamped", Strip({Rgb(1, 2, 3)}), [](auto& f, auto& p) { f.RGBLevels(p, 900, -900, 0); },
         {{0, 0, Rgb(255, 0, 3)}}},
        {"contrast -100: flat grey", Ramp(), [](auto& f, auto& p) { f.Contrast(p, -100); },
         {{0, 0, Grey(128)}, {1, 0, Grey(128)}, {3, 0, Grey(128)}}},
        {"contrast 100: 128 + 2 (v - 128)", Ramp(), [](auto& f, auto& p) { f.Contrast(p, 100); },
         {{0, 0, Grey(72)}, {1, 0, Grey(126)}, {3, 0, Grey(255)}}},
        {"contrast 50: -1.5 truncates", Ramp(), [](auto& f, auto& p) { f.Contrast(p, 50); }, {{1, 0, Grey(127)}}},
        {"saturation 100 doubles the distances from grey 115", Strip({Rgb(150, 100, 100)}),
         [](auto& f, auto& p) { f.Saturation(p, 100); }, {{0, 0, Rgb(185, 85, 85)}}},
        {"scanlines: odd rows black", Flat(2, 4, Grey(100)), [](auto& f, auto& p) { f.Scanlines(p, 100, 0); },
         {{1, 0, Grey(100)}, {1, 1, Grey(0)}}},
        {"scanlines 50 / 50: 100 + 155 / 2, 100 - 50", Flat(2, 2, Grey(100)), [](auto& f, auto& p) { f.Scanlines(p, 50, 50); },
         {{0, 0, Grey(177)}, {0, 1, Grey(50)}}},
        {"colorize without saturation: the own luminosity", Strip({Rgb(200, 0, 0), Grey(77)}),
         [](auto& f, auto& p) { f.Colorize(p, 30, 0, 100); }, {{0, 0, Grey(100)}, {1, 0, Grey(77)}}},
        {"pixelate 2: each block's top left, the last block narrower",
         Make(5, 3, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 9); }), [](auto& f, auto& p) { f.Pixelate(p, 2); },
         {{1, 1, Rgb(0, 0, 9)}, {3, 0, Rgb(2, 0, 9)}, {4, 2, Rgb(4, 2, 9)}}},
        {"replace l: L 0.5 ± 0.05 only", Strip({Rgb(255, 0, 0), Rgb(0, 160, 0), Grey(250)}),
         [](auto& f, auto& p) { f.ReplaceL(p, RGBColor(255, 0, 0), RGBColor(1, 2, 3), 255, 5); },
         {{0, 0, Rgb(1, 2, 3)}, {1, 0, Rgb(0, 160, 0)}, {2, 0, Grey(250)}}},
        {"replace HS: same L, so exactly the new colour", Strip({Rgb(255, 0, 0), Rgb(0, 160, 0), Grey(250)}),
         [](auto& f, auto& p) { f.ReplaceHS(p, RGBColor(255, 0, 0), RGBColor(0, 0, 255), 255, 5, 5); },
         {{0, 0, Rgb(0, 0, 255)}, {1, 0, Rgb(0, 160, 0)}, {2, 0, Grey(250)}}},
        {"shift: only colours within the extent", Strip({Grey(100), Rgb(110, 95, 100), Rgb(120, 100, 100)}),
         [](auto& f, auto& p) { f.Shift(p, RGBColor(100, 100, 100), 30, 10); },
         {{0, 0, Grey(130)}, {1, 0, Rgb(140, 125, 130)}, {2, 0, Rgb(120, 100, 100)}}},
        {"sepia keeps black and white", Strip({Grey(0), Grey(255)}), [](auto& f, auto& p) { f.Sepia(p, 0.5f, 0.25f, 1.0f); },
         {{0, 0, Grey(0)}, {1, 0, Grey(255)}}},
        {"brighten the window's way: every channel, clamped", Make(2, 2, [](int x, int y) { return Grey(uint8_t(60 * (x + 2 * y))); }),
         [](auto&, auto& p) { Brighten(p, 255); }, {{0, 0, Grey(255)}, {1, 1, Grey(255)}}},
        {"contrast the window's way: 127 + 10, 128 - 10", Strip({Grey(127), Grey(128)}),
         [](auto&, auto& p) { ContrastPicture(p, 10); }, {{0, 0, Grey(137)}, {1, 0, Grey(118)}}},
        {"colour balance to the ends", Flat(3, 2, Rgb(10, 20, 30)), [](auto&, auto& p) { ColourBalance(p, 100, 0, -100); },
         {{2, 1, Rgb(255, 20, 0)}}},
    };
    cDIBFilter f;
    for (const Probe& probe : probes) {
        SCOPED_TRACE(probe.what);
        cDib pic = Copy(probe.picture);
        probe.run(f, pic);
        for (const Expect& e : probe.expect) EXPECT_EQ(At(pic, e.x, e.y), e.px) << e.x << "," << e.y;
    }
}

TEST(FilterRules, NeutralSettingsLeaveThePictureAsItWas) {
    const cDib noisy = Noisy(13, 9, 11);
    const cDib softRamp = Make(8, 6, [](int x, int) { return Grey(uint8_t(100 + x)); });
    const cDib flat = Flat(6, 5, Px{30, 140, 250, 9});
    const std::pair<const char*, Op> cases[] = {
        {"contrast 0", [](auto& f, auto& p) { f.Contrast(p, 0); }},
        {"saturation 0", [](auto& f, auto& p) { f.Saturation(p, 0); }},
        {"pixelate 1", [](auto& f, auto& p) { f.Pixelate(p, 1); }},
        {"diffuse 0 × 0", [](auto& f, auto& p) { f.Diffuse(p, 0, 0, 1); }},
        {"noise 0", [](auto& f, auto& p) { f.Noise(p, 0, 1); }},
        {"replace l, extent 0", [](auto& f, auto& p) { f.ReplaceL(p, RGBColor(255, 0, 0), RGBColor(1, 2, 3), 0, 100); }},
        {"negative twice", [](auto& f, auto& p) { f.Negative(p), f.Negative(p); }},
        {"colour balance 0", [](auto&, auto& p) { ColourBalance(p, 0, 0, 0); }},
    };
    cDIBFilter f;
    for (const auto& [what, run] : cases) {
        cDib pic = Copy(noisy);
        run(f, pic);
        EXPECT_TRUE(Same(pic, noisy)) << what;
    }
    cDib ramp = Copy(softRamp);
    f.DespeckleMore(ramp);
    EXPECT_TRUE(Same(ramp, softRamp)) << "despeckle of a soft gradient";
    // The kernels' weights add up to their divisors: a flat picture stays, the fourth byte too.
    for (int s : {76, 88, 100})
        for (auto run : {&cDIBFilter::Blur, &cDIBFilter::Soften, &cDIBFilter::Sharpen}) {
            cDib pic = Copy(flat);
            (f.*run)(pic, s);
            EXPECT_TRUE(Same(pic, flat)) << s;
        }
}

TEST(FilterRules, ToneRelations) {
    cDIBFilter f;
    // Three colours of grey 115: one sepia tone, red above green above the grey.
    cDib sepia = Strip({Rgb(150, 100, 100), Rgb(115, 115, 115), Rgb(100, 125, 100)});
    f.Sepia(sepia, 0.5f, 0.25f, 1.0f);
    const Px tone = At(sepia, 0, 0);
    EXPECT_TRUE(At(sepia, 1, 0) == tone && At(sepia, 2, 0) == tone);
    EXPECT_TRUE(tone.r > tone.g && tone.g > tone.b && tone.b == 115);
    // Same max + min, same tint.
    cDib tinted = Strip({Rgb(200, 0, 0), Rgb(0, 0, 200)});
    f.Colorize(tinted, 60, 80, 100);
    EXPECT_EQ(At(tinted, 0, 0), At(tinted, 1, 0));
    cDib grey = Noisy(6, 6, 11);
    f.Saturation(grey, -100);
    for (int i = 0; i < 36; ++i) {
        const Px p = At(grey, i % 6, i / 6);
        EXPECT_TRUE(p.r == p.g && p.g == p.b) << i;
    }
    // An edge: grey lines on the contour, a relief rising toward the light's far side.
    cDib contour = Step(), relief = Step();
    f.Contour(contour);
    f.EmbossGrey(relief, 0, -1);
    for (const Px p : {At(contour, 2, 2), At(relief, 2, 2)}) EXPECT_TRUE(p.r == p.g && p.g == p.b);
    EXPECT_LT(At(contour, 2, 2).r, 100);
    EXPECT_GT(At(relief, 2, 2).r, 128);
}

TEST(ColourRules, ChannelRules) {
    EXPECT_EQ(Brighten(RGBColor(10, 20, 30), 5), RGBColor(15, 25, 35));
    EXPECT_EQ(Brighten(RGBColor(0, 1, 254), 255), RGBColor(255, 255, 255));
    EXPECT_EQ(Brighten(RGBColor(0, 100, 254), -101), RGBColor(0, 0, 153));
    // Contrast: above 128 only the top is clamped, below only the bottom.
    const std::array<std::array<int, 3>, 7> contrast{{{128, 10, 118}, {127, 10, 137}, {200, 0, 200}, {250, -10, 255},
                                                      {5, -10, 0}, {130, 200, -70}, {100, 200, 300}}};
    for (auto [v, a, want] : contrast) EXPECT_EQ(ContrastChannel(v, a), want) << v << " " << a;
    // Inside the window's range the unclamped side stays inside a byte; one step more leaves it.
    for (int a = kContrastRange.minimum; a <= kContrastRange.maximum; ++a)
        for (int v = 0; v < 256; ++v) ASSERT_TRUE(ContrastChannel(v, a) >= 0 && ContrastChannel(v, a) <= 255) << v << " " << a;
    EXPECT_LT(ContrastChannel(128, kContrastRange.maximum + 1), 0);
    // Balance: toward white or black, halves to even: 127.5, 126.5, 155 × 0.25 + 100.
    EXPECT_EQ(BalanceChannel(0, 0.5f), 128);
    EXPECT_EQ(BalanceChannel(253, -0.5f), 126);
    EXPECT_EQ(BalanceChannel(100, 0.25f), 139);
    for (int c = 0; c < 256; ++c) {
        EXPECT_EQ(BalanceChannel(c, 0.0f), c);
        EXPECT_EQ(BalanceChannel(c, BalanceFactor(100)), 255);
        EXPECT_EQ(BalanceChannel(c, BalanceFactor(-100)), 0);
    }
}

// The nudge rule the plain way, one byte at a time.
int NudgeReference(const cDib& src, int x, int y, int c, int rounds) {
    int v = src.Row(y)[4 * x + c];
    for (int r = 0; r < rounds; ++r)
        for (int n = 0; n < 9; ++n) {
            const int u = n == 4 ? v : src.Row(y + n / 3 - 1)[4 * (x + n % 3 - 1) + c];
            if (u < v - 1 && v > 0) --v;
            else if (u > v + 1 && v < 255) ++v;
        }
    return v;
}

// The median of the 3 × 3 block around (x, y) of colour byte c.
int Median(const cDib& src, int x, int y, int c) {
    std::array<uint8_t, 9> v;
    for (int n = 0; n < 9; ++n) v[n] = src.Row(y + n / 3 - 1)[4 * (x + n % 3 - 1) + c];
    std::nth_element(v.begin(), v.begin() + 4, v.end());
    return v[4];
}

TEST(FilterRules, NeighbourFiltersFollowThePlainRuleOnEveryByte) {
    // 37 wide: the inner rows are not a multiple of sixteen bytes, so both the wide and the
    // byte-by-byte paths run; many values at 0..2 and 252..255 test the limits.
    Random rnd(7);
    const cDib src = Make(37, 9, [&](int, int) {
        Px p;
        for (uint8_t* b : {&p.b, &p.g, &p.r, &p.x}) {
            const int r = int(rnd.Next() % 12);
            *b = uint8_t(r < 3 ? r : r > 8 ? 252 + (r - 9) : rnd.Next() & 255);
        }
        return p;
    });
    cDIBFilter f;
    cDib once = Copy(src), twice = Copy(src), median = Copy(src), dilated = Copy(src), eroded = Copy(src);
    f.Despeckle(once);
    f.DespeckleMore(twice);
    f.SaltPepper(median, 255);
    f.Dilate(dilated);
    f.Erode(eroded);
    for (int y = 1; y < 8; ++y)
        for (int x = 1; x < 36; ++x)
            for (int c = 0; c < 3; ++c) {
                SCOPED_TRACE(testing::Message() << x << "," << y << "," << c);
                ASSERT_EQ(once.Row(y)[4 * x + c], NudgeReference(src, x, y, c, 1));
                ASSERT_EQ(twice.Row(y)[4 * x + c], NudgeReference(src, x, y, c, 2));
                ASSERT_EQ(median.Row(y)[4 * x + c], Median(src, x, y, c));
                ASSERT_GE(dilated.Row(y)[4 * x + c], src.Row(y)[4 * x + c]);
                ASSERT_LE(eroded.Row(y)[4 * x + c], src.Row(y)[4 * x + c]);
            }
    for (int i = 0; i < 37 * 9; ++i)  // the fourth byte kept
        ASSERT_TRUE(At(dilated, i % 37, i / 37).x == At(src, i % 37, i / 37).x && At(eroded, i % 37, i / 37).x == At(src, i % 37, i / 37).x);
}

TEST(FilterRules, ScatterFiltersStayWithinTheirReach) {
    cDIBFilter f;
    const cDib src = Make(40, 30, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 128); });
    cDib moved = Copy(src), again = Copy(src), noisy = Copy(src);
    f.Diffuse(moved, 3, 2, 2);
    f.Diffuse(again, 3, 2, 2);
    EXPECT_TRUE(Same(again, moved));  // same seed, same picture
    f.Noise(noisy, 20, 3);
    int changed = 0, spread = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const Px s = At(src, x, y), m = At(moved, x, y), n = At(noisy, x, y);
            if (x % 2 || y % 2) EXPECT_EQ(m, s);  // between the steps: untouched
            if (x % 3 || y % 3) EXPECT_EQ(n, s);
            EXPECT_LE(std::abs(m.r - x), 3);
            EXPECT_LE(std::abs(m.g - y), 2);
            changed += m != s;
            for (int d : {n.r - s.r, n.g - s.g, n.b - s.b}) {
                EXPECT_LE(std::abs(d), 20);
                spread = std::max(spread, std::abs(d));
            }
        }
    EXPECT_GT(changed, 100);
    EXPECT_GE(spread, 15);
}

TEST(FilterRules, DividerIsExactWhereverTheFiltersUseIt) {
    for (uint32_t d : {1u, 2u, 3u, 7u, 9u, 25u, 29u, 33u, 100u, 255u}) {
        const Divider div(d);
        for (uint32_t n = 0; n < 300000; ++n) ASSERT_EQ(div(n), n / d) << n << " / " << d;
        ASSERT_EQ(div((1u << 24) - 1), ((1u << 24) - 1) / d);
        EXPECT_EQ(div.Signed(-7), -7 / static_cast<int32_t>(d));
    }
}

}  // namespace
}  // namespace quorbel::test
