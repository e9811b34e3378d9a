#include "effects/Remap.h"

#include <cmath>
#include <cstring>

#include "effects/RowRunner.h"

namespace quorbel {

uint32_t SampleBilinear(const cDib& source, float sx, float sy, ColorRef background) {
    const int w = source.Width(), h = source.Height();
    if (!(sx >= 0 && sy >= 0 && sx <= w - 1 && sy <= h - 1)) return PixelFromColorRef(background);
    const int x0 = static_cast<int>(sx), y0 = static_cast<int>(sy);
    const int x1 = x0 + 1 < w ? x0 + 1 : x0, y1 = y0 + 1 < h ? y0 + 1 : y0;
    // Weights with 8 fraction bits each; the product has 16, removed with rounding at the end.
    const int32_t wx = static_cast<int32_t>(std::lround((sx - x0) * 256.0f));
    const int32_t wy = static_cast<int32_t>(std::lround((sy - y0) * 256.0f));
    const uint8_t* a = source.Row(y0) + 4 * x0;
    const uint8_t* b = source.Row(y0) + 4 * x1;
    const uint8_t* c = source.Row(y1) + 4 * x0;
    const uint8_t* d = source.Row(y1) + 4 * x1;
    uint32_t out = 0;
    for (int i = 0; i < 3; ++i) {
        const int32_t top = a[i] * (256 - wx) + b[i] * wx;
        const int32_t bottom = c[i] * (256 - wx) + d[i] * wx;
        const int32_t v = (top * (256 - wy) + bottom * wy + 32768) >> 16;
        out |= static_cast<uint32_t>(v) << (8 * i);
    }
    return out;
}

bool Remap(const cDib& source, cDib& destination, const Mapping& mapping, ColorRef background,
           const ProgressFn& progress) {
    if (!source.hDIB()) return false;
    const int w = source.Width(), h = source.Height();
    cDib result;
    if (!result.Create(w, h)) return false;
    RunRows(0, h, w, progress, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            uint8_t* row = result.Row(y);
            for (int x = 0; x < w; ++x) {
                const SourcePoint p = mapping(static_cast<float>(x), static_cast<float>(y));
                const uint32_t px = SampleBilinear(source, p.sx, p.sy, background);
                std::memcpy(row + 4 * x, &px, 4);
            }
        }
    });
    destination.Swap(result);
    return true;
}

bool ApplyWarp(const cDib& source, cDib& destination, int16_t transformation, ColorRef background,
               const ProgressFn& progress) {
    const WarpState state = MakeWarpState(transformation, source.Width(), source.Height());
    return Remap(source, destination, [&state](float x, float y) { return WarpMap(state, x, y); },
                 background, progress);
}

bool ApplyFish(const cDib& source, cDib& destination, ColorRef background, const ProgressFn& progress) {
    const FishState state = MakeFishState(source.Width(), source.Height());
    return Remap(source, destination, [&state](float x, float y) { return FishMap(state, x, y); },
                 background, progress);
}

}  // namespace quorbel
