// The point filters: each pixel's new colour depends on that pixel alone, borders included.
#include <algorithm>
#include <array>

#include "core/Rounding.h"
#include "effects/ColourSpace.h"
#include "effects/PixelGrey.h"
#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {

std::array<uint8_t, 256> OffsetTable(int level) {
    std::array<uint8_t, 256> t{};
    for (int i = 0; i < 256; ++i) t[i] = static_cast<uint8_t>(std::clamp(i + level, 0, 255));
    return t;
}

}  // namespace

bool cDIBFilter::ApplyTables(cDib& picture, const ChannelTables& t) {
    if (!picture.hDIB()) return false;
    ForEachPixel(picture, Progress, [&t](uint8_t* p) {
        p[0] = t.blue[p[0]];
        p[1] = t.green[p[1]];
        p[2] = t.red[p[2]];
    });
    return true;
}

bool cDIBFilter::RGBLevels(cDib& picture, int red, int green, int blue) {
    ChannelTables t;
    t.red = OffsetTable(std::clamp(red, -255, 255));
    t.green = OffsetTable(std::clamp(green, -255, 255));
    t.blue = OffsetTable(std::clamp(blue, -255, 255));
    return ApplyTables(picture, t);
}

bool cDIBFilter::Greys(cDib& picture) {
    if (!picture.hDIB()) return false;
    ForEachPixel(picture, Progress, [](uint8_t* p) {
        const double grey = 0.587 * p[1] + 0.114 * p[0] + 0.299 * p[2];
        p[0] = p[1] = p[2] = RoundToByte(grey);
    });
    return true;
}

bool cDIBFilter::Negative(cDib& picture) {
    if (!picture.hDIB()) return false;
    ForEachPixel(picture, Progress, [](uint8_t* p) {
        p[0] = static_cast<uint8_t>(~p[0]);
        p[1] = static_cast<uint8_t>(~p[1]);
        p[2] = static_cast<uint8_t>(~p[2]);
    });
    return true;
}

bool cDIBFilter::Contrast(cDib& picture, int level) {
    const int32_t k = 100 + std::clamp(level, -100, 250);
    ChannelTables t;
    for (int i = 0; i < 256; ++i) t.red[i] = static_cast<uint8_t>(std::clamp(128 + (i - 128) * k / 100, 0, 255));
    t.green = t.blue = t.red;
    return ApplyTables(picture, t);
}

bool cDIBFilter::Saturation(cDib& picture, int level) {
    if (!picture.hDIB()) return false;
    const int32_t k = 100 + std::clamp(level, -100, 250);
    ForEachPixel(picture, Progress, [k](uint8_t* p) {
        const int32_t grey = IntegerGrey(p);
        for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(std::clamp(grey + (p[c] - grey) * k / 100, 0, 255));
    });
    return true;
}

bool cDIBFilter::Sepia(cDib& picture, float redFactor, float greenFactor, float strength) {
    if (!picture.hDIB()) return false;
    // The tone of each grey: the lift is greatest in the mid-tones (a quarter of 255 at
    // factor 1) and nothing at black and white, so the ends stay neutral.
    std::array<uint8_t, 256> red{}, green{};
    for (int v = 0; v < 256; ++v) {
        const double lift = v * (255.0 - v) / 255.0;
        red[v] = RoundToByte(v + std::clamp(redFactor, 0.0f, 4.0f) * lift);
        green[v] = RoundToByte(v + std::clamp(greenFactor, 0.0f, 4.0f) * lift);
    }
    const int32_t mix = RoundToInt32(std::clamp(strength, 0.0f, 1.0f) * 256.0);  // 8 fraction bits
    ForEachPixel(picture, Progress, [&](uint8_t* p) {
        const int32_t grey = IntegerGrey(p);
        const int32_t tone[3] = {grey, green[grey], red[grey]};
        for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>((p[c] * (256 - mix) + tone[c] * mix + 128) >> 8);
    });
    return true;
}

bool cDIBFilter::Scanlines(cDib& picture, int blackPoint, int whitePoint) {
    if (!picture.hDIB()) return false;
    const int32_t black = std::clamp(blackPoint, 0, 100), white = std::clamp(whitePoint, 0, 100);
    std::array<uint8_t, 256> darker{}, lighter{};
    for (int i = 0; i < 256; ++i) {
        darker[i] = static_cast<uint8_t>(i - i * black / 100);
        lighter[i] = static_cast<uint8_t>(i + (255 - i) * white / 100);
    }
    const int w = picture.Width();
    RunRows(0, picture.Height(), w, Progress, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const auto& table = (y & 1) ? darker : lighter;
            uint8_t* p = picture.Row(y);
            for (int x = 0; x < w; ++x, p += 4) {
                p[0] = table[p[0]];
                p[1] = table[p[1]];
                p[2] = table[p[2]];
            }
        }
    });
    return true;
}

bool cDIBFilter::Colorize(cDib& picture, int hue, int saturation, int luminosity) {
    if (!picture.hDIB()) return false;
    // The luminosity of a pixel is (max + min) / 2, so one table over max + min (0..510)
    // holds every colour the filter can give.
    std::array<Rgb8, 511> tint{};
    const float h = static_cast<float>(std::clamp(hue, 0, 100) * 6 / 100.0);
    const float s = static_cast<float>(std::clamp(saturation, 0, 100) / 100.0);
    const double lum = std::clamp(luminosity, 0, 100) / 100.0;
    for (int sum = 0; sum <= 510; ++sum) tint[sum] = HlsToRgb({h, static_cast<float>(sum / 510.0 * lum), s});
    ForEachPixel(picture, Progress, [&tint](uint8_t* p) {
        const int sum = std::max({p[0], p[1], p[2]}) + std::min({p[0], p[1], p[2]});
        const Rgb8 c = tint[sum];
        p[0] = c.b;
        p[1] = c.g;
        p[2] = c.r;
    });
    return true;
}

}  // namespace quorbel
