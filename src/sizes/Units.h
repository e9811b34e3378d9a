#pragma once
// Measurement units of sizes and the conversions between pixels and the other units.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorbel {

// In the order of the unit lists; "Twips" is understood too but not offered.
inline constexpr std::array<std::string_view, 6> kUnitNames{
    "Inches", "Pixels", "Points", "Characters", "Millimeters", "Centimeters"};

enum class ScaleCode : int {
    Twips = 1,
    Points = 2,
    Pixels = 3,
    Characters = 4,
    Inches = 5,
    Millimeters = 6,
    Centimeters = 7,
};

// The screen's standard resolution (96 dots per inch).
inline constexpr double kTwipsPerPixelAt96Dpi = 15.0;

// Unit names compare in lower case. An unknown name is taken as pixels, which leaves a
// typed size as it is rather than scaling it by a guess.
ScaleCode ScaleCodeForUnit(std::string_view unitName);

// Converts through twips: 1440 per inch, 20 per point, 567 per centimetre, 56.7 per
// millimetre, twipsPerPixel per pixel; a character is 120 wide and 240 high. Raises
// RuntimeError 5 for a code outside 1..7 or a twipsPerPixel that is not positive.
double ScaleConvert(double value, ScaleCode from, ScaleCode to, double twipsPerPixel, bool isHeight);

// "pixels": the whole number; other units: the converted value as "#####.##".
std::string PixelsToUnitText(int32_t pixels, std::string_view unitName, double twipsPerPixel,
                             bool isHeight);

// A size in unitName to whole pixels, halves to even; raises the overflow error beyond 32 bits.
int32_t UnitToPixels(double value, std::string_view unitName, double twipsPerPixel, bool isHeight);

}  // namespace quorbel
