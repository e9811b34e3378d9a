#pragma once
// A folder's own icon (frmICOFldrChng): KDE reads it from the folder's ".directory" file,
// GNOME from the folder's metadata, which gio sets where it is installed.
#include <filesystem>
#include <string>
#include <string_view>

#include "core/MessageBox.h"

namespace quorbel {

inline constexpr std::string_view kChooseFolderPrompt = "Change Icon for the Folder";
inline constexpr std::string_view kCannotChangeFolder = "Cannot change icon for this folder";
inline constexpr std::string_view kIconChangedTitle = "Folder Icon changed";
inline constexpr std::string_view kResetTitle = "Restore default icon for the folder";
inline constexpr std::string_view kIconRestored = "Default folder icon Restored";
inline constexpr std::string_view kIconNotOurs =
    "The icon for the folder is either the default icon or the icon has been changed with an external "
    "application that cannot be changed";
inline constexpr std::string_view kFolderNotWritable = "The icon cannot be changed: you may not write to the folder";

// False, after the stop message, for the recycle bin (and the trash) and the desktop.
bool AcceptIconFolder(const std::filesystem::path& folder, MessageBox& messages);

enum class SetIconResult { PickIcon, NoFolder, NotWritable, Changed };

// PickIcon: the icon is empty or missing, so the caller opens the icon picker instead.
SetIconResult SetFolderIcon(const std::filesystem::path& folder, const std::filesystem::path& icon,
                            MessageBox& messages);

// True when an icon of ours was removed.
bool ResetFolderIcon(const std::filesystem::path& folder, MessageBox& messages);

}  // namespace quorbel
