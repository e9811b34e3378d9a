// The filters that move pixels about: Diffuse, Noise and Pixelate.
#include <algorithm>

#include "core/Random.h"
#include "core/Rounding.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {

// Each visited row draws from its own generator, seeded from the filter's seed and the
// row, so the picture does not depend on how the rows are shared among threads.
Random RowGenerator(uint64_t seed, int row) {
    return Random(seed ^ (0x9E3779B97F4A7C15ull * static_cast<uint64_t>(row + 1)));
}

}  // namespace

bool cDIBFilter::Diffuse(cDib& picture, int horizontal, int vertical, int step) {
    if (!picture.hDIB()) return false;
    const int w = picture.Width(), h = picture.Height();
    const double hf = std::clamp(horizontal, 0, 100), vf = std::clamp(vertical, 0, 100);
    const int t = std::clamp(step, 1, 10);
    const PixelCopy source(picture);
    const uint64_t seed = Seed;
    RunRows(0, (h + t - 1) / t, w * t, Progress, [&](int begin, int end) {
        for (int j = begin; j < end; ++j) {
            const int y = j * t;
            Random rnd = RowGenerator(seed, y);
            uint8_t* row = picture.Row(y);
            for (int x = 0; x < w; x += t) {
                const double r1 = rnd.Rnd();
                const double r2 = rnd.Rnd();
                const int sx = std::clamp(RoundToInt32(r1 * 2 * hf + x - hf), 0, w - 1);
                const int sy = std::clamp(RoundToInt32(r2 * 2 * vf + y - vf), 0, h - 1);
                const uint8_t* s = source.At(sx, sy);
                row[4 * x] = s[0];
                row[4 * x + 1] = s[1];
                row[4 * x + 2] = s[2];
            }
        }
    });
    return true;
}

bool cDIBFilter::Noise(cDib& picture, int amount, int step) {
    if (!picture.hDIB()) return false;
    const int w = picture.Width(), h = picture.Height();
    const int32_t a = std::clamp(amount, 0, 200);
    const int t = std::clamp(step, 1, 10);
    const uint64_t seed = Seed;
    RunRows(0, (h + t - 1) / t, w * t, Progress, [&](int begin, int end) {
        for (int j = begin; j < end; ++j) {
            Random rnd = RowGenerator(seed, j * t);
            uint8_t* row = picture.Row(j * t);
            for (int x = 0; x < w; x += t)
                for (int c = 0; c < 3; ++c) {
                    // A whole offset in -a..a, each value equally likely.
                    const int32_t offset = static_cast<int32_t>(rnd.Rnd() * (2 * a + 1)) - a;
                    uint8_t& v = row[4 * x + c];
                    v = static_cast<uint8_t>(std::clamp(v + offset, 0, 255));
                }
        }
    });
    return true;
}

bool cDIBFilter::Pixelate(cDib& picture, int size) {
    if (!picture.hDIB()) return false;
    const int w = picture.Width(), h = picture.Height();
    const int p = std::clamp(size, 1, 25);
    // Bands by whole rows of blocks: a block's top-left pixel, which its whole block
    // copies, is only ever written (with its own colour) by the band that reads it.
    RunRows(0, (h + p - 1) / p, w * p, Progress, [&](int begin, int end) {
        for (int by = begin; by < end; ++by) {
            const uint8_t* top = picture.Row(by * p);
            for (int y = by * p; y < std::min(h, (by + 1) * p); ++y) {
                uint8_t* row = picture.Row(y);
                uint8_t b = 0, g = 0, r = 0;
                for (int x = 0; x < w; ++x) {
                    if (x % p == 0) {
                        b = top[4 * x];
                        g = top[4 * x + 1];
                        r = top[4 * x + 2];
                    }
                    row[4 * x] = b;
                    row[4 * x + 1] = g;
                    row[4 * x + 2] = r;
                }
            }
        }
    });
    return true;
}

}  // namespace quorbel
