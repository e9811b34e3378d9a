// libFuzzer target for the INI engine: any text parses, reads and writes back without
// crashing, and writing it back out reads the same values.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/IniFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    quorbel::IniFile ini = quorbel::IniFile::FromText(text);
    for (const std::string& section : {std::string("Main"), std::string("Recent Files"), std::string("")}) {
        for (const std::string& key : ini.Keys(section)) (void)ini.Get(section, key);
    }
    if (!ini.Set("Main", "Last Path", "/home/user/Pictures")) return 0;
    const quorbel::IniFile again = quorbel::IniFile::FromText(ini.Text());
    if (again.Get("Main", "Last Path") != std::optional<std::string>("/home/user/Pictures")) std::abort();
    return 0;
}
