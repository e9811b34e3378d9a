#include "settings/MessageOnce.h"

#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"

namespace quorbel {

std::optional<MsgReply> ShowMessageOnce(std::string_view kind, std::string_view settingKey,
                                        std::string_view text, MsgButtons buttons, MsgIcon icon,
                                        std::string_view title, MessageBox& box) {
    constexpr std::string_view kSection = "Settings";
    const bool mayBeSilenced = kind == kMessageOnceHelpTip || kind == kMessageOnceOk;
    if (mayBeSilenced && GetSetting(kAppName, kSection, settingKey, "0") == "1") return std::nullopt;

    MsgRequest request;
    request.text = std::string(text);
    request.title = std::string(title);
    request.buttons = buttons;
    request.icon = icon;
    request.noShowTick = kind != kMessageOnceNoShowHide;
    const MsgReply reply = box.Ask(request);
    if (reply.noShowTicked) SaveSetting(kAppName, kSection, settingKey, "1");
    return reply;
}

}  // namespace quorbel
