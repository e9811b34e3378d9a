#include "settings/RecentFiles.h"

#include "settings/AppIni.h"
#include "settings/IniFile.h"
#include "settings/ProfileString.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

std::string EntryKey(size_t number) { return "File " + std::to_string(number); }

// Appends the stored entries to list, skipping those equal to skip, until list holds
// maxCount entries or an entry is empty.
void AppendStored(const IniFile& file, std::vector<std::string>& list, size_t maxCount,
                  std::string_view skip) {
    for (size_t number = 1; list.size() < maxCount; ++number) {
        const std::optional<std::string> stored = file.Get(kRecentFilesSection, EntryKey(number));
        if (!stored || stored->empty()) break;
        std::string entry = FitProfileBuffer(*stored);
        if (!skip.empty() && EqualsIgnoreCase(entry, skip)) continue;
        list.push_back(std::move(entry));
    }
}

size_t CountOf(int maxCount) { return maxCount > 0 ? static_cast<size_t>(maxCount) : 0; }

}  // namespace

std::vector<std::string> ReadRecentFiles(int maxCount, std::string_view iniPath) {
    std::vector<std::string> list;
    AppendStored(ReadIniFile(IniPathOrAppIni(iniPath)), list, CountOf(maxCount), {});
    return list;
}

void FillRecentFilesMenu(RecentFilesMenu& menu, const std::vector<std::string>& files) {
    menu.items.clear();
    if (files.empty()) {
        menu.items.push_back({std::string(kRecentFilesEmptyText), false});
        return;
    }
    for (const std::string& file : files) menu.items.push_back({file, true});
}

bool AddRecentFile(std::string_view path, RecentFilesMenu& menu, int maxCount,
                   std::string_view iniPath) {
    // An empty first entry would end the list and so hide every older one.
    if (path.empty()) {
        FillRecentFilesMenu(menu, ReadRecentFiles(maxCount, iniPath));
        return true;
    }
    std::vector<std::string> list;
    const bool written = ModifyIniFile(IniPathOrAppIni(iniPath), [&](IniFile& file) {
        list.assign(1, std::string(path));
        AppendStored(file, list, CountOf(maxCount), path);
        file.DeleteSection(kRecentFilesSection);
        for (size_t i = 0; i < list.size(); ++i)
            if (!file.Set(kRecentFilesSection, EntryKey(i + 1), list[i])) return false;
        return true;
    });
    if (list.empty()) list.assign(1, std::string(path));  // the file could not even be read
    FillRecentFilesMenu(menu, list);
    return written;
}

}  // namespace quorbel
