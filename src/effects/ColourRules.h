#pragma once
// The three tone adjustments of the Brightness, Contrast and Color Balance windows: the
// per-pixel rules, their whole-picture forms (every pixel, borders included) and the
// ranges of their sliders.
#include <cstdint>

#include "imaging/Colour.h"
#include "imaging/cDib.h"

namespace quorbel {

struct AdjustRange {
    int minimum;
    int maximum;
    int initial;
};

inline constexpr AdjustRange kBrightnessRange{-255, 255, 0};
// A positive amount moves 128 down and 127 up by the same step, so 128 keeps the upper
// halves' unclamped side (v - a) and 127 the lower halves' (v + a) inside 0..255.
inline constexpr AdjustRange kContrastRange{-128, 128, 0};
// Percent of the way toward white (positive) or black (negative).
inline constexpr AdjustRange kColourBalanceRange{-100, 100, 0};

// Adds amount to each channel of a colour value, each clamped to 0..255.
ColorRef Brighten(ColorRef colour, int amount);

// One channel under the contrast rule, exactly: 128 and above become v - a with only the
// top clamped, below 128 v + a with only the bottom clamped. Outside kContrastRange the
// unclamped side can leave 0..255; the result is then returned as it is.
int32_t ContrastChannel(int32_t v, int32_t amount);

// One channel under the colour-balance rule with factor f (-1..1), rounded halves to even.
uint8_t BalanceChannel(int32_t c, float f);

// The factor of a colour-balance bar: value / 100 in single precision.
float BalanceFactor(int barValue);

// The whole-picture forms; amounts are clamped to their ranges first. False on an empty
// picture.
bool Brighten(cDib& picture, int amount, const ProgressFn& progress = {});
bool ContrastPicture(cDib& picture, int amount, const ProgressFn& progress = {});
bool ColourBalance(cDib& picture, int redBar, int greenBar, int blueBar, const ProgressFn& progress = {});

}  // namespace quorbel
