#pragma once
// BMP files written by hand, for the decoders' checks.
#include <cstdint>
#include <vector>

namespace quorbel::test {

// Writes v little-endian at b[at..at+3].
inline void Put32(std::vector<uint8_t>& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = uint8_t(v >> (8 * i));
}

// A BMP file of `tableBytes` of palette or masks after a 40-byte header, then `dataBytes` of pixels.
inline std::vector<uint8_t> BmpFile(int32_t w, int32_t h, uint8_t bits, uint32_t compression,
                                    uint32_t paletteCount, size_t tableBytes, size_t dataBytes) {
    std::vector<uint8_t> b(14 + 40 + tableBytes + dataBytes, 0);
    b[0] = 'B', b[1] = 'M';
    Put32(b, 10, static_cast<uint32_t>(14 + 40 + tableBytes));
    Put32(b, 14, 40), Put32(b, 18, static_cast<uint32_t>(w)), Put32(b, 22, static_cast<uint32_t>(h));
    b[26] = 1, b[28] = bits;
    Put32(b, 30, compression), Put32(b, 46, paletteCount);
    return b;
}

}  // namespace quorbel::test
