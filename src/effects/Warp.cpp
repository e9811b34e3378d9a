#include "effects/Warp.h"

#include <cmath>

#include "effects/WarpMaps.h"

namespace quorbel {
using warp::kPi;

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
    switch (s.transformation) {
        case 0: return warp::FishEye(s, x, y);
        case 1: return warp::Twist(s, x, y);
        case 2: return warp::Wave(s, x, y);
        case 3: return warp::SmallTop(s, x, y);
        case 4: return warp::Wiggles(s, x, y);
        case 5: return warp::DoubleWave(s, x, y);
        default: return {x, y};
    }
}

FishState MakeFishState(int width, int height) {
    FishState s;
    s.cx = static_cast<float>(width / 2.0);
    s.cy = static_cast<float>(height / 2.0);
    s.radius = static_cast<float>(std::sqrt(double(s.cx) * s.cx + double(s.cy) * s.cy));
    return s;
}

SourcePoint FishMap(const FishState& s, float x, float y) { return warp::Fish(s, x, y); }

}  // namespace quorbel
