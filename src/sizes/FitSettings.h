#pragma once
// The fit-to-file-size window's remembered choices (section "MakeItFit" of the settings
// store) and their reading into a search request.
#include <optional>
#include <string>
#include <string_view>

#include "sizes/FitToFileSize.h"

namespace quorbel {

inline constexpr std::string_view kMakeItFitSection = "MakeItFit";

// The fields as typed, so they come back exactly as the user left them.
struct FitSettings {
    std::string fileSize = "100";            // "FileSize"
    std::string sizeScale = "KB";            // "SizeScale": "KB" or "MB"
    std::string quality = "Highest Quality";  // "Quality": a quality name or a number
    std::string scale = "Pixels";            // "Scale": the unit of the four sizes
    std::string maxWidth;                    // "MaxWidth": empty means the picture's own
    std::string maxHeight;                   // "MaxHeight"
    std::string minWidth = "100";            // "MinWidth"
    std::string minHeight = "100";           // "MinHeight"
    bool hw = false;                         // "radHW": "True" starts in the "H+W" mode

    bool operator==(const FitSettings&) const = default;
};

// Absent keys keep the defaults above.
FitSettings LoadFitSettings();
bool SaveFitSettings(const FitSettings& settings);

// "MB" (any case) or else KB.
FileSizeUnit FileSizeUnitFromText(std::string_view text);

// nullopt when a field is not a positive number or a size converts to less than one pixel;
// badKey then names the field's settings key.
std::optional<FitRequest> MakeFitRequest(const FitSettings& settings, double twipsPerPixel,
                                         std::string* badKey = nullptr);

}  // namespace quorbel
