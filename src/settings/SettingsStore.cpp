#include "settings/SettingsStore.h"

#include "settings/AppFolders.h"
#include "settings/IniFile.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

std::filesystem::path PathForWrite(std::string_view app) {
    std::error_code ignored;  // a folder that cannot be made shows up as a failed write
    std::filesystem::create_directories(SettingsFolder(), ignored);
    return SettingsFilePath(app);
}

// The INI reader trims blanks and strips one pair of matching quotes; an extra pair of quotes
// makes such a value read back exactly as it was saved.
std::string StoredForm(std::string_view value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.back() == value.front();
    if (!quoted && TrimBlanks(value).size() == value.size()) return std::string(value);
    std::string wrapped;
    wrapped.reserve(value.size() + 2);
    wrapped.append(1, '"').append(value).append(1, '"');
    return wrapped;
}

}  // namespace

std::filesystem::path SettingsFilePath(std::string_view app) {
    return SettingsFolder() / (std::string(app) + ".settings.ini");
}

std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                       std::string_view defaultValue) {
    return ReadIniFile(SettingsFilePath(app)).Get(section, key).value_or(std::string(defaultValue));
}

bool SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                 std::string_view value) {
    return ModifyIniFile(PathForWrite(app),
                         [&](IniFile& file) { return file.Set(section, key, StoredForm(value)); });
}

bool DeleteSetting(std::string_view app, std::string_view section,
                   std::optional<std::string_view> key) {
    return ModifyIniFile(SettingsFilePath(app), [&](IniFile& file) {
        if (key)
            file.DeleteKey(section, *key);
        else
            file.DeleteSection(section);
        return true;
    });
}

bool ReplaceSettings(std::string_view app, std::string_view section, const SettingPairs& pairs) {
    return ModifyIniFile(PathForWrite(app), [&](IniFile& file) {
        file.DeleteSection(section);
        for (const auto& [key, value] : pairs)
            if (!file.Set(section, key, StoredForm(value))) return false;
        return true;
    });
}

SettingPairs GetAllSettings(std::string_view app, std::string_view section) {
    return ReadIniFile(SettingsFilePath(app)).Pairs(section);
}

}  // namespace quorbel
