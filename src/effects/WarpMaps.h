#pragma once
// The warp mappings as inline functions, so that the pixel loops that call them once per
// pixel get them inlined; Warp.cpp gives them their public names.
#include <cmath>
#include <cstdint>

#include "effects/Warp.h"

namespace quorbel::warp {

inline constexpr double kPi = 3.14159265;  // the constant the effects were tuned with

// The nearest whole number, halves away from zero; inline, unlike the library's rounding.
inline double RoundToWhole(double v) { return static_cast<double>(static_cast<int64_t>(v + (v < 0 ? -0.5 : 0.5))); }

// sin and cos of one angle together, to double precision, in a few multiplications: the
// Twist needs both for every pixel and the library's separate calls cost most of its time.
inline void SinCos(double a, double& sine, double& cosine) {
    constexpr double kHalfPi = 1.5707963267948966;
    const double k = RoundToWhole(a * (1 / kHalfPi));
    const double u = a - k * kHalfPi;  // |u| <= pi/4
    const double u2 = u * u;
    const double su = u * (1 + u2 * (-1.0 / 6 + u2 * (1.0 / 120 + u2 * (-1.0 / 5040 + u2 * (1.0 / 362880 +
                      u2 * (-1.0 / 39916800 + u2 * (1.0 / 6227020800.0)))))));
    const double cu = 1 + u2 * (-0.5 + u2 * (1.0 / 24 + u2 * (-1.0 / 720 + u2 * (1.0 / 40320 +
                      u2 * (-1.0 / 3628800 + u2 * (1.0 / 479001600 + u2 * (-1.0 / 87178291200.0)))))));
    switch (static_cast<int64_t>(k) & 3) {
        case 0: sine = su, cosine = cu; break;
        case 1: sine = cu, cosine = -su; break;
        case 2: sine = -su, cosine = -cu; break;
        default: sine = -cu, cosine = su; break;
    }
}


inline SourcePoint FishEye(const WarpState& s, float x, float y) {
    const double dx = double(x) - s.cx;
    const double dy = double(y) - s.cy;
    const double r = std::sqrt(dx * dx + dy * dy);
    if (r == 0) return {s.cx, s.cy};
    const double rest = 1 - r / s.radius;
    // At r = R the division has no answer; the point keeps its own place.
    if (rest == 0 || !std::isfinite(rest)) return {x, y};
    const float k = static_cast<float>((1 / rest - 1) * s.radius / 2);
    return {static_cast<float>(dx * k / r + s.cx), static_cast<float>(dy * k / r + s.cy)};
}

// Measured from the vertical and a quarter turn on, so mirrored.
inline SourcePoint Twist(const WarpState& s, float x, float y) {
    const double dx = double(x) - s.cx;
    const double dy = double(y) - s.cy;
    const double r = std::sqrt(dx * dx + dy * dy);
    if (r == 0) return {s.cx, s.cy};
    const double turn = 1.570796325 - r / 50;
    if (std::fabs(dy) <= 0.01 && dy != 0) {
        const double a2 = VectorAngle(dx, dy) + turn;
        return {static_cast<float>(r * std::cos(a2) + s.cx), static_cast<float>(r * std::sin(a2) + s.cy)};
    }
    // Elsewhere the angle points along (dy, dx) / r, so turning needs no angle of its own.
    double sine, cosine;
    SinCos(turn, sine, cosine);
    return {static_cast<float>(dy * cosine - dx * sine + s.cx), static_cast<float>(dx * cosine + dy * sine + s.cy)};
}

inline SourcePoint Wave(const WarpState&, float x, float y) {
    return {x, static_cast<float>(y - (std::sin(x / 50.0 * kPi) + 1) * 10 + 5)};
}

inline SourcePoint SmallTop(const WarpState& s, float x, float y) {
    const float p = static_cast<float>((double(s.cx) - x) * s.cy);
    return {static_cast<float>(s.cx - 2.0 * p / (double(y) + 1)), y};
}

inline SourcePoint Wiggles(const WarpState& s, float x, float y) {
    return {static_cast<float>(s.cx - (std::sin(y / 50.0 * kPi) / 2 + 1.5) * (double(s.cx) - x)), y};
}

inline SourcePoint DoubleWave(const WarpState&, float x, float y) {
    return {static_cast<float>(x - (std::sin(y / 50.0 * kPi) + 1) * 10 + 5),
            static_cast<float>(y - (std::sin(x / 50.0 * kPi) + 1) * 10 + 5)};
}

inline SourcePoint Fish(const FishState& s, float x, float y) {
    const double dx = double(x) - s.cx;
    const double dy = double(y) - s.cy;
    const double r = std::sqrt(dx * dx + dy * dy);
    if (r < 1 || !(s.radius > 0)) return {x, y};
    const double ux = dx / r, uy = dy / r;
    const double t = r / s.radius;
    const float t2 = static_cast<float>(t * t);
    return {static_cast<float>(ux * s.radius * t2 + s.cx), static_cast<float>(uy * s.radius * t2 + s.cy)};
}

}  // namespace quorbel::warp
