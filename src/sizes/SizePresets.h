#pragma once
// Named sizes ("Quick Size" presets): stored under "Custom Sizes" in the settings store, one
// key per preset, value "name;unit;width;height". The list's order is the keys' order.
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/MessageBox.h"

namespace quorbel {

inline constexpr std::string_view kCustomSizesSection = "Custom Sizes";
inline constexpr size_t kMaxPresetNameLength = 25;

inline constexpr std::string_view kResetPresetsQuestion =
    "Resetting the sizes back to original will remove all your custom settings \r\n"
    "Are you sure you want to continue?";

// Width and height stay the text they were stored or typed as, so a rewrite keeps them.
struct SizePreset {
    std::string name;
    std::string unit;
    std::string width;
    std::string height;

    bool operator==(const SizePreset&) const = default;
};

enum class SpecialPreset { None, OriginalSize, Custom, FitScreen };

// The shipped list, (key, value), in order. Three rows do not match their names ("Web
// 320x240", "Wall paper 1280x720", "Wall paper 1280x1024"); they are shipped so.
extern const std::array<std::pair<std::string_view, std::string_view>, 38> kBuiltInPresets;

// Splits at ";". nullopt when a field is missing: the caller then changes nothing. Fields
// past the fourth are ignored.
std::optional<SizePreset> ParsePreset(std::string_view value);
std::string PresetValue(const SizePreset& preset);

// "original size", "custom" and "fit screen", compared without regard to case.
SpecialPreset ClassifyPreset(std::string_view name);

// Writes the shipped list when "Custom Sizes" is empty or absent. False when that write failed.
bool EnsurePresets();
// The keys in order, for the quick-size list (after EnsurePresets).
std::vector<std::string> PresetKeys();
// The preset stored under key; nullopt when absent or lacking fields.
std::optional<SizePreset> ReadPreset(std::string_view key);
// Every stored preset that parses, in key order (after EnsurePresets), for the editor.
std::vector<SizePreset> LoadPresetList();

// The editor's checks on adding a row, in order; the message to show, or nullopt when the
// row may be added. Names are counted in characters, not bytes.
std::optional<std::string_view> CheckNewPreset(std::string_view name, std::string_view width,
                                               std::string_view height);

// Swap a row with its neighbour; false (list unchanged) at the end of the list.
bool MovePresetUp(std::vector<SizePreset>& list, size_t index);
bool MovePresetDown(std::vector<SizePreset>& list, size_t index);

// Deletes the section and writes every row in list order under key = name, in one write.
bool SavePresetList(const std::vector<SizePreset>& list);
// Deletes the section and writes the shipped list again.
bool ResetPresets();
// Asks kResetPresetsQuestion (Yes/No, exclamation icon); on Yes resets. True when reset.
bool AskAndResetPresets(MessageBox& box);

}  // namespace quorbel
