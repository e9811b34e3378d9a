#pragma once
// The per-user data folder (INI files, help, working copy, undo snapshots, temporary
// pictures) and the process-wide paths that start-up fixes and every window reads.
#include <string>

namespace quorbel {

// <data home>/Tessarin Svcs/Quorbel, making both folders when missing; no trailing "/".
std::string GetAppDataFolder();

// Start-up: fixes the data folder, with a trailing "/", as both the settings folder and the
// working folder. Later calls keep the first result.
void InitialiseDataFolder();

// With a trailing "/"; empty before InitialiseDataFolder.
std::string DataFolder();
std::string WorkingFolder();

// Data folder + "Quorbel.ini", built on first use and then kept. Used before start-up it
// fixes the data folder first, rather than writing into whatever the current folder is.
std::string AppIniPath();

// Working folder + "Local.Ini": colour schemes and folder-icon settings.
std::string AppearanceIniPath();

// Forgets every path above, as at a new start. For tests that move the XDG folders.
void ForgetDataFolder();

}  // namespace quorbel
