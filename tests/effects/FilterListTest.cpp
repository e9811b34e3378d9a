#include <gtest/gtest.h>

#include <string>

#include "EffectsPictures.h"
#include "core/ThreadPool.h"
#include "effects/ColourRules.h"
#include "effects/FilterList.h"
#include "effects/Remap.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

TEST(FilterList, EntriesInListOrderWithTheirOwnSpellings) {
    const auto list = FilterList();
    const char* names[] = {"<None>", "Blur", "Brightness", "Colorize", "Contour", "Contrast", "Despeckle",
                           "Despeckle more", "Diffuse", "Dilate", "Emboss", "Erode", "Greys", "Negative",
                           "Noise", "Outline", "Pixelaze", "Relieve", "Replace HS", "Replace l", "RGB levels",
                           "Salt 'n pepper removal", "Saturation", "Scanlines", "Sepia", "Sharpen", "Shift",
                           "Soften"};
    for (int i = 0; i < kFilterCount; ++i) EXPECT_EQ(std::string(list[i].name), names[i]) << i;
    // Sliders, colours and picking per entry are checked through the filter window's test.
    EXPECT_EQ(InitialSettings(3).params, (std::array<int, 3>{0, 50, 100}));
}

TEST(FilterList, DispatchClampsToTheSlidersAndPassesTheCallingValues) {
    cDIBFilter engine;
    const cDib src = Noisy(12, 9);
    cDib none = Copy(src);
    EXPECT_FALSE(ApplyFilter(engine, none, 0, {}));
    EXPECT_FALSE(ApplyFilter(engine, none, kFilterCount, {}));
    EXPECT_TRUE(Same(none, src));

    cDib viaList = Copy(src), direct = Copy(src);
    ApplyFilter(engine, viaList, 1, {{1000, 0, 0}, {}});  // Level clamped to 25
    engine.Blur(direct, 100);
    EXPECT_TRUE(Same(viaList, direct));

    cDib bright = Copy(src), levels = Copy(src);
    ApplyFilter(engine, bright, 2, {{40, 0, 0}, {}});
    engine.RGBLevels(levels, 40, 40, 40);
    EXPECT_TRUE(Same(bright, levels));

    cDib salt = Make(5, 5, [](int x, int y) { return x == 2 && y == 2 ? Grey(255) : Grey(0); });
    ApplyFilter(engine, salt, 21, InitialSettings(21));  // Threshold 0 reaches the engine as 255
    EXPECT_EQ(At(salt, 2, 2), Grey(0));
}

// Each list entry with settings away from neutral, so that every filter does something.
FilterSettings Busy(int index) {
    FilterSettings s;
    const FilterEntry& e = FilterList()[index];
    for (int i = 0; i < e.paramCount; ++i) s.params[i] = (e.params[i].minimum + 3 * e.params[i].maximum) / 4;
    s.colours = {RGBColor(200, 60, 60), RGBColor(20, 40, 220)};
    return s;
}

bool IsThreeByThree(int index) {
    for (int i : {1, 4, 6, 7, 9, 10, 11, 15, 17, 21, 25, 27})
        if (i == index) return true;
    return false;
}

TEST(FilterList, TinyPicturesGoThroughEveryFilter) {
    cDIBFilter engine;
    for (auto [w, h] : {std::pair{1, 1}, {2, 2}, {1, 7}, {7, 1}, {2, 9}}) {
        const cDib src = Noisy(w, h, uint64_t(w * 31 + h));
        for (int i = 1; i < kFilterCount; ++i) {
            cDib pic = Copy(src);
            int last = -1;
            engine.Progress = [&](int p) { last = p; };
            EXPECT_TRUE(ApplyFilter(engine, pic, i, Busy(i)));
            EXPECT_EQ(last, 100) << i;
            if (IsThreeByThree(i)) {
                EXPECT_TRUE(Same(pic, src)) << FilterList()[i].name << " " << w << "x" << h;
            }
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
        cDIBFilter engine;
        for (int i = 1; i < kFilterCount; ++i) {
            out.push_back(Copy(src));
            ApplyFilter(engine, out.back(), i, Busy(i));
        }
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
}  // namespace quorbel
