#include "effects/FilterList.h"

#include <algorithm>

#include "core/text/TextCase.h"

namespace quorbel {
namespace {

constexpr FilterParam kNone{"", 0, 0, 0};

constexpr FilterEntry Entry(const char* name, int colours = 0, bool picks = false) {
    return {name, {kNone, kNone, kNone}, 0, colours, picks};
}
constexpr FilterEntry Entry(const char* name, FilterParam a, int colours = 0, bool picks = false) {
    return {name, {a, kNone, kNone}, 1, colours, picks};
}
constexpr FilterEntry Entry(const char* name, FilterParam a, FilterParam b, int colours = 0,
                            bool picks = false) {
    return {name, {a, b, kNone}, 2, colours, picks};
}
constexpr FilterEntry Entry(const char* name, FilterParam a, FilterParam b, FilterParam c,
                            int colours = 0, bool picks = false) {
    return {name, {a, b, c}, 3, colours, picks};
}

constexpr std::array<FilterEntry, kFilterCount> kList{{
    Entry("<None>"),
    Entry("Blur", {"Level", 1, 25, 1}),
    Entry("Brightness", {"Level", -255, 255, 0}),
    Entry("Colorize", {"Hue", 0, 100, 0}, {"Saturation", 0, 100, 50}, {"Luminosity", 0, 100, 100}),
    Entry("Contour"),
    Entry("Contrast", {"Level", -100, 250, 0}),
    Entry("Despeckle"),
    Entry("Despeckle more"),
    Entry("Diffuse", {"Horizontal factor", 0, 100, 0}, {"Vertical factor", 0, 100, 0}, {"Step", 1, 10, 1}),
    Entry("Dilate"),
    Entry("Emboss", {"Level", 0, 200, 0}),
    Entry("Erode"),
    Entry("Greys"),
    Entry("Negative"),
    Entry("Noise", {"Amount", 0, 200, 0}, {"Step", 1, 10, 1}),
    Entry("Outline", {"Level", -100, 100, 0}, {"Shift", -50, 50, 0}),
    Entry("Pixelaze", {"Pixel size", 1, 25, 1}),
    Entry("Relieve", {"Level", 1, 100, 1}),
    Entry("Replace HS", {"Extent", 0, 255, 0}, {"H Tolerance", 0, 100, 0}, {"S Tolerance", 0, 100, 0}, 2, true),
    Entry("Replace l", {"Extent", 0, 255, 0}, {"L Tolerance", 0, 100, 0}, 2, true),
    Entry("RGB levels", {"Red", -255, 255, 0}, {"Green", -255, 255, 0}, {"Blue", -255, 255, 0}),
    Entry("Salt 'n pepper removal", {"Threshold", 0, 255, 0}),
    Entry("Saturation", {"Level", -100, 250, 0}),
    Entry("Scanlines", {"Black point", 0, 100, 0}, {"White point", 0, 100, 0}),
    Entry("Sepia"),
    Entry("Sharpen", {"Level", 1, 25, 1}),
    Entry("Shift", {"Amount", -255, 255, 0}, {"Extent", 0, 255, 0}, 1),
    Entry("Soften", {"Level", 1, 25, 1}),
}};

}  // namespace

std::span<const FilterEntry, kFilterCount> FilterList() { return kList; }

int FindFilter(std::string_view name) {
    for (int i = 1; i < kFilterCount; ++i)
        if (EqualsIgnoreCase(name, kList[static_cast<size_t>(i)].name)) return i;
    return 0;
}

FilterSettings InitialSettings(int index) {
    FilterSettings s;
    if (index < 0 || index >= kFilterCount) return s;
    for (int i = 0; i < kList[index].paramCount; ++i) s.params[i] = kList[index].params[i].initial;
    return s;
}

bool ApplyFilter(cDIBFilter& engine, cDib& picture, int index, const FilterSettings& settings) {
    if (index <= 0 || index >= kFilterCount) return false;
    const FilterEntry& entry = kList[index];
    std::array<int, 3> p{};
    for (int i = 0; i < entry.paramCount; ++i)
        p[i] = std::clamp(settings.params[i], entry.params[i].minimum, entry.params[i].maximum);
    const ColorRef c1 = settings.colours[0], c2 = settings.colours[1];
    switch (index) {
        case 1: return engine.Blur(picture, p[0] + 75);
        case 2: return engine.RGBLevels(picture, p[0], p[0], p[0]);
        case 3: return engine.Colorize(picture, p[0], p[1], p[2]);
        case 4: return engine.Contour(picture);
        case 5: return engine.Contrast(picture, p[0]);
        case 6: return engine.Despeckle(picture);
        case 7: return engine.DespeckleMore(picture);
        case 8: return engine.Diffuse(picture, p[0], p[1], p[2]);
        case 9: return engine.Dilate(picture);
        case 10: return engine.Emboss(picture, p[0], -1);
        case 11: return engine.Erode(picture);
        case 12: return engine.Greys(picture);
        case 13: return engine.Negative(picture);
        case 14: return engine.Noise(picture, p[0], p[1]);
        case 15: return engine.Outline(picture, p[0], p[1]);
        case 16: return engine.Pixelate(picture, p[0]);
        case 17: return engine.Relieve(picture, p[0]);
        case 18: return engine.ReplaceHS(picture, c1, c2, p[0], p[1], p[2]);
        case 19: return engine.ReplaceL(picture, c1, c2, p[0], p[1]);
        case 20: return engine.RGBLevels(picture, p[0], p[1], p[2]);
        case 21: return engine.SaltPepper(picture, 255 - p[0]);
        case 22: return engine.Saturation(picture, p[0]);
        case 23: return engine.Scanlines(picture, p[0], p[1]);
        case 24: return engine.Sepia(picture, 0.5f, 0.25f, 1.0f);
        case 25: return engine.Sharpen(picture, p[0] + 75);
        case 26: return engine.Shift(picture, c1, p[0], p[1]);
        case 27: return engine.Soften(picture, p[0] + 75);
        default: return false;
    }
}

}  // namespace quorbel
