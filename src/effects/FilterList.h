#pragma once
// The filter list of the filter window, in list order, with the sliders and colour pickers
// each entry shows, and the call from an entry to the engine. The window and the batch run
// both read this table; the numbers live nowhere else.
#include <array>
#include <span>
#include <string_view>

#include "effects/cDIBFilter.h"

namespace quorbel {

struct FilterParam {
    const char* caption;
    int minimum;
    int maximum;
    int initial;
};

struct FilterEntry {
    const char* name;  // as the list shows it, spelling included
    std::array<FilterParam, 3> params;
    int paramCount;
    int colourCount;   // colour pickers shown (0..2)
    bool picksFromPreview;  // colour picking from the preview is switched on
};

inline constexpr int kFilterCount = 28;  // "<None>" and the 27 filters

// Entry i of the list; index 0 is "<None>".
std::span<const FilterEntry, kFilterCount> FilterList();

// The place of the entry with this name, ignoring ASCII case ("sharpen" finds "Sharpen");
// 0 ("<None>") when no entry has it. Callers name filters, never count places.
int FindFilter(std::string_view name);

// The values the window hands over: slider positions and colours.
struct FilterSettings {
    std::array<int, 3> params{};
    std::array<ColorRef, 2> colours{};
};

// The entry's initial slider positions (black colours).
FilterSettings InitialSettings(int index);

// Applies list entry index with the given settings (each parameter clamped to its slider's
// range). False when nothing was applied: "<None>", an index outside the list, or an empty
// picture.
bool ApplyFilter(cDIBFilter& engine, cDib& picture, int index, const FilterSettings& settings);

// The refusal for TIFF pictures and its message key.
inline constexpr const char* kTifFilterNoKey = "Tif Filter No";
inline constexpr const char* kTifFilterNoText =
    "Filters and effects cannot be applied to TIFF images, please save as another format to "
    "apply filter and effects and then save back again as TIFF it needed.";

}  // namespace quorbel
