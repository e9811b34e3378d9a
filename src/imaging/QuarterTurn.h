#pragma once
// Quarter turns through memory, cache-blocked so that both reads and writes stay in cache.
#include "imaging/cDib.h"

namespace quorbel {

// dst must be src.height wide and src.width high, same layout. Clockwise:
// dst(x, y) = src(y, h - 1 - x), so the source's left column, read bottom-up, becomes the
// top row and every pixel is kept. Progress is raised on the calling thread.
void TurnQuarterClockwise(const PixelView& src, const PixelView& dst, const ProgressFn& progress = {});

}  // namespace quorbel
