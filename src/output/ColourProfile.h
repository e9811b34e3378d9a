#pragma once
// Pictures from wide-gamut cameras and phones converted to sRGB, the space browsers and mail
// programs assume, through their embedded ICC profile.
#include <cstdint>
#include <span>

#include "imaging/cDib.h"

namespace quorbel {

// Converts the pixels in place from the profile's space to sRGB (perceptual intent). False,
// pixels untouched, when the profile is damaged or not an RGB profile.
bool ConvertToSrgb(cDib& pixels, std::span<const uint8_t> icc);

}  // namespace quorbel
