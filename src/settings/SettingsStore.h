#pragma once
// The per-user settings store: application name, section and key, text values, kept in
// "<app>.settings.ini" in the settings folder. Keys keep their order (the preset list
// depends on it). Values read back exactly as saved, blanks and quotes included, and are not
// cut to the INI read buffer.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorbel {

using SettingPairs = std::vector<std::pair<std::string, std::string>>;

std::filesystem::path SettingsFilePath(std::string_view app);

std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                       std::string_view defaultValue = {});

// Writes create the settings folder when needed. All return false when the store could not
// be written; it is then unchanged.
bool SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                 std::string_view value);
// Without a key the whole section goes.
bool DeleteSetting(std::string_view app, std::string_view section,
                   std::optional<std::string_view> key = std::nullopt);
// Deletes section and writes pairs in order, as one write: all or nothing.
bool ReplaceSettings(std::string_view app, std::string_view section, const SettingPairs& pairs);

// (key, value) pairs of section in store order; empty when it is absent.
SettingPairs GetAllSettings(std::string_view app, std::string_view section);

}  // namespace quorbel
