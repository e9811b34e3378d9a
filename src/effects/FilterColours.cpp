// The filters that pick pixels by colour: the two Replace filters and Shift.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "effects/ColourSpace.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {

// Mixes a new colour into a pixel by extent / 255, rounding to nearest.
inline void Mix(uint8_t* p, const Rgb8& c, int32_t extent) {
    const int32_t keep = 255 - extent;
    p[0] = static_cast<uint8_t>((p[0] * keep + c.b * extent + 127) / 255);
    p[1] = static_cast<uint8_t>((p[1] * keep + c.g * extent + 127) / 255);
    p[2] = static_cast<uint8_t>((p[2] * keep + c.r * extent + 127) / 255);
}

// Distance of two hues around the circle, in sixths (0..3).
inline float HueDistance(float a, float b) {
    float d = std::fmod(std::fabs(a - b), 6.0f);
    return std::min(d, 6.0f - d);
}

}  // namespace

bool cDIBFilter::ReplaceHS(cDib& picture, ColorRef from, ColorRef to, int extent, int hTolerance,
                           int sTolerance) {
    if (!picture.hDIB()) return false;
    const int32_t e = std::clamp(extent, 0, 255);
    // 100 % hue tolerance reaches half way round, so every hue matches.
    const float hTol = static_cast<float>(std::clamp(hTolerance, 0, 100) * 3 / 100.0);
    const float sTol = static_cast<float>(std::clamp(sTolerance, 0, 100) / 100.0);
    const Hls a = RgbToHls(RedOf(from), GreenOf(from), BlueOf(from));
    const Hls b = RgbToHls(RedOf(to), GreenOf(to), BlueOf(to));
    ForEachPixel(picture, Progress, [&](uint8_t* p) {
        const Hls c = RgbToHls(p[2], p[1], p[0]);
        if (HueDistance(c.h, a.h) > hTol || std::fabs(c.s - a.s) > sTol) return;
        Mix(p, HlsToRgb({b.h, std::clamp(c.l + b.l - a.l, 0.0f, 1.0f), b.s}), e);
    });
    return true;
}

bool cDIBFilter::ReplaceL(cDib& picture, ColorRef from, ColorRef to, int extent, int lTolerance) {
    if (!picture.hDIB()) return false;
    const int32_t e = std::clamp(extent, 0, 255);
    const float lTol = static_cast<float>(std::clamp(lTolerance, 0, 100) / 100.0);
    const float l = RgbToHls(RedOf(from), GreenOf(from), BlueOf(from)).l;
    const Rgb8 target{RedOf(to), GreenOf(to), BlueOf(to)};
    ForEachPixel(picture, Progress, [&](uint8_t* p) {
        if (std::fabs(RgbToHls(p[2], p[1], p[0]).l - l) <= lTol) Mix(p, target, e);
    });
    return true;
}

bool cDIBFilter::Shift(cDib& picture, ColorRef colour, int amount, int extent) {
    if (!picture.hDIB()) return false;
    const int32_t a = std::clamp(amount, -255, 255);
    const int32_t e = std::clamp(extent, 0, 255);
    const int32_t b0 = BlueOf(colour), g0 = GreenOf(colour), r0 = RedOf(colour);
    ForEachPixel(picture, Progress, [&](uint8_t* p) {
        if (std::abs(p[0] - b0) > e || std::abs(p[1] - g0) > e || std::abs(p[2] - r0) > e) return;
        for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(std::clamp(p[c] + a, 0, 255));
    });
    return true;
}

}  // namespace quorbel
