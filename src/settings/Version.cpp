#include "settings/Version.h"

#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"

namespace quorbel {

std::string VersionText(int major, int minor, int revision) {
    return std::to_string(major) + "." + std::to_string(minor) + std::to_string(revision);
}

bool WriteVersion(int major, int minor, int revision) {
    const bool version = SaveSetting(kAppName, "Version", "Version", VersionText(major, minor, revision));
    const bool ver = SaveSetting(kAppName, "Version", "Ver", "0");
    return version && ver;
}

}  // namespace quorbel
