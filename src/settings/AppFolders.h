#pragma once
// Where the program keeps its per-user files: the vendor and program names and the base
// folders the desktop names through the XDG variables.
#include <filesystem>
#include <string>
#include <string_view>

namespace quorbel {

// A few callers pass the literal instead of the run-time name; both must stay this text.
inline constexpr std::string_view kAppName = "Quorbel";
inline constexpr std::string_view kVendorFolderName = "Tessarin Svcs";

// $XDG_CONFIG_HOME, else $HOME/.config; $XDG_DATA_HOME, else $HOME/.local/share. A relative
// XDG value is ignored, as the XDG rules ask. Empty when neither is known: folders are then
// made relative to the current folder.
std::string ConfigHome();
std::string DataHome();

// <config home>/Tessarin Svcs/Quorbel: the settings store's folder.
std::filesystem::path SettingsFolder();

}  // namespace quorbel
