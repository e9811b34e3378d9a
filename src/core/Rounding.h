#pragma once
// Conversions from floating point to whole numbers round to nearest, halves to even
// (2.5 -> 2, 3.5 -> 4), and overflow instead of wrapping.
#include <cfenv>
#include <cmath>
#include <cstdint>

#include "core/RuntimeError.h"

namespace quorbel {

// std::nearbyint honours the current rounding mode, which is to-nearest-even unless someone
// changed it; rint-style rounding is what the arithmetic of the whole program assumes.
inline double RoundHalfEven(double v) { return std::nearbyint(v); }

inline int32_t RoundToInt32(double v, const char* source = "Quorbel") {
    const double r = std::nearbyint(v);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) RaiseOverflow(source);
    return static_cast<int32_t>(r);
}

inline int16_t RoundToInt16(double v, const char* source = "Quorbel") {
    const double r = std::nearbyint(v);
    if (!(r >= -32768.0 && r <= 32767.0)) RaiseOverflow(source);
    return static_cast<int16_t>(r);
}

// Rounds and clamps to a byte: the last step of most pixel rules.
inline uint8_t RoundToByte(double v) {
    if (!(v > 0.0)) return 0;  // also catches NaN
    if (v >= 255.0) return 255;
    return static_cast<uint8_t>(std::nearbyint(v));
}

}  // namespace quorbel
