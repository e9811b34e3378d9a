#include "effects/Warp.h"

#include <cmath>

namespace quorbel {
namespace {

constexpr double kPi = 3.14159265;  // the constant the effects were tuned with

}  // namespace

WarpState MakeWarpState(int16_t transformation, int width, int height) {
    WarpState s;
    s.transformation = transformation;
    s.radius = static_cast<float>(0.75 * width);
    s.cx = static_cast<float>(width / 2.0);
    s.cy = static_cast<float>(height / 2.0);
    return s;
}

double VectorAngle(double a, double b) {
    if (std::fabs(b) > 0.01) {
        const double t = std::atan(a / b);
        return b < 0 ? t + kPi : t;
    }
    return a >= 0 ? kPi / 2 : -kPi / 2;
}

SourcePoint WarpMap(const WarpState& s, float x, float y) {
    const double dx = double(x) - s.cx;
    const double dy = double(y) - s.cy;
    const double r = std::sqrt(dx * dx + dy * dy);
    switch (s.transformation) {
        case 0: {  // "Fish Eye"
            if (r == 0) return {s.cx, s.cy};
            const double rest = 1 - r / s.radius;
            // At r = R the division has no answer; the point keeps its own place.
            if (rest == 0 || !std::isfinite(rest)) return {x, y};
            const float k = static_cast<float>((1 / rest - 1) * s.radius / 2);
            return {static_cast<float>(dx * k / r + s.cx), static_cast<float>(dy * k / r + s.cy)};
        }
        case 1: {  // "Twist": measured from the vertical and a quarter turn on, so mirrored
            if (r == 0) return {s.cx, s.cy};
            const double a2 = VectorAngle(dx, dy) - r / 50 + 1.570796325;
            return {static_cast<float>(r * std::cos(a2) + s.cx), static_cast<float>(r * std::sin(a2) + s.cy)};
        }
        case 2:  // "Wave"
            return {x, static_cast<float>(y - (std::sin(x / 50.0 * kPi) + 1) * 10 + 5)};
        case 3: {  // "Small Top"
            const float p = static_cast<float>((double(s.cx) - x) * s.cy);
            return {static_cast<float>(s.cx - 2.0 * p / (double(y) + 1)), y};
        }
        case 4:  // "Wiggles"
            return {static_cast<float>(s.cx - (std::sin(y / 50.0 * kPi) / 2 + 1.5) * (double(s.cx) - x)), y};
        case 5:  // "Double Wave"
            return {static_cast<float>(x - (std::sin(y / 50.0 * kPi) + 1) * 10 + 5),
                    static_cast<float>(y - (std::sin(x / 50.0 * kPi) + 1) * 10 + 5)};
        default:
            return {x, y};
    }
}

FishState MakeFishState(int width, int height) {
    FishState s;
    s.cx = static_cast<float>(width / 2.0);
    s.cy = static_cast<float>(height / 2.0);
    s.radius = static_cast<float>(std::sqrt(double(s.cx) * s.cx + double(s.cy) * s.cy));
    return s;
}

SourcePoint FishMap(const FishState& s, float x, float y) {
    const double dx = double(x) - s.cx;
    const double dy = double(y) - s.cy;
    const double r = std::sqrt(dx * dx + dy * dy);
    if (r < 1 || !(s.radius > 0)) return {x, y};
    const double ux = dx / r, uy = dy / r;
    const double t = r / s.radius;
    const float t2 = static_cast<float>(t * t);
    return {static_cast<float>(ux * s.radius * t2 + s.cx), static_cast<float>(uy * s.radius * t2 + s.cy)};
}

}  // namespace quorbel
