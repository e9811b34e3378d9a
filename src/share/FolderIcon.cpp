#include "share/FolderIcon.h"

#include <unistd.h>

#include "platform/Desktop.h"
#include "platform/Process.h"
#include "settings/IniFile.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view kEntrySection = "Desktop Entry";
constexpr std::string_view kIconKey = "Icon";

fs::path SettingsFile(const fs::path& folder) { return folder / ".directory"; }

bool Writable(const fs::path& folder, MessageBox& messages) {
    const fs::path file = SettingsFile(folder);
    std::error_code ec;
    const bool ok = ::access(folder.c_str(), W_OK) == 0 && (!fs::exists(file, ec) || ::access(file.c_str(), W_OK) == 0);
    if (!ok) messages.Show(std::string(kFolderNotWritable) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Exclamation);
    return ok;
}

}  // namespace

bool AcceptIconFolder(const fs::path& folder, MessageBox& messages) {
    fs::path p = folder;
    if (!p.has_filename()) p = p.parent_path();  // "/home/a/Desktop/"
    const std::string name = p.filename().string();
    // TRASH is the recycle bin of the Linux desktops.
    for (const char* refused : {"RECYCLED", "DESKTOP", "TRASH"}) {
        if (EqualsIgnoreCase(name, refused) || EqualsIgnoreCase(folder.string(), refused)) {
            messages.Show(std::string(kCannotChangeFolder) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Critical);
            return false;
        }
    }
    return true;
}

SetIconResult SetFolderIcon(const fs::path& folder, const fs::path& icon, MessageBox& messages) {
    std::error_code ec;
    if (icon.empty() || !fs::is_regular_file(icon, ec)) return SetIconResult::PickIcon;
    if (!fs::is_directory(folder, ec)) return SetIconResult::NoFolder;
    if (!Writable(folder, messages)) return SetIconResult::NotWritable;
    IniFile settings = IniFile::Load(SettingsFile(folder));
    const std::string iconPath = fs::absolute(icon).string();
    if (!settings.Set(kEntrySection, kIconKey, iconPath) || settings.Save()) {
        messages.Show(std::string(kFolderNotWritable) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Exclamation);
        return SetIconResult::NotWritable;
    }
    // GNOME's file manager; a desktop without gio simply lacks it.
    RunProgram("gio", {"set", folder.string(), "metadata::custom-icon", FileUri(iconPath)});
    messages.Show("The icon for the folder \r\n" + folder.string() + " is changed.\r\n\r\nFolder icon is " + icon.string(),
                  MsgButtons::OK, MsgIcon::Information, std::string(kIconChangedTitle));
    return SetIconResult::Changed;
}

bool ResetFolderIcon(const fs::path& folder, MessageBox& messages) {
    IniFile settings = IniFile::Load(SettingsFile(folder));
    const std::string current = settings.Get(kEntrySection, kIconKey).value_or("");
    if (current.empty()) {
        messages.Show(std::string(kIconNotOurs) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Information,
                      std::string(kResetTitle));
        return false;
    }
    if (!Writable(folder, messages)) return false;
    settings.DeleteKey(kEntrySection, kIconKey);
    if (settings.Save()) {
        messages.Show(std::string(kFolderNotWritable) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    RunProgram("gio", {"set", "-t", "unset", folder.string(), "metadata::custom-icon"});
    messages.Show(std::string(kIconRestored) + "\r\n" + folder.string(), MsgButtons::OK, MsgIcon::Information,
                  std::string(kResetTitle));
    return true;
}

}  // namespace quorbel
