#include "effects/Remap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "effects/RowRunner.h"
#include "effects/WarpMaps.h"

namespace quorbel {

namespace {

inline uint32_t Sample(const cDib& source, int w, int h, float sx, float sy, uint32_t background) {
    if (!(sx >= 0 && sy >= 0 && sx <= w - 1 && sy <= h - 1)) return background;
    const int x0 = static_cast<int>(sx), y0 = static_cast<int>(sy);
    const int dx = x0 + 1 < w ? 4 : 0;
    const uint8_t* a = source.Row(y0) + 4 * x0;
    const uint8_t* c = y0 + 1 < h ? source.Row(y0 + 1) + 4 * x0 : a;
    // Weights with 8 fraction bits each (rounded half up; both fractions are >= 0); the
    // product has 16, removed with rounding at the end.
    const int32_t wx = static_cast<int32_t>((sx - x0) * 256.0f + 0.5f);
    const int32_t wy = static_cast<int32_t>((sy - y0) * 256.0f + 0.5f);
    uint32_t out = 0;
    for (int i = 0; i < 3; ++i) {
        const int32_t top = a[i] * (256 - wx) + a[i + dx] * wx;
        const int32_t bottom = c[i] * (256 - wx) + c[i + dx] * wx;
        const int32_t v = (top * (256 - wy) + bottom * wy + 32768) >> 16;
        out |= static_cast<uint32_t>(v) << (8 * i);
    }
    return out;
}

// Positions come from rowMap(x0, n, y, points), a run of one row at a time, so a mapping
// can work on whole runs; tiles rather than whole rows keep a warp's sources for one tile
// close together, read from cache instead of memory.
template <class RowMap>
bool RemapRows(const cDib& source, cDib& destination, const RowMap& rowMap, ColorRef background,
               const ProgressFn& progress) {
    if (!source.hDIB()) return false;
    const int w = source.Width(), h = source.Height();
    // A destination of the right size is written in place (repeated previews and runs), which
    // spares the system clearing fresh pages.
    cDib fresh;
    const bool inPlace = &destination != &source && destination.hDIB() && destination.Width() == w &&
                         destination.Height() == h;
    if (!inPlace && !fresh.Create(w, h)) return false;
    cDib& result = inPlace ? destination : fresh;
    const uint32_t fill = PixelFromColorRef(background);
    constexpr int kTile = 128;
    RunRows(0, h, w, progress, [&](int begin, int end) {
        SourcePoint points[kTile];
        for (int y0 = begin; y0 < end; y0 += kTile)
            for (int x0 = 0; x0 < w; x0 += kTile)
                for (int y = y0; y < std::min(end, y0 + kTile); ++y) {
                    // Positions first, then samples: the reads of one run of samples overlap.
                    const int n = std::min(w, x0 + kTile) - x0;
                    rowMap(x0, n, static_cast<float>(y), points);
                    uint8_t* row = result.Row(y) + 4 * x0;
                    for (int i = 0; i < n; ++i) {
                        const uint32_t px = Sample(source, w, h, points[i].sx, points[i].sy, fill);
                        std::memcpy(row + 4 * i, &px, 4);
                    }
                }
    });
    if (!inPlace) destination.Swap(fresh);
    return true;
}

// A mapping of one point at a time, inlined into the run.
template <class Map>
bool RemapWith(const cDib& source, cDib& destination, const Map& map, ColorRef background,
               const ProgressFn& progress) {
    return RemapRows(
        source, destination,
        [&map](int x0, int n, float y, SourcePoint* points) {
            for (int i = 0; i < n; ++i) points[i] = map(static_cast<float>(x0 + i), y);
        },
        background, progress);
}

}  // namespace

uint32_t SampleBilinear(const cDib& source, float sx, float sy, ColorRef background) {
    return Sample(source, source.Width(), source.Height(), sx, sy, PixelFromColorRef(background));
}

bool Remap(const cDib& source, cDib& destination, const Mapping& mapping, ColorRef background,
           const ProgressFn& progress) {
    return RemapWith(source, destination, mapping, background, progress);
}

bool ApplyWarp(const cDib& source, cDib& destination, int16_t transformation, ColorRef background,
               const ProgressFn& progress) {
    const WarpState s = MakeWarpState(transformation, source.Width(), source.Height());
    // One loop per mapping, each with its mapping inlined.
    const auto run = [&](SourcePoint (*map)(const WarpState&, float, float)) {
        return RemapWith(source, destination, [&s, map](float x, float y) { return map(s, x, y); },
                         background, progress);
    };
    switch (transformation) {
        case 0: return RemapWith(source, destination, [&s](float x, float y) { return warp::FishEye(s, x, y); }, background, progress);
        case 1:
            return RemapRows(source, destination,
                             [&s](int x0, int n, float y, SourcePoint* points) { warp::TwistRow(s, x0, n, y, points); },
                             background, progress);
        default: return run(WarpMap);
    }
}

bool ApplyFish(const cDib& source, cDib& destination, ColorRef background, const ProgressFn& progress) {
    const FishState s = MakeFishState(source.Width(), source.Height());
    return RemapWith(source, destination, [&s](float x, float y) { return warp::Fish(s, x, y); },
                     background, progress);
}

}  // namespace quorbel
