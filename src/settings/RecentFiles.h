#pragma once
// The most-recent-first list of opened files, kept in the application INI file under
// "Recent Files" as "File 1", "File 2", ... and shown in a menu.
#include <string>
#include <string_view>
#include <vector>

namespace quorbel {

inline constexpr std::string_view kRecentFilesSection = "Recent Files";
inline constexpr std::string_view kRecentFilesEmptyText = "(Empty)";

struct RecentFilesMenuItem {
    std::string text;
    bool enabled = true;
};

// What the window's menu shows; the window copies it into its own entries.
struct RecentFilesMenu {
    std::vector<RecentFilesMenuItem> items;
};

// "File 1", "File 2", ... in order, up to maxCount entries, ending at the first empty one.
std::vector<std::string> ReadRecentFiles(int maxCount, std::string_view iniPath = {});

// One item per file; a single disabled "(Empty)" when there is none.
void FillRecentFilesMenu(RecentFilesMenu& menu, const std::vector<std::string>& files);

// Puts path first, followed by the stored entries other than path (compared ignoring case)
// up to maxCount in all, rewrites the section and refreshes menu. An empty path adds
// nothing. False when the INI file could not be written (the menu still shows the new list).
bool AddRecentFile(std::string_view path, RecentFilesMenu& menu, int maxCount,
                   std::string_view iniPath = {});

}  // namespace quorbel
