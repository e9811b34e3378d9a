#pragma once
// The desktop around the program: opening folders and pages with the user's own programs,
// the default browser, the wallpaper, help pages.
#include <string>

#include "core/MessageBox.h"

namespace quorbel {

inline constexpr const char* kBrowserNotFoundText = "Could not find associated Browser";
inline constexpr const char* kBrowserNotFoundTitle = "Browser Not Found";
inline constexpr const char* kUrlFailedText = "Web Page not Opened";
inline constexpr const char* kUrlFailedTitle = "URL Failed";

class Desktop {
public:
    explicit Desktop(MessageBox& messages) : messages_(messages) {}
    virtual ~Desktop() = default;

    // Opens a folder, file or address with the user's default program (xdg-open).
    virtual bool Open(const std::string& pathOrUrl);
    // The desktop entry of the default web browser ("firefox-esr.desktop"); empty when none.
    virtual std::string DefaultBrowser();
    // Opens a web page in the default browser; tells the user when there is no browser or
    // the page could not be opened.
    virtual bool OpenWebPage(const std::string& url);
    // Sets the desktop wallpaper on GNOME, Cinnamon, Unity, MATE, KDE Plasma and XFCE (chosen
    // by XDG_CURRENT_DESKTOP); true when the desktop's own tool accepted it.
    virtual bool SetWallpaper(const std::string& picturePath);
    // Opens a help page of helpFolder at a topic; an empty topic opens the contents.
    virtual bool OpenHelp(const std::string& helpFolder, const std::string& topic);

private:
    MessageBox& messages_;
};

// "file:///home/a%20b/pic.bmp": a path as a file address, unsafe bytes escaped.
std::string FileUri(const std::string& absolutePath);

}  // namespace quorbel
