#pragma once
// The whole-number grey the colour filters share (the broadcast luma weights in thousandths,
// rounded): exact for greys, (v, v, v) -> v.
#include <cstdint>

namespace quorbel {

// px points at a pixel in memory order blue, green, red.
inline int32_t IntegerGrey(const uint8_t* px) {
    return (114 * px[0] + 587 * px[1] + 299 * px[2] + 500) / 1000;
}

}  // namespace quorbel
