#pragma once
// A message box the user can silence for good with the tick "Do not show this again.",
// remembered as ("Settings", key) = "1". The deciding is here; the box is the host's
// MessageBox (the Qt dialog in the program, a scripted one in the tests).
#include <optional>
#include <string_view>

#include "core/MessageBox.h"

namespace quorbel {

inline constexpr std::string_view kMessageOnceHelpTip = "HelpTip";
inline constexpr std::string_view kMessageOnceOk = "MsgBoxOK";
inline constexpr std::string_view kMessageOnceNoShowHide = "MsgBoxNoShowHide";

// Kinds are compared with exact case. "HelpTip" and "MsgBoxOK" first read ("Settings",
// settingKey, default "0") and stay silent on "1"; any other kind, a misspelt one included,
// is shown without reading. The tick is offered for every kind but "MsgBoxNoShowHide"; when
// it comes back ticked the setting is written "1". The reply, or nullopt when silent.
std::optional<MsgReply> ShowMessageOnce(std::string_view kind, std::string_view settingKey,
                                        std::string_view text, MsgButtons buttons, MsgIcon icon,
                                        std::string_view title, MessageBox& box);

}  // namespace quorbel
