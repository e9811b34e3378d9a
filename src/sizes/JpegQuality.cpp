#include "sizes/JpegQuality.h"

#include <array>
#include <utility>

#include "core/Rounding.h"
#include "core/text/NumericText.h"

namespace quorbel {

int32_t JpegQualityFromName(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, int32_t>, 5> kNames{{
        {"Highest Quality", 95},
        {"Higher Quality", 85},
        {"Medium Quality", 75},
        {"Lower Quality", 65},
        {"Lowest Quality", 50},
    }};
    for (const auto& [text, quality] : kNames)
        if (name == text) return quality;
    if (const std::optional<double> number = ParseNumericText(name))
        return RoundToInt32(*number, "JpegQualityFromName");
    return kDefaultJpegQuality;
}

}  // namespace quorbel
