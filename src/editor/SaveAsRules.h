#pragma once
// How the Save as dialog's answer becomes an output type and a file name.
#include <string>
#include <string_view>

namespace quorbel {

// "*.jpg" -> "JPEG .jpg", "*.gif" -> "GIF .gif", "*.png" -> "PNG .png", "*.tif" -> "TIFF .tif",
// "*.bmp" -> "Bitmap .bmp", "*.ico" -> "ICON .ico"; anything else "Unknown".
std::string FileTypeForPattern(std::string_view pattern);

// The path with the pattern's extension appended when it does not already end in it (any
// case); unchanged for a pattern that is not one of the six.
std::string WithPatternExtension(const std::string& path, std::string_view pattern);

// "ICON .ico", "ICON (.ico)" and "Icon (.ico)" all mean the icon type.
bool IsIconType(std::string_view fileType);

// The Save as filter (1-based) that goes with a type of the type list; JPEG for the rest.
int SaveFilterIndexForType(std::string_view fileType);

}  // namespace quorbel
