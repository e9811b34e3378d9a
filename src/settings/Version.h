#pragma once
// The running version as the settings store records it for the update check.
#include <string>

namespace quorbel {

// major & "." & minor & revision: one dot only, so 2.0 revision 13 is "2.013" and 5.1
// revision 2 is "5.12".
std::string VersionText(int major, int minor, int revision);

// ("Version", "Version") := VersionText, ("Version", "Ver") := "0". False when not written.
bool WriteVersion(int major, int minor, int revision);

}  // namespace quorbel
