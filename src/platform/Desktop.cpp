#include "platform/Desktop.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "platform/Process.h"

namespace quorbel {
namespace {

std::string Trim(std::string s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.pop_back();
    size_t i = 0;
    while (i < s.size() && std::isspace(static_cast<unsigned char>(s[i]))) ++i;
    return s.substr(i);
}

std::string Upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

bool Succeeded(const ProcessResult& r) { return r.started && r.exitCode == 0; }

// XDG_CURRENT_DESKTOP is a colon-separated list such as "ubuntu:GNOME".
bool DesktopIs(const std::string& desktops, const char* name) {
    std::stringstream list(Upper(desktops));
    for (std::string item; std::getline(list, item, ':');)
        if (item == name) return true;
    return false;
}

bool SetXfceWallpaper(const std::string& path) {
    // Every monitor and workspace has its own "last-image" property; set them all.
    const ProcessResult listed = RunProgram("xfconf-query", {"-c", "xfce4-desktop", "-l"});
    std::stringstream lines(listed.output);
    bool any = false, ok = true;
    for (std::string line; std::getline(lines, line);) {
        line = Trim(line);
        if (line.size() < 10 || line.compare(line.size() - 10, 10, "last-image") != 0) continue;
        any = true;
        ok = Succeeded(RunProgram("xfconf-query", {"-c", "xfce4-desktop", "-p", line, "-s", path})) && ok;
    }
    if (!any)
        ok = Succeeded(RunProgram("xfconf-query", {"-c", "xfce4-desktop", "-p",
                                                   "/backdrop/screen0/monitor0/workspace0/last-image",
                                                   "-n", "-t", "string", "-s", path}));
    return ok;
}

bool SetGnomeWallpaper(const char* schema, const std::string& uri) {
    if (!Succeeded(RunProgram("gsettings", {"set", schema, "picture-uri", uri}))) return false;
    // Newer GNOME shows a separate picture in dark style; older ones lack the key.
    RunProgram("gsettings", {"set", schema, "picture-uri-dark", uri});
    return true;
}

}  // namespace

std::string FileUri(const std::string& absolutePath) {
    static const char* hex = "0123456789ABCDEF";
    std::string uri = "file://";
    for (unsigned char c : absolutePath) {
        if (std::isalnum(c) || c == '/' || c == '-' || c == '_' || c == '.' || c == '~') {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += hex[c >> 4];
            uri += hex[c & 15];
        }
    }
    return uri;
}

bool Desktop::Open(const std::string& pathOrUrl) { return Succeeded(RunProgram("xdg-open", {pathOrUrl})); }

std::string Desktop::DefaultBrowser() {
    const ProcessResult r = RunProgram("xdg-mime", {"query", "default", "text/html"});
    return Succeeded(r) ? Trim(r.output) : std::string();
}

bool Desktop::OpenWebPage(const std::string& url) {
    if (DefaultBrowser().empty()) {
        messages_.Show(kBrowserNotFoundText, MsgButtons::OK, MsgIcon::None, kBrowserNotFoundTitle);
        return false;
    }
    if (!Open(url)) {
        messages_.Show(kUrlFailedText, MsgButtons::OK, MsgIcon::None, kUrlFailedTitle);
        return false;
    }
    return true;
}

bool Desktop::SetWallpaper(const std::string& picturePath) {
    const std::string path = std::filesystem::absolute(picturePath).string();
    const char* env = std::getenv("XDG_CURRENT_DESKTOP");
    const std::string desktops = env ? env : "";
    if (DesktopIs(desktops, "KDE")) return Succeeded(RunProgram("plasma-apply-wallpaperimage", {path}));
    if (DesktopIs(desktops, "XFCE")) return SetXfceWallpaper(path);
    if (DesktopIs(desktops, "MATE"))
        return Succeeded(RunProgram("gsettings", {"set", "org.mate.background", "picture-filename", path}));
    if (DesktopIs(desktops, "X-CINNAMON") || DesktopIs(desktops, "CINNAMON"))
        return SetGnomeWallpaper("org.cinnamon.desktop.background", FileUri(path));
    // GNOME, Unity, Budgie and desktops we do not know: GNOME's setting is the common one.
    return SetGnomeWallpaper("org.gnome.desktop.background", FileUri(path));
}

bool Desktop::OpenHelp(const std::string& helpFolder, const std::string& topic) {
    const std::filesystem::path page = std::filesystem::path(helpFolder) / (topic.empty() ? "index.html" : topic);
    return Open(FileUri(std::filesystem::absolute(page).string()));
}

}  // namespace quorbel
