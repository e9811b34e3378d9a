#pragma once
// Turning a decoded picture upright by its EXIF orientation (2..8), so that everything
// after the loader sees the picture as the camera's owner saw it.
#include <span>

#include "imaging/DecodedPicture.h"

namespace quorbel {

// Replaces pixels with the upright picture; false (pixels unchanged) when memory runs out.
// Orientation 1 and values outside 2..8 change nothing.
bool TurnUpright(cDib& pixels, int orientation);
// The same for the pixels and, for paletted sources, the colour indices.
bool TurnUpright(DecodedPicture& picture, int orientation);

// The EXIF orientation of a picture file; 1 when it has none or its EXIF is malformed.
int FileOrientation(std::span<const uint8_t> file);

}  // namespace quorbel
