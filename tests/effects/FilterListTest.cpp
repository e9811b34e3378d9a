#include <gtest/gtest.h>

#include <string>

#include "Pictures.h"
#include "core/ThreadPool.h"
#include "effects/ColourRules.h"
#include "effects/FilterList.h"
#include "effects/Remap.h"

namespace quorbel::test {
namespace {

using Params = std::array<int, 3>;
using Direct = void (*)(cDIBFilter&, cDib&, const Params&, ColorRef, ColorRef);

// Each list entry: its name as the list shows it, the engine call its settings stand for
// (Level 1..25 is strength 76..100, Threshold t is level 255 - t, Emboss lights from the top
// left, Sepia uses the window's fixed tones), whether its initial settings leave a picture
// as it was, and whether it is a 3 × 3 filter (which keeps pictures under 3 × 3 as they are).
struct Entry {
    const char* name;
    Direct direct;
    bool initialKeeps, threeByThree;
};
const Entry kEntries[kFilterCount] = {
    {"<None>", nullptr, true, false},
    {"Blur", [](auto& f, auto& p, auto& v, auto, auto) { f.Blur(p, v[0] + 75); }, false, true},
    {"Brightness", [](auto& f, auto& p, auto& v, auto, auto) { f.RGBLevels(p, v[0], v[0], v[0]); }, true, false},
    {"Colorize", [](auto& f, auto& p, auto& v, auto, auto) { f.Colorize(p, v[0], v[1], v[2]); }, false, false},
    {"Contour", [](auto& f, auto& p, auto&, auto, auto) { f.Contour(p); }, false, true},
    {"Contrast", [](auto& f, auto& p, auto& v, auto, auto) { f.Contrast(p, v[0]); }, true, false},
    {"Despeckle", [](auto& f, auto& p, auto&, auto, auto) { f.Despeckle(p); }, false, true},
    {"Despeckle more", [](auto& f, auto& p, auto&, auto, auto) { f.DespeckleMore(p); }, false, true},
    {"Diffuse", [](auto& f, auto& p, auto& v, auto, auto) { f.Diffuse(p, v[0], v[1], v[2]); }, true, false},
    {"Dilate", [](auto& f, auto& p, auto&, auto, auto) { f.Dilate(p); }, false, true},
    {"Emboss", [](auto& f, auto& p, auto& v, auto, auto) { f.Emboss(p, v[0], -1); }, false, true},
    {"Erode", [](auto& f, auto& p, auto&, auto, auto) { f.Erode(p); }, false, true},
    {"Greys", [](auto& f, auto& p, auto&, auto, auto) { f.Greys(p); }, false, false},
    {"Negative", [](auto& f, auto& p, auto&, auto, auto) { f.Negative(p); }, false, false},
    {"Noise", [](auto& f, auto& p, auto& v, auto, auto) { f.Noise(p, v[0], v[1]); }, true, false},
    {"Outline", [](auto& f, auto& p, auto& v, auto, auto) { f.Outline(p, v[0], v[1]); }, false, true},
    {"Pixelaze", [](auto& f, auto& p, auto& v, auto, auto) { f.Pixelate(p, v[0]); }, true, false},
    {"Relieve", [](auto& f, auto& p, auto& v, auto, auto) { f.Relieve(p, v[0]); }, false, true},
    {"Replace HS", [](auto& f, auto& p, auto& v, auto a, auto b) { f.ReplaceHS(p, a, b, v[0], v[1], v[2]); }, true, false},
    {"Replace l", [](auto& f, auto& p, auto& v, auto a, auto b) { f.ReplaceL(p, a, b, v[0], v[1]); }, true, false},
    {"RGB levels", [](auto& f, auto& p, auto& v, auto, auto) { f.RGBLevels(p, v[0], v[1], v[2]); }, true, false},
    {"Salt 'n pepper removal", [](auto& f, auto& p, auto& v, auto, auto) { f.SaltPepper(p, 255 - v[0]); }, false, true},
    {"Saturation", [](auto& f, auto& p, auto& v, auto, auto) { f.Saturation(p, v[0]); }, true, false},
    {"Scanlines", [](auto& f, auto& p, auto& v, auto, auto) { f.Scanlines(p, v[0], v[1]); }, true, false},
    {"Sepia", [](auto& f, auto& p, auto&, auto, auto) { f.Sepia(p, 0.5f, 0.25f, 1.0f); }, false, false},
    {"Sharpen", [](auto& f, auto& p, auto& v, auto, auto) { f.Sharpen(p, v[0] + 75); }, false, true},
    {"Shift", [](auto& f, auto& p, auto& v, auto a, auto) { f.Shift(p, a, v[0], v[1]); }, true, false},
    {"Soften", [](auto& f, auto& p, auto& v, auto, auto) { f.Soften(p, v[0] + 75); }, false, true},
};

// Settings away from neutral, each slider at a different point of its range, so that every
// filter does something and no two sliders of one entry agree.
FilterSettings Busy(int index) {
    FilterSettings s{{}, {RGBColor(200, 60, 60), RGBColor(20, 40, 220)}};
    const FilterEntry& e = FilterList()[index];
    for (int k = 0; k < e.paramCount; ++k)
        s.params[k] = e.params[k].minimum + (e.params[k].maximum - e.params[k].minimum) * (k + 2) / 5;
    return s;
}

// The picture after list entry index with settings s, from a fresh engine (one seed).
cDib Applied(const cDib& src, int index, const FilterSettings& s) {
    cDIBFilter engine;
    cDib pic = Copy(src);
    ApplyFilter(engine, pic, index, s);
    return pic;
}

TEST(FilterList, EveryEntryCallsItsOwnFilter) {
    const cDib src = Noisy(9, 7);
    std::vector<cDib> results;
    for (int i = 0; i < kFilterCount; ++i) {
        const Entry& e = kEntries[i];
        SCOPED_TRACE(e.name);
        EXPECT_EQ(std::string(FilterList()[i].name), e.name);
        const FilterSettings s = Busy(i);
        results.push_back(Applied(src, i, s));
        if (e.direct) {
            cDIBFilter engine;
            cDib direct = Copy(src);
            e.direct(engine, direct, s.params, s.colours[0], s.colours[1]);
            EXPECT_TRUE(Same(results.back(), direct));
        }
        if (i > 0) EXPECT_FALSE(Same(results[i], results[i - 1])) << "same as " << kEntries[i - 1].name;
        EXPECT_EQ(Same(Applied(src, i, InitialSettings(i)), src), e.initialKeeps);
        // Each slider is clamped to its range.
        FilterSettings low = s, high = s, over = s, under = s;
        for (int k = 0; k < FilterList()[i].paramCount; ++k) {
            low.params[k] = FilterList()[i].params[k].minimum, under.params[k] = low.params[k] - 100000;
            high.params[k] = FilterList()[i].params[k].maximum, over.params[k] = high.params[k] + 100000;
        }
        EXPECT_TRUE(Same(Applied(src, i, over), Applied(src, i, high)));
        EXPECT_TRUE(Same(Applied(src, i, under), Applied(src, i, low)));
    }
    EXPECT_TRUE(Same(results[0], src));
    cDIBFilter engine;
    cDib pic = Copy(src);
    EXPECT_FALSE(ApplyFilter(engine, pic, 0, {}));
    EXPECT_FALSE(ApplyFilter(engine, pic, kFilterCount, {}));
    EXPECT_EQ(InitialSettings(3).params, (Params{0, 50, 100}));
}

TEST(FilterList, TinyPicturesGoThroughEveryFilter) {
    cDIBFilter engine;
    for (auto [w, h] : {std::pair{1, 1}, {2, 2}, {1, 7}, {7, 1}, {2, 9}}) {
        const cDib src = Noisy(w, h, uint64_t(w * 31 + h));
        for (int i = 1; i < kFilterCount; ++i) {
            SCOPED_TRACE(testing::Message() << kEntries[i].name << " " << w << "x" << h);
            cDib pic = Copy(src);
            int last = -1;
            engine.Progress = [&](int p) { last = p; };
            EXPECT_TRUE(ApplyFilter(engine, pic, i, Busy(i)));
            EXPECT_EQ(last, 100);
            if (kEntries[i].threeByThree) EXPECT_TRUE(Same(pic, src));
        }
    }
    cDib empty;
    EXPECT_FALSE(ApplyFilter(engine, empty, 1, Busy(1)));
}

TEST(FilterList, ResultsDoNotDependOnTheNumberOfThreads) {
    const int threads = ThreadCount();
    // Wide enough that every slice is cut into several bands.
    const cDib src = Noisy(2003, 701, 5);
    auto runAll = [&](int count) {
        SetThreadCount(count);
        std::vector<cDib> out;
        for (int i = 1; i < kFilterCount; ++i) out.push_back(Applied(src, i, Busy(i)));
        for (int16_t t = 0; t < 6; ++t) {
            out.emplace_back();
            ApplyWarp(src, out.back(), t, RGBColor(1, 2, 3));
        }
        out.push_back(Copy(src));
        ColourBalance(out.back(), 30, -40, 70);
        return out;
    };
    const auto one = runAll(1);
    const auto four = runAll(4);
    SetThreadCount(threads);
    for (size_t i = 0; i < one.size(); ++i) EXPECT_TRUE(Same(one[i], four[i])) << i;
}

}  // namespace
}  // namespace quorbel::test
