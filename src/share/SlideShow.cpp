#include "share/SlideShow.h"

#include <fstream>
#include <iterator>

#include "core/SafeFile.h"
#include "output/FileBytes.h"

namespace quorbel {
namespace fs = std::filesystem;
namespace {

std::string TrimSpaces(std::string_view s) {
    const size_t first = s.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(s.substr(first, s.find_last_not_of(' ') - first + 1));
}

// A missing or unreadable part reads as nothing.
std::string ReadPart(const fs::path& file) {
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(file, bytes)) return {};
    return {bytes.begin(), bytes.end()};
}

std::span<const uint8_t> Bytes(const std::string& text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

}  // namespace

std::string EscapeHtml(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&#39;"; break;
            default: out += c;
        }
    }
    return out;
}

std::string SlideShowOptions(const std::vector<SlideShowEntry>& entries) {
    std::string list;
    for (const SlideShowEntry& e : entries)
        list += " <option value ='" + EscapeHtml(TrimSpaces(e.file)) + "'>" + EscapeHtml(e.caption) + "</option>";
    return list;
}

std::error_code WriteSlideShow(const fs::path& target, const fs::path& templates,
                               const std::vector<SlideShowEntry>& entries, std::vector<fs::path>& outputs) {
    const std::string page = ReadPart(templates / kTemplateParts[0]) + ReadPart(templates / kTemplateParts[1]) +
                             SlideShowOptions(entries) + ReadPart(templates / kTemplateParts[2]);
    const fs::path pageFile = target / kSlideShowPage;
    if (const std::error_code ec = ReplaceFileContents(pageFile, Bytes(page))) return ec;
    outputs.push_back(pageFile);

    std::vector<uint8_t> script;
    const fs::path scriptCopy = target / kSlideShowScriptCopy;
    if (!ReadWholeFile(templates / kSlideShowScript, script) && !ReplaceFileContents(scriptCopy, script))
        outputs.push_back(scriptCopy);
    return {};
}

bool OpenPageInBrowser(const fs::path& page, const fs::path& workFolder, Desktop& desktop, MessageBox& messages) {
    const fs::path probe = workFolder / kBrowserProbeFile;
    std::ofstream(probe) << kBrowserProbeLine << '\n';
    bool opened = false;
    std::string browser = desktop.DefaultBrowser();
    if (browser.find_first_not_of(" \t\r\n") == std::string::npos) {
        messages.Show(kBrowserNotFoundText, MsgButtons::OK, MsgIcon::Exclamation, kBrowserNotFoundTitle);
    } else if (!desktop.Open(FileUri(fs::absolute(page).string()))) {
        messages.Show(kUrlFailedText, MsgButtons::OK, MsgIcon::Exclamation, kUrlFailedTitle);
    } else {
        opened = true;
    }
    std::error_code ignored;
    fs::remove(probe, ignored);
    return opened;
}

}  // namespace quorbel
