#pragma once
// Buffer-to-buffer copies and stretches: what the classic BitBlt and StretchBlt did on
// device contexts, here on pixel views of either layout.
#include "imaging/PixelView.h"

namespace quorbel {

// Copies a w × h block from src (sx, sy) to dst (dx, dy). Parts that fall outside either
// view are left out; destination pixels with no source stay as they were.
void BitBlt(const PixelView& dst, int dx, int dy, int w, int h,
            const PixelView& src, int sx, int sy);

// Draws the source rectangle onto the destination rectangle. A negative destination width
// or height mirrors: the block then runs left (or up) from the origin, so (w - 1, 0) with
// width -w flips a picture onto itself column for column. Shrinking follows the stretch
// mode; enlarging repeats pixels in every mode. Source and destination may be the same
// memory only for a pure mirror of the whole view.
void StretchBlt(const PixelView& dst, int dx, int dy, int dw, int dh,
                const PixelView& src, int sx, int sy, int sw, int sh, StretchMode mode);

// Fills a rectangle with one colour value (red in the low byte), clipped to the view.
void FillRect(const PixelView& dst, int x, int y, int w, int h, uint32_t colorRef);

}  // namespace quorbel
