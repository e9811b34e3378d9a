#pragma once
// Pictures for the fit-to-size tests: grain on a ramp, so a JPEG of them shrinks steadily
// with quality and with size, as a photo's does.
#include <cstdint>

#include "core/Random.h"
#include "imaging/cDib.h"

namespace quorbel::test {

inline cDib Grainy(int w, int h, uint64_t seed = 7) {
    cDib d;
    d.Create(w, h);
    Random rnd(seed);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            uint8_t* p = d.Row(y) + x * 4;
            const int grain = static_cast<int>(rnd.Rnd() * 96) - 48;
            p[0] = static_cast<uint8_t>(std::clamp(x * 255 / w + grain, 0, 255));
            p[1] = static_cast<uint8_t>(std::clamp(y * 255 / h + grain, 0, 255));
            p[2] = static_cast<uint8_t>(std::clamp(128 + grain, 0, 255));
        }
    return d;
}

}  // namespace quorbel::test
