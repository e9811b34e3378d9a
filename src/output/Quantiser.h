#pragma once
// Reduces a picture to at most 256 colours for GIF files: a picture that already has
// that few keeps its colours exactly; any other gets the optimal palette of cDIBPal and
// cDIBDither's Stucki error diffusion, as the editor's colour reductions do.
#include <cstdint>
#include <vector>

#include "imaging/DecodedPicture.h"

namespace quorbel {

struct IndexedPicture {
    std::vector<RgbQuad> palette;  // 1..256 entries
    std::vector<uint8_t> indices;  // one per pixel, top row first
};

IndexedPicture ReduceTo256Colours(const cDib& picture);

}  // namespace quorbel
