#pragma once
// Small pictures made in code for the imaging tests.
#include <cstdint>
#include <cstring>
#include <utility>

#include "imaging/cDib.h"

namespace quorbel::test {

inline uint32_t Pixel(const cDib& d, int x, int y) {
    uint32_t v;
    std::memcpy(&v, d.Row(y) + x * 4, 4);
    return v;
}

inline void SetPixel(cDib& d, int x, int y, uint32_t v) { std::memcpy(d.Row(y) + x * 4, &v, 4); }

// Every pixel different: blue = x, green = y, red = x + y (mod 256).
inline cDib Numbered(int w, int h) {
    cDib d;
    d.Create(w, h, 0);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            SetPixel(d, x, y, uint32_t(x & 0xFF) | (uint32_t(y & 0xFF) << 8) | (uint32_t((x + y) & 0xFF) << 16));
    return d;
}

inline std::pair<int, int> SizeOf(const cDib& d) { return {d.Width(), d.Height()}; }

inline uint32_t Bgr(uint8_t b, uint8_t g, uint8_t r) { return uint32_t(b) | (uint32_t(g) << 8) | (uint32_t(r) << 16); }

}  // namespace quorbel::test
