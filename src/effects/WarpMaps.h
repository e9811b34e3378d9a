#pragma once
// The warp mappings as inline functions, so that the pixel loops that call them once per
// pixel get them inlined; Warp.cpp gives them their public names.
#include <cmath>
#include <cstdint>

#include "effects/Warp.h"

namespace quorbel::warp {

inline constexpr double kPi = 3.14159265;  // the constant the effects were tuned with


// sin and cos of one angle together, to double precision, in a few multiplications and
// without branches: the Twist needs both for every pixel and the library's separate calls
// cost most of its time. Whole rows of them vectorise.
inline void SinCos(double a, double& sine, double& cosine) {
    constexpr double kHalfPi = 1.5707963267948966;
    const double t = a * (1 / kHalfPi);
    const int32_t k = static_cast<int32_t>(t + (t < 0 ? -0.5 : 0.5));  // nearest quarter turn
    const double u = a - k * kHalfPi;                                  // |u| <= pi/4
    const double u2 = u * u;
    const double su = u * (1 + u2 * (-1.0 / 6 + u2 * (1.0 / 120 + u2 * (-1.0 / 5040 + u2 * (1.0 / 362880 +
                      u2 * (-1.0 / 39916800 + u2 * (1.0 / 6227020800.0)))))));
    const double cu = 1 + u2 * (-0.5 + u2 * (1.0 / 24 + u2 * (-1.0 / 720 + u2 * (1.0 / 40320 +
                      u2 * (-1.0 / 3628800 + u2 * (1.0 / 479001600 + u2 * (-1.0 / 87178291200.0)))))));
    // Quarter turns 1 and 3 swap sine and cosine; 2 and 3 negate the sine, 1 and 2 the cosine.
    const int q = k & 3;
    const double s = (q & 1) ? cu : su;
    const double c = (q & 1) ? su : cu;
    sine = (q & 2) ? -s : s;
    cosine = ((q + 1) & 2) ? -c : c;
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

// The Twist for n pixels of row y from column x0: away from the centre row, the same rule
// as Twist with nothing that depends on the pixel but the arithmetic, so it vectorises.
inline void TwistRow(const WarpState& s, int x0, int n, float y, SourcePoint* out) {
    const double dy = double(y) - s.cy;
    if (std::fabs(dy) <= 0.01) {
        for (int i = 0; i < n; ++i) out[i] = Twist(s, static_cast<float>(x0 + i), y);
        return;
    }
    for (int i = 0; i < n; ++i) {
        const double dx = double(x0 + i) - s.cx;
        const double r = std::sqrt(dx * dx + dy * dy);
        double sine, cosine;
        SinCos(1.570796325 - r / 50, sine, cosine);
        out[i].sx = static_cast<float>(dy * cosine - dx * sine + s.cx);
        out[i].sy = static_cast<float>(dx * cosine + dy * sine + s.cy);
    }
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
