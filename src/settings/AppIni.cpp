#include "settings/AppIni.h"

#include "settings/DataFolder.h"
#include "settings/ProfileString.h"

namespace quorbel {

std::string IniPathOrAppIni(std::string_view iniPath) {
    return iniPath.empty() ? AppIniPath() : std::string(iniPath);
}

std::string IniRead(std::string_view section, std::string_view key, std::string_view defaultValue,
                    std::string_view iniPath) {
    return GetPrivateProfileString(section, key, defaultValue, IniPathOrAppIni(iniPath));
}

bool IniWrite(std::string_view section, std::optional<std::string_view> key,
              std::optional<std::string_view> value, std::string_view iniPath) {
    return WritePrivateProfileString(section, key, value, IniPathOrAppIni(iniPath));
}

}  // namespace quorbel
