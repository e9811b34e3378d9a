#include "settings/AppFolders.h"

#include <cstdlib>

namespace quorbel {
namespace {

std::string BaseFolder(const char* xdgVariable, const char* underHome) {
    const char* xdg = std::getenv(xdgVariable);
    if (xdg && xdg[0] == '/') return xdg;
    const char* home = std::getenv("HOME");
    if (home && home[0] != '\0') return std::string(home) + underHome;
    return {};
}

}  // namespace

std::string ConfigHome() { return BaseFolder("XDG_CONFIG_HOME", "/.config"); }

std::string DataHome() { return BaseFolder("XDG_DATA_HOME", "/.local/share"); }

std::filesystem::path SettingsFolder() {
    return std::filesystem::path(ConfigHome()) / kVendorFolderName / kAppName;
}

}  // namespace quorbel
