#include "output/Upright.h"

#include <algorithm>
#include <cstring>

#include "imaging/QuarterTurn.h"
#include "metadata/ExifFacts.h"

namespace quorbel {
namespace {

// Where the upright picture's (x, y) comes from in the stored w × h picture.
struct SourceMap {
    int orientation, w, h;
    void operator()(int x, int y, int& sx, int& sy) const {
        switch (orientation) {
            case 2: sx = w - 1 - x; sy = y; break;              // mirrored
            case 3: sx = w - 1 - x; sy = h - 1 - y; break;      // turned half round
            case 4: sx = x; sy = h - 1 - y; break;              // upside down (mirrored top to bottom)
            case 5: sx = y; sy = x; break;                      // transposed
            case 6: sx = y; sy = h - 1 - x; break;              // turn a quarter clockwise
            case 7: sx = w - 1 - y; sy = h - 1 - x; break;      // transverse
            case 8: sx = w - 1 - y; sy = x; break;              // turn a quarter anticlockwise
            default: sx = x; sy = y; break;
        }
    }
};

// Orientations 2..4 in place, row by row: a mirror reverses each row, upside down swaps rows,
// a half turn does both.
void FlipInPlace(cDib& pixels, bool mirror, bool upsideDown) {
    const int w = pixels.Width(), h = pixels.Height();
    if (mirror)
        for (int y = 0; y < h; ++y) {
            auto* row = reinterpret_cast<uint32_t*>(pixels.Row(y));
            std::reverse(row, row + w);
        }
    if (upsideDown)
        for (int a = 0, b = h - 1; a < b; ++a, --b)
            std::swap_ranges(pixels.Row(a), pixels.Row(a) + static_cast<size_t>(w) * 4, pixels.Row(b));
}

}  // namespace

bool TurnUpright(cDib& pixels, int orientation) {
    if (orientation < 2 || orientation > 8 || !pixels.hDIB()) return true;
    // 5..8 are the cache-blocked quarter turn clockwise (6) followed by a mirror (5), by
    // nothing (6), upside down (7) or both (8).
    if (SwapsSides(orientation)) {
        cDib turned;
        if (!turned.Create(pixels.Height(), pixels.Width())) return false;
        TurnQuarterClockwise(pixels.View(), turned.View());
        pixels.Swap(turned);
        orientation = orientation == 5 ? 2 : orientation == 7 ? 4 : orientation == 8 ? 3 : 1;
    }
    FlipInPlace(pixels, orientation == 2 || orientation == 3, orientation == 3 || orientation == 4);
    return true;
}

bool TurnUpright(DecodedPicture& picture, int orientation) {
    if (orientation < 2 || orientation > 8) return true;
    const int w = picture.pixels.Width(), h = picture.pixels.Height();
    if (picture.indices.size() == static_cast<size_t>(w) * h && !picture.indices.empty()) {
        std::vector<uint8_t> turned(picture.indices.size());
        const int tw = SwapsSides(orientation) ? h : w;
        const SourceMap map{orientation, w, h};
        for (int i = 0, sx, sy; i < static_cast<int>(turned.size()); ++i) {
            map(i % tw, i / tw, sx, sy);
            turned[i] = picture.indices[static_cast<size_t>(sy) * w + sx];
        }
        if (!TurnUpright(picture.pixels, orientation)) return false;
        picture.indices.swap(turned);
        return true;
    }
    return TurnUpright(picture.pixels, orientation);
}

int FileOrientation(std::span<const uint8_t> file) { return ReadExifFacts(file).orientation; }

}  // namespace quorbel
