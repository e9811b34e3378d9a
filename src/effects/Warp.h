#pragma once
// The geometry effects as inverse mappings: for each destination pixel (x, y) a mapping
// gives the source position whose colour is taken. Positions are single precision; the
// arithmetic in between is double.
#include <array>
#include <cstdint>

namespace quorbel {

struct SourcePoint {
    float sx;
    float sy;
};

// The entries of the Warp window's transformation list, in list order.
inline constexpr std::array<const char*, 6> kWarpNames{"Fish Eye", "Twist", "Wave", "Small Top",
                                                        "Wiggles", "Double Wave"};

struct WarpState {
    int16_t transformation = 0;  // index into kWarpNames; others map every point to itself
    float radius = 0;            // R
    float cx = 0, cy = 0;
};

// The state for a picture of the given size: R is 0.75 × width, the centre half the size.
WarpState MakeWarpState(int16_t transformation, int width, int height);

// The angle of the vector (a, b) measured from the second axis: between -pi/2 and 3 pi/2.
double VectorAngle(double a, double b);

SourcePoint WarpMap(const WarpState& state, float x, float y);

struct FishState {
    float radius = 0;
    float cx = 0, cy = 0;
};

// The Fish window's choice: centred, with R half the diagonal so that the corners still
// find their sources inside the picture.
FishState MakeFishState(int width, int height);

SourcePoint FishMap(const FishState& state, float x, float y);

}  // namespace quorbel
