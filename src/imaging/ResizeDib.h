#pragma once
// The one resize of the program.
#include <cstdint>

#include "imaging/cDib.h"

namespace quorbel {

// Redraws picture at newWidth × newHeight: bicubic (antialiased when shrinking) when
// highQuality, nearest pixel otherwise. True when the buffer now has the new size and
// content. An empty picture, or a size that cannot be made, gives false and leaves the
// picture as it was. The same size still runs the whole path and gives a new buffer.
bool ResizeDib(cDib& picture, int32_t newWidth, int32_t newHeight, bool highQuality);

}  // namespace quorbel
