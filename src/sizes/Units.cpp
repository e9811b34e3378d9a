#include "sizes/Units.h"

#include <cmath>

#include "core/Rounding.h"
#include "core/RuntimeError.h"
#include "core/text/NumberFormat.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

constexpr int kErrInvalidArgument = 5;

[[noreturn]] void RaiseInvalid() {
    throw RuntimeError(kErrInvalidArgument, "ScaleConvert", "Invalid procedure call or argument");
}

double TwipsPerUnit(ScaleCode code, double twipsPerPixel, bool isHeight) {
    switch (code) {
        case ScaleCode::Twips: return 1.0;
        case ScaleCode::Points: return 20.0;
        case ScaleCode::Pixels: return twipsPerPixel;
        // Heights use the character cell's height, not its width.
        case ScaleCode::Characters: return isHeight ? 240.0 : 120.0;
        case ScaleCode::Inches: return 1440.0;
        case ScaleCode::Millimeters: return 56.7;
        case ScaleCode::Centimeters: return 567.0;
    }
    RaiseInvalid();
}

}  // namespace

ScaleCode ScaleCodeForUnit(std::string_view unitName) {
    const std::string unit = ToLowerAscii(unitName);
    if (unit == "inches") return ScaleCode::Inches;
    if (unit == "twips") return ScaleCode::Twips;
    if (unit == "points") return ScaleCode::Points;
    if (unit == "characters") return ScaleCode::Characters;
    if (unit == "millimeters") return ScaleCode::Millimeters;
    if (unit == "centimeters") return ScaleCode::Centimeters;
    return ScaleCode::Pixels;
}

double ScaleConvert(double value, ScaleCode from, ScaleCode to, double twipsPerPixel, bool isHeight) {
    if (!(twipsPerPixel > 0.0) || !std::isfinite(twipsPerPixel)) RaiseInvalid();
    const double twips = value * TwipsPerUnit(from, twipsPerPixel, isHeight);
    return twips / TwipsPerUnit(to, twipsPerPixel, isHeight);
}

std::string PixelsToUnitText(int32_t pixels, std::string_view unitName, double twipsPerPixel,
                             bool isHeight) {
    const ScaleCode code = ScaleCodeForUnit(unitName);
    if (code == ScaleCode::Pixels) return std::to_string(pixels);
    return FormatUpToTwoDecimals(
        ScaleConvert(pixels, ScaleCode::Pixels, code, twipsPerPixel, isHeight));
}

int32_t UnitToPixels(double value, std::string_view unitName, double twipsPerPixel, bool isHeight) {
    return RoundToInt32(
        ScaleConvert(value, ScaleCodeForUnit(unitName), ScaleCode::Pixels, twipsPerPixel, isHeight),
        "UnitToPixels");
}

}  // namespace quorbel
