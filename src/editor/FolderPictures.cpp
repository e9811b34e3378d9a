#include "editor/FolderPictures.h"

#include <algorithm>
#include <system_error>

#include "core/text/TextCase.h"

namespace quorbel {
namespace fs = std::filesystem;

std::vector<fs::path> ListFolderPictures(const fs::path& folder) {
    static constexpr std::string_view kExtensions[] = {".bmp", ".gif", ".jpg", ".jpeg", ".png", ".tif"};
    std::vector<fs::path> pictures;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code statError;
        if (!it->is_regular_file(statError)) continue;  // FIFOs, devices and folders are not pictures
        const std::string ext = ToLowerAscii(it->path().extension().native());
        if (std::find(std::begin(kExtensions), std::end(kExtensions), ext) != std::end(kExtensions))
            pictures.push_back(it->path());
    }
    std::sort(pictures.begin(), pictures.end(),
              [](const fs::path& a, const fs::path& b) { return a.native() < b.native(); });
    return pictures;
}

fs::path NeighbourPicture(const std::vector<fs::path>& pictures, const fs::path& current, int direction) {
    if (pictures.empty()) return {};
    const auto after = std::upper_bound(pictures.begin(), pictures.end(), current,
                                        [](const fs::path& a, const fs::path& b) { return a.native() < b.native(); });
    if (direction > 0) return after == pictures.end() ? pictures.front() : *after;
    // The last one before current, skipping current itself.
    auto before = std::lower_bound(pictures.begin(), pictures.end(), current,
                                   [](const fs::path& a, const fs::path& b) { return a.native() < b.native(); });
    return before == pictures.begin() ? pictures.back() : *(before - 1);
}

}  // namespace quorbel
