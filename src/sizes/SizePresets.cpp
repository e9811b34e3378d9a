#include "sizes/SizePresets.h"

#include <algorithm>

#include "settings/AppFolders.h"
#include "core/text/NumericText.h"
#include "settings/SettingsStore.h"
#include "core/text/TextCase.h"

namespace quorbel {

const std::array<std::pair<std::string_view, std::string_view>, 38> kBuiltInPresets{{
    {"Original Size", "Original Size;Pixels;1;1"},
    {"Custom", "Custom;Pixels;450;450"},
    {"Fit Screen", "Fit Screen;Pixels;1;1"},
    {"Email Large", "Email Large;Pixels;640;480"},
    {"Email Medium", "Email Medium;Pixels;450;450"},
    {"Email Small", "Email Small;Pixels;350;350"},
    {"Messenger Large", "Messenger Large;Pixels;450;450"},
    {"Messenger Medium", "Messenger Medium;Pixels;350;350"},
    {"Messenger Small", "Messenger Small;Pixels;250;250"},
    {"Messenger Icon", "Messenger Icon;Pixels;150;150"},
    {"AOL Messenger Icon", "AOL Messenger Icon;Pixels;48;48"},
    {"Messenger Background", "Messenger Background;Pixels;640;480"},
    {"Browser Large", "Browser Large;Pixels;450;450"},
    {"Browser Medium", "Browser Medium;Pixels;350;350"},
    {"Browser Small", "Browser Small;Pixels;250;250"},
    {"Web 640x480 Pixels", "Web 640x480;Pixels;640;480"},
    {"Web 320x240 Pixels", "Web 320x240;Pixels;240;320"},
    {"Web 250x250 Pixels", "Web 250x250;Pixels;250;250"},
    {"Screenshot 200 X 200", "Screenshot 200 X 200;Pixels;200;200"},
    {"Banner 125x125", "Banner 125x125;Pixels;125;125"},
    {"Banner 468X60", "Banner 468X60;Pixels;468;60"},
    {"Banner 120x90", "Banner 120x90;Pixels;120;90"},
    {"Banner 728x90", "Banner 728x90;Pixels;728;90"},
    {"Banner 300x250", "Banner 300x250;Pixels;300;250"},
    {"Banner 397x72", "Banner 397x72;Pixels;397;72"},
    {"Banner 234x60", "Banner 234x60;Pixels;234;60"},
    {"Banner 120x240", "Banner 120x240;Pixels;120;240"},
    {"Banner 120x60", "Banner 120x60;Pixels;120;60"},
    {"Banner 88x31", "Banner 88x31;Pixels;88;31"},
    {"Photo 3.5x5 inches", "Photo 3.5x5 inches;inches;3.5;5"},
    {"Photo 4x6 inches", "Photo 4x6 inches;inches;4;6"},
    {"Photo 5x7 inches", "Photo 5x7 inches;inches;5;7"},
    {"Wall paper 640x480", "Wall paper 640x480;Pixels;640;480"},
    {"Wall paper 800x600", "Wall paper 800x600;Pixels;800;600"},
    {"Wall paper 1024x768", "Wall paper 1024x768;Pixels;1024;768"},
    {"Wall paper 1152x864", "Wall paper 1152x864;Pixels;1152;864"},
    {"Wall paper 1280x720", "Wall paper 1280x720;Pixels;1280;864"},
    {"Wall paper 1280x1024", "Wall paper 1280x1024;Pixels;1024;1280"},
}};

namespace {

size_t CharacterCount(std::string_view utf8) {
    size_t count = 0;
    for (const char c : utf8)
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
    return count;
}

bool WriteBuiltIns() {
    SettingPairs pairs;
    for (const auto& [key, value] : kBuiltInPresets) pairs.emplace_back(key, value);
    return ReplaceSettings(kAppName, kCustomSizesSection, pairs);
}

}  // namespace

std::optional<SizePreset> ParsePreset(std::string_view value) {
    std::array<std::string_view, 4> fields;
    size_t start = 0;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (start > value.size()) return std::nullopt;
        const size_t end = std::min(value.find(';', start), value.size());
        fields[i] = value.substr(start, end - start);
        start = end + 1;
    }
    return SizePreset{std::string(fields[0]), std::string(fields[1]), std::string(fields[2]),
                      std::string(fields[3])};
}

std::string PresetValue(const SizePreset& preset) {
    return preset.name + ";" + preset.unit + ";" + preset.width + ";" + preset.height;
}

SpecialPreset ClassifyPreset(std::string_view name) {
    if (EqualsIgnoreCase(name, "original size")) return SpecialPreset::OriginalSize;
    if (EqualsIgnoreCase(name, "custom")) return SpecialPreset::Custom;
    if (EqualsIgnoreCase(name, "fit screen")) return SpecialPreset::FitScreen;
    return SpecialPreset::None;
}

bool EnsurePresets() {
    if (!GetAllSettings(kAppName, kCustomSizesSection).empty()) return true;
    return WriteBuiltIns();
}

std::vector<std::string> PresetKeys() {
    std::vector<std::string> keys;
    for (auto& [key, value] : GetAllSettings(kAppName, kCustomSizesSection))
        keys.push_back(std::move(key));
    return keys;
}

std::optional<SizePreset> ReadPreset(std::string_view key) {
    return ParsePreset(GetSetting(kAppName, kCustomSizesSection, key, ""));
}

std::vector<SizePreset> LoadPresetList() {
    std::vector<SizePreset> list;
    for (const auto& [key, value] : GetAllSettings(kAppName, kCustomSizesSection))
        if (std::optional<SizePreset> preset = ParsePreset(value)) list.push_back(std::move(*preset));
    return list;
}

std::optional<std::string_view> CheckNewPreset(std::string_view name, std::string_view width,
                                               std::string_view height) {
    if (CharacterCount(name) > kMaxPresetNameLength)
        return "Name too long, it can only be 25 characters. Rename and please try again.";
    if (TrimBlanks(name).empty()) return "Please add a valid name.";
    if (!ParseNumericText(height)) return "Please add a valid height.";
    if (!ParseNumericText(width)) return "Please add a valid width";
    return std::nullopt;
}

bool MovePresetUp(std::vector<SizePreset>& list, size_t index) {
    if (index == 0 || index >= list.size()) return false;
    std::swap(list[index - 1], list[index]);
    return true;
}

bool MovePresetDown(std::vector<SizePreset>& list, size_t index) {
    if (index + 1 >= list.size()) return false;
    std::swap(list[index], list[index + 1]);
    return true;
}

bool SavePresetList(const std::vector<SizePreset>& list) {
    SettingPairs pairs;
    for (const SizePreset& preset : list) pairs.emplace_back(preset.name, PresetValue(preset));
    return ReplaceSettings(kAppName, kCustomSizesSection, pairs);
}

bool ResetPresets() { return WriteBuiltIns(); }

bool AskAndResetPresets(MessageBox& box) {
    const MsgResult answer =
        box.Show(std::string(kResetPresetsQuestion), MsgButtons::YesNo, MsgIcon::Exclamation);
    return answer == MsgResult::Yes && ResetPresets();
}

}  // namespace quorbel
