#include "editor/SaveAsRules.h"

#include <array>
#include <utility>

#include "core/text/TextCase.h"

namespace quorbel {
namespace {

struct PatternType {
    std::string_view pattern;
    std::string_view type;
    int filterIndex;  // in "Bitmap|GIF|JPEG|PNG|TIFF"; the icon has none
};

constexpr std::array<PatternType, 6> kPatterns{{
    {"*.jpg", "JPEG .jpg", 3},
    {"*.gif", "GIF .gif", 2},
    {"*.png", "PNG .png", 4},
    {"*.tif", "TIFF .tif", 5},
    {"*.bmp", "Bitmap .bmp", 1},
    {"*.ico", "ICON .ico", 0},
}};

}  // namespace

std::string FileTypeForPattern(std::string_view pattern) {
    for (const PatternType& p : kPatterns)
        if (p.pattern == pattern) return std::string(p.type);
    return "Unknown";
}

std::string WithPatternExtension(const std::string& path, std::string_view pattern) {
    for (const PatternType& p : kPatterns) {
        if (p.pattern != pattern) continue;
        const std::string_view ext = pattern.substr(1);  // ".jpg"
        const bool has = path.size() > ext.size() &&
                         EqualsIgnoreCase(std::string_view(path).substr(path.size() - ext.size()), ext);
        return has ? path : path + std::string(ext);
    }
    return path;
}

bool IsIconType(std::string_view fileType) {
    return fileType == "ICON .ico" || fileType == "ICON (.ico)" || fileType == "Icon (.ico)";
}

int SaveFilterIndexForType(std::string_view fileType) {
    for (const PatternType& p : kPatterns)
        if (p.type == fileType && p.filterIndex > 0) return p.filterIndex;
    return 3;
}

}  // namespace quorbel
