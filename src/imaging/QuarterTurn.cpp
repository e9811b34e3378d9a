#include "imaging/QuarterTurn.h"

#include <algorithm>
#include <cstring>

#include "core/ThreadPool.h"

namespace quorbel {
namespace {

constexpr int kTile = 64;  // 64 × 64 × 4 bytes = 16 KiB read and 16 KiB written per tile

template <int Bpp>
void TurnTile(const PixelView& src, const PixelView& dst, int x0, int x1, int y0, int y1) {
    const int h = src.height;
    // Destination rows y come from source column y; destination column x from row h-1-x.
    for (int y = y0; y < y1; ++y) {
        uint8_t* d = dst.Row(y) + static_cast<ptrdiff_t>(x0) * Bpp;
        const uint8_t* s = src.Row(h - 1 - x0) + static_cast<ptrdiff_t>(y) * Bpp;
        for (int x = x0; x < x1; ++x, d += Bpp, s -= src.stride) std::memcpy(d, s, Bpp);
    }
}

}  // namespace

void TurnQuarterClockwise(const PixelView& src, const PixelView& dst, const ProgressFn& progress) {
    if (src.Empty() || dst.Empty()) return;
    const int dstW = dst.width, dstH = dst.height;
    const int tileRows = (dstH + kTile - 1) / kTile;
    // Work in about ten slices so progress can be reported between them.
    const int slices = std::min(10, tileRows);
    for (int slice = 0; slice < slices; ++slice) {
        const int firstTileRow = tileRows * slice / slices;
        const int endTileRow = tileRows * (slice + 1) / slices;
        ParallelFor(endTileRow - firstTileRow, 1, [&](int begin, int end) {
            for (int tr = firstTileRow + begin; tr < firstTileRow + end; ++tr) {
                const int y0 = tr * kTile, y1 = std::min(dstH, y0 + kTile);
                for (int x0 = 0; x0 < dstW; x0 += kTile) {
                    const int x1 = std::min(dstW, x0 + kTile);
                    if (src.format == PixelFormat::Bgrx32)
                        TurnTile<4>(src, dst, x0, x1, y0, y1);
                    else
                        TurnTile<3>(src, dst, x0, x1, y0, y1);
                }
            }
        });
        if (progress) progress(100 * (slice + 1) / slices);
    }
}

}  // namespace quorbel
