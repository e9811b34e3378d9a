#include "settings/ProfileString.h"

#include "settings/IniFile.h"

namespace quorbel {

std::string FitProfileBuffer(std::string_view text) {
    constexpr size_t kMax = kProfileBufferSize - 1;
    if (text.size() <= kMax) return std::string(text);
    size_t cut = kMax;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    return std::string(text.substr(0, cut));
}

std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                    std::string_view defaultValue,
                                    const std::filesystem::path& path) {
    const std::optional<std::string> value = ReadIniFile(path).Get(section, key);
    return FitProfileBuffer(value ? std::string_view(*value) : defaultValue);
}

bool WritePrivateProfileString(std::string_view section, std::optional<std::string_view> key,
                               std::optional<std::string_view> value,
                               const std::filesystem::path& path) {
    return ModifyIniFile(path, [&](IniFile& file) {
        if (!key) {
            file.DeleteSection(section);
            return true;
        }
        if (!value) {
            file.DeleteKey(section, *key);
            return true;
        }
        return file.Set(section, *key, *value);
    });
}

}  // namespace quorbel
