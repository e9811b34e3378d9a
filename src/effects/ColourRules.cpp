#include "effects/ColourRules.h"

#include <algorithm>
#include <array>

#include "core/Rounding.h"
#include "effects/RowRunner.h"

namespace quorbel {
namespace {

using Table = std::array<uint8_t, 256>;

bool ApplyTables(cDib& picture, const Table& red, const Table& green, const Table& blue,
                 const ProgressFn& progress) {
    if (!picture.hDIB()) return false;
    ForEachPixel(picture, progress, [&](uint8_t* p) {
        p[0] = blue[p[0]];
        p[1] = green[p[1]];
        p[2] = red[p[2]];
    });
    return true;
}

}  // namespace

ColorRef Brighten(ColorRef colour, int amount) {
    const int32_t red = static_cast<int32_t>(colour % 256);
    const int32_t green = static_cast<int32_t>((colour / 256) % 256);
    const int32_t blue = static_cast<int32_t>(colour / 65536);
    auto add = [amount](int32_t v) { return static_cast<uint8_t>(std::clamp(v + amount, 0, 255)); };
    return RGBColor(add(red), add(green), add(blue));
}

int32_t ContrastChannel(int32_t v, int32_t amount) {
    if (v >= 128) return std::min(v - amount, 255);
    return std::max(v + amount, 0);
}

uint8_t BalanceChannel(int32_t c, float f) {
    const double v = f >= 0 ? (255.0 - c) * f + c : (f + 1.0) * c;
    return RoundToByte(v);
}

float BalanceFactor(int barValue) { return static_cast<float>(barValue / 100.0); }

bool Brighten(cDib& picture, int amount, const ProgressFn& progress) {
    Table t;
    const int a = std::clamp(amount, kBrightnessRange.minimum, kBrightnessRange.maximum);
    for (int i = 0; i < 256; ++i) t[i] = static_cast<uint8_t>(std::clamp(i + a, 0, 255));
    return ApplyTables(picture, t, t, t, progress);
}

bool ContrastPicture(cDib& picture, int amount, const ProgressFn& progress) {
    Table t;
    const int a = std::clamp(amount, kContrastRange.minimum, kContrastRange.maximum);
    for (int i = 0; i < 256; ++i) t[i] = static_cast<uint8_t>(ContrastChannel(i, a));
    return ApplyTables(picture, t, t, t, progress);
}

bool ColourBalance(cDib& picture, int redBar, int greenBar, int blueBar, const ProgressFn& progress) {
    auto table = [](int bar) {
        const float f = BalanceFactor(std::clamp(bar, kColourBalanceRange.minimum, kColourBalanceRange.maximum));
        Table t;
        for (int i = 0; i < 256; ++i) t[i] = BalanceChannel(i, f);
        return t;
    };
    return ApplyTables(picture, table(redBar), table(greenBar), table(blueBar), progress);
}

}  // namespace quorbel
