#include "effects/ColourSpace.h"

#include <algorithm>
#include <cmath>

#include "core/Rounding.h"

namespace quorbel {

float Max3(float a, float b, float c) { return std::max(a, std::max(b, c)); }
float Min3(float a, float b, float c) { return std::min(a, std::min(b, c)); }

Hls RgbToHls(int r, int g, int b) {
    const float rf = static_cast<float>(r / 255.0);
    const float gf = static_cast<float>(g / 255.0);
    const float bf = static_cast<float>(b / 255.0);
    const float mx = Max3(rf, gf, bf);
    const float mn = Min3(rf, gf, bf);
    Hls out;
    out.l = (mx + mn) / 2;
    if (mx == mn) return out;  // a grey: no hue, no saturation
    const float d = mx - mn;
    out.s = out.l > 0.5f ? d / (2 - mx - mn) : d / (mx + mn);
    if (rf == mx)
        out.h = (gf - bf) / d;
    else if (gf == mx)
        out.h = 2 + (bf - rf) / d;
    else
        out.h = 4 + (rf - gf) / d;
    return out;
}

namespace {

// One channel of the inverse: m1 and m2 are the lowest and highest channel values, h the
// channel's hue position in sixths.
double Channel(double m1, double m2, double h) {
    h = std::fmod(h, 6.0);
    if (h < 0) h += 6.0;
    if (h < 1) return m1 + (m2 - m1) * h;
    if (h < 3) return m2;
    if (h < 4) return m1 + (m2 - m1) * (4 - h);
    return m1;
}

}  // namespace

Rgb8 HlsToRgb(const Hls& hls) {
    const double l = std::clamp<double>(hls.l, 0.0, 1.0);
    const double s = std::clamp<double>(hls.s, 0.0, 1.0);
    if (s == 0) {
        const uint8_t v = RoundToByte(l * 255.0);
        return {v, v, v};
    }
    const double m2 = l <= 0.5 ? l * (1 + s) : l + s - l * s;
    const double m1 = 2 * l - m2;
    return {RoundToByte(Channel(m1, m2, hls.h + 2) * 255.0), RoundToByte(Channel(m1, m2, hls.h) * 255.0),
            RoundToByte(Channel(m1, m2, hls.h - 2) * 255.0)};
}

}  // namespace quorbel
