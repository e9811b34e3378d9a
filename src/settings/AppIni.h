#pragma once
// Reading and writing the program's INI files. An empty iniPath means the application INI
// file (AppIniPath()).
#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

// The file iniPath names: itself, or the application INI file when empty.
std::string IniPathOrAppIni(std::string_view iniPath);

// Cut to the INI read buffer (2047 characters), default included.
std::string IniRead(std::string_view section, std::string_view key, std::string_view defaultValue,
                    std::string_view iniPath = {});

// key absent: deletes section; value absent: deletes key. False when the file was not written.
bool IniWrite(std::string_view section, std::optional<std::string_view> key,
              std::optional<std::string_view> value, std::string_view iniPath = {});

}  // namespace quorbel
