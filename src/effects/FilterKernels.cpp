// The convolution filters: Blur, Soften, Sharpen and the edge and relief family.
#include <algorithm>
#include <vector>

#include "effects/PixelGrey.h"
#include "effects/cDIBFilter.h"

namespace quorbel {

cDIBFilter::cDIBFilter() : Seed(0x51A7E5EEDull) {}

bool cDIBFilter::Convolve(cDib& picture, const Kernel3x3& kernel) {
    if (!picture.hDIB()) return false;
    Convolve3x3(picture, kernel, Progress);
    return true;
}

bool cDIBFilter::Blur(cDib& picture, int strength) {
    const int32_t w = 101 - std::clamp(strength, 76, 100);
    return Convolve(picture, {{1, 1, 1, 1, w, 1, 1, 1, 1}, w + 8});
}

bool cDIBFilter::Soften(cDib& picture, int strength) {
    const int32_t w = 101 - std::clamp(strength, 76, 100);
    return Convolve(picture, {{0, 1, 0, 1, w, 1, 0, 1, 0}, w + 4});
}

bool cDIBFilter::Sharpen(cDib& picture, int strength) {
    const int32_t w = 109 - std::clamp(strength, 76, 100);
    return Convolve(picture, {{-1, -1, -1, -1, w, -1, -1, -1, -1}, w - 8});
}

bool cDIBFilter::Outline(cDib& picture, int level, int shift) {
    const int32_t k = 100 + std::clamp(level, -100, 100);
    Kernel3x3 kernel{{-k, -k, -k, -k, 8 * k, -k, -k, -k, -k}, 100, std::clamp(shift, -50, 50)};
    kernel.magnitude = true;
    return Convolve(picture, kernel);
}

bool cDIBFilter::Emboss(cDib& picture, int level, int direction) {
    // Lit from the top left, a slope rising toward the bottom right faces the light.
    const int32_t k = (100 + std::clamp(level, 0, 200)) * (direction > 0 ? -1 : 1);
    return Convolve(picture, {{-k, -k, 0, -k, 0, k, 0, k, k}, 100, 128});
}

bool cDIBFilter::Relieve(cDib& picture, int level) {
    const int32_t k = std::clamp(level, 1, 100);
    return Convolve(picture, {{-k, -k, 0, -k, 25, k, 0, k, k}, 25});
}

namespace {

// Fills grey[x] with the grey of each pixel of a row.
void GreyRow(const uint8_t* row, int width, int32_t* grey) {
    for (int x = 0; x < width; ++x) grey[x] = IntegerGrey(row + 4 * x);
}

// The walk of the grey-based 3 × 3 filters: f(g, x) gets the three grey rows and the column
// and returns the grey to write to all three channels.
template <class F>
void ForInnerGreys(cDib& picture, const ProgressFn& progress, F f) {
    const int w = picture.Width();
    ForInnerRows(picture, progress, [&](const uint8_t* up, const uint8_t* mid, const uint8_t* down,
                                        uint8_t* out, int, int) {
        thread_local std::vector<int32_t> buffer;
        buffer.resize(static_cast<size_t>(3 * w));
        int32_t* g[3] = {buffer.data(), buffer.data() + w, buffer.data() + 2 * w};
        GreyRow(up, w, g[0]);
        GreyRow(mid, w, g[1]);
        GreyRow(down, w, g[2]);
        for (int x = 1; x < w - 1; ++x) {
            const uint8_t v = static_cast<uint8_t>(std::clamp<int32_t>(f(g, x), 0, 255));
            out[4 * x] = out[4 * x + 1] = out[4 * x + 2] = v;
        }
    });
}

}  // namespace

bool cDIBFilter::Contour(cDib& picture) {
    if (!picture.hDIB()) return false;
    ForInnerGreys(picture, Progress, [](int32_t* const* g, int x) {
        const int32_t around = g[0][x - 1] + g[0][x] + g[0][x + 1] + g[1][x - 1] + g[1][x + 1] +
                               g[2][x - 1] + g[2][x] + g[2][x + 1];
        return 255 - std::abs(8 * g[1][x] - around);
    });
    return true;
}

bool cDIBFilter::EmbossGrey(cDib& picture, int level, int direction) {
    if (!picture.hDIB()) return false;
    const int32_t k = (100 + std::clamp(level, 0, 200)) * (direction > 0 ? -1 : 1);
    const Divider divide(100);
    ForInnerGreys(picture, Progress, [&](int32_t* const* g, int x) {
        const int32_t rise = g[1][x + 1] + g[2][x] + g[2][x + 1] - g[0][x - 1] - g[0][x] - g[1][x - 1];
        return 128 + divide.Signed(k * rise);
    });
    return true;
}

}  // namespace quorbel
