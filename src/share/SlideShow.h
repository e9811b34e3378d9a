#pragma once
// The web slide show: a page assembled from the three template parts that ship with the
// program, with one selection-list entry per picture, and its script beside it.
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/MessageBox.h"
#include "platform/Desktop.h"

namespace quorbel {

inline constexpr std::string_view kSlideShowPage = "slideshow.htm";
inline constexpr std::string_view kSlideShowScript = "slideshow.js";      // as shipped
inline constexpr std::string_view kSlideShowScriptCopy = "SlideShow.js";  // as the page names it
inline constexpr std::string_view kTemplateParts[] = {"DHTML1.txt", "DHTML2.txt", "DHTML3.txt"};
inline constexpr std::string_view kBrowserProbeFile = "temphtm.HTM";
inline constexpr std::string_view kBrowserProbeLine = "<HTML> <\\HTML>";

// The completion page of the "Web" job.
inline constexpr std::string_view kWebDoneHeading = "Web Slide Show Creation Completed Successfully!";
inline constexpr std::string_view kWebDoneLines[] = {
    "Your Web Slide Show has been created, it is now ready to add to your website.",
    "Use your favorite FTP program to upload all the files added to the target folder.",
    "Please ensure you upload all files included in the slide show otherwise it will not work properly.",
    "Send the link to colleagues, friends and family to enjoy your new slide show!"};

struct SlideShowEntry {
    std::string file;     // the picture's file name in the target folder
    std::string caption;  // empty when the row has none
};

// "&", "<", ">", '"' and "'" as entities, so no name or caption can end the attribute or the
// element it stands in; everything else (letters of any language) is kept as it is.
std::string EscapeHtml(std::string_view text);

// " <option value ='a.jpg'>Beach</option> <option value ='b.jpg'></option>": a space before
// each entry, the file name trimmed of surrounding spaces.
std::string SlideShowOptions(const std::vector<SlideShowEntry>& entries);

// Writes templates/DHTML1 + DHTML2 + options + DHTML3 to target/slideshow.htm (a missing part
// is left out) and copies templates/slideshow.js to target/SlideShow.js, appending each file
// written to outputs. An error when the page could not be written; nothing is half-written.
std::error_code WriteSlideShow(const std::filesystem::path& target, const std::filesystem::path& templates,
                               const std::vector<SlideShowEntry>& entries,
                               std::vector<std::filesystem::path>& outputs);

// Opens the page in the default browser, going by the program associated with a throw-away
// "temphtm.HTM" written in workFolder (and deleted again whatever happens). Tells the user
// when there is no browser or it could not open the page.
bool OpenPageInBrowser(const std::filesystem::path& page, const std::filesystem::path& workFolder,
                       Desktop& desktop, MessageBox& messages);

}  // namespace quorbel
