#pragma once
// Hue, luminosity and saturation, as the colour filters use them. Hue is counted in sixths
// of a turn from red (0) through green (2) and blue (4); the forward conversion gives it in
// -1..5 and the inverse accepts any value (it wraps).
#include <cstdint>

namespace quorbel {

struct Hls {
    float h = 0, l = 0, s = 0;
};

float Max3(float a, float b, float c);
float Min3(float a, float b, float c);

// r, g, b in 0..255; l and s come back in 0..1.
Hls RgbToHls(int r, int g, int b);

struct Rgb8 {
    uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(const Rgb8&, const Rgb8&) = default;
};

// The inverse; channels rounded to bytes, halves to even.
Rgb8 HlsToRgb(const Hls& hls);

}  // namespace quorbel
