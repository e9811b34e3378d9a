#include "settings/DataFolder.h"

#include <filesystem>
#include <mutex>

#include "settings/AppFolders.h"

namespace quorbel {
namespace {

struct ProcessFolders {
    std::mutex mutex;
    std::string dataFolder;
    std::string workingFolder;
    std::string appIniPath;
};

ProcessFolders& Folders() {
    static ProcessFolders folders;
    return folders;
}

void MakeFolder(const std::string& path) {
    // A folder that cannot be made shows up later as a failed write, not as a crash here.
    std::error_code ignored;
    std::filesystem::create_directories(path, ignored);
}

void InitialiseLocked(ProcessFolders& f) {
    if (!f.dataFolder.empty()) return;
    f.dataFolder = GetAppDataFolder() + "/";
    f.workingFolder = f.dataFolder;
}

}  // namespace

std::string GetAppDataFolder() {
    std::string path = DataHome();
    if (!path.empty() && path.back() != '/') path += '/';
    path += kVendorFolderName;
    MakeFolder(path);
    path += "/";
    path += kAppName;
    MakeFolder(path);
    return path;
}

void InitialiseDataFolder() {
    ProcessFolders& f = Folders();
    std::lock_guard lock(f.mutex);
    InitialiseLocked(f);
}

std::string DataFolder() {
    ProcessFolders& f = Folders();
    std::lock_guard lock(f.mutex);
    return f.dataFolder;
}

std::string WorkingFolder() {
    ProcessFolders& f = Folders();
    std::lock_guard lock(f.mutex);
    return f.workingFolder;
}

std::string AppIniPath() {
    ProcessFolders& f = Folders();
    std::lock_guard lock(f.mutex);
    if (f.appIniPath.empty()) {
        InitialiseLocked(f);
        f.appIniPath = f.dataFolder + std::string(kAppName) + ".ini";
    }
    return f.appIniPath;
}

std::string AppearanceIniPath() { return WorkingFolder() + "Local.Ini"; }

void ForgetDataFolder() {
    ProcessFolders& f = Folders();
    std::lock_guard lock(f.mutex);
    f.dataFolder.clear();
    f.workingFolder.clear();
    f.appIniPath.clear();
}

}  // namespace quorbel
