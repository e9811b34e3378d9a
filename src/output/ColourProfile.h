#pragma once
// Pictures from wide-gamut cameras and phones converted to sRGB, the space browsers and mail
// programs assume, through their embedded ICC profile.
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/cDib.h"

namespace quorbel {

// Converts the pixels in place from the profile's space to sRGB (perceptual intent). False,
// pixels untouched, when the profile is damaged or not an RGB profile.
bool ConvertToSrgb(cDib& pixels, std::span<const uint8_t> icc);

// What a JPEG's markers say about its colours: the embedded profile, put back together from
// its APP2 pieces (empty when a piece is missing), and whether an Adobe APP14 marker is
// there, whose CMYK stores inverted ink.
struct JpegColour {
    std::vector<uint8_t> icc;
    bool adobe = false;
};
JpegColour ReadJpegColour(std::span<const uint8_t> jpeg);

// Converts width × height CMYK pixels (4 bytes each, top row first) into out through a CMYK
// profile, perceptual intent. False, out untouched, when the profile is damaged or not CMYK.
bool ConvertCmykToSrgb(const uint8_t* cmyk, bool inverted, std::span<const uint8_t> icc, const PixelView& out);

}  // namespace quorbel
