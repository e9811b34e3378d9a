#pragma once
// The canvas a HEIF file's derived pictures (grids of tiles, overlays) declare in their item
// data. libheif allocates that canvas at the declared size before it decodes a single tile
// and never compares it with the picture's stated size, so a 500-byte file could ask for
// gigabytes; the declaration is read and held to the caps first.
#include <cstdint>
#include <span>

namespace quorbel {

// False when a grid or overlay declares a canvas over the caps, or when such an item's
// description cannot be found (libheif could not decode it either). A file without
// derived pictures, or one whose boxes end early, passes: the library judges the rest.
bool HeifCanvasesAllowed(std::span<const uint8_t> file);

}  // namespace quorbel
