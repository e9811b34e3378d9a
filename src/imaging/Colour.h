#pragma once
// A colour value: red in the low byte, then green, then blue (the classic COLORREF).
#include <cstdint>

namespace quorbel {

using ColorRef = uint32_t;

constexpr ColorRef RGBColor(uint8_t r, uint8_t g, uint8_t b) {
    return ColorRef(r) | (ColorRef(g) << 8) | (ColorRef(b) << 16);
}
constexpr uint8_t RedOf(ColorRef c) { return uint8_t(c & 0xFF); }
constexpr uint8_t GreenOf(ColorRef c) { return uint8_t((c >> 8) & 0xFF); }
constexpr uint8_t BlueOf(ColorRef c) { return uint8_t((c >> 16) & 0xFF); }

// The same colour as a 32-bit pixel in memory order blue, green, red, unused (0).
constexpr uint32_t PixelFromColorRef(ColorRef c) {
    return uint32_t(BlueOf(c)) | (uint32_t(GreenOf(c)) << 8) | (uint32_t(RedOf(c)) << 16);
}

}  // namespace quorbel
