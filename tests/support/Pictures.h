#pragma once
// Pictures made in code, and one way to read and compare their pixels, for every test.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

#include "core/Random.h"
#include "imaging/cDib.h"

namespace quorbel::test {

// One pixel as the buffer holds it: blue, green, red, then a fourth byte.
struct Px {
    uint8_t b = 0, g = 0, r = 0, x = 0;
    friend bool operator==(const Px&, const Px&) = default;
};

inline Px Grey(uint8_t v) { return {v, v, v, 0}; }
inline Px Rgb(uint8_t r, uint8_t g, uint8_t b) { return {b, g, r, 0}; }

// Pixel (x, y), row 0 at the top.
inline Px At(const cDib& d, int x, int y) {
    Px p;
    std::memcpy(&p, d.Row(y) + 4 * x, 4);
    return p;
}
inline void Put(cDib& d, int x, int y, Px p) { std::memcpy(d.Row(y) + 4 * x, &p, 4); }

inline cDib Make(int w, int h, const std::function<Px(int x, int y)>& f) {
    cDib d;
    d.Create(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) Put(d, x, y, f(x, y));
    return d;
}

inline cDib Flat(int w, int h, Px p) {
    return Make(w, h, [p](int, int) { return p; });
}

// Every pixel different: blue = x, green = y, red = x + y (each mod 256).
inline cDib Numbered(int w, int h) {
    return Make(w, h, [](int x, int y) { return Px{uint8_t(x), uint8_t(y), uint8_t(x + y), 0}; });
}

// A smooth colour ramp with a hard edge down the middle: something JPEG keeps close, and a
// wrong row order, channel order or offset breaks visibly.
inline cDib Gradient(int w, int h) {
    return Make(w, h, [w, h](int x, int y) {
        return Px{uint8_t(x * 255 / std::max(w - 1, 1)), uint8_t(y * 255 / std::max(h - 1, 1)),
                  uint8_t(x < w / 2 ? 40 : 220), 0};
    });
}

// Slowly varying colours, as photos are: what JPEG keeps close at any size.
inline cDib Smooth(int w, int h) {
    return Make(w, h, [](int x, int y) {
        return Px{uint8_t(std::min(x * 3, 255)), uint8_t(std::min(y * 8, 255)), uint8_t(100 + (x + y) % 50), 0};
    });
}

// Grain on a ramp: a JPEG of it shrinks steadily with quality and size, as a photo's does.
inline cDib Grainy(int w, int h, uint64_t seed = 7) {
    Random rnd(seed);
    return Make(w, h, [&](int x, int y) {
        const int grain = static_cast<int>(rnd.Rnd() * 96) - 48;
        return Px{uint8_t(std::clamp(x * 255 / w + grain, 0, 255)), uint8_t(std::clamp(y * 255 / h + grain, 0, 255)),
                  uint8_t(std::clamp(128 + grain, 0, 255)), 0};
    });
}

// Every byte random (the fourth too, so that a filter is seen to leave it alone).
inline cDib Noisy(int w, int h, uint64_t seed = 7) {
    Random rnd(seed);
    return Make(w, h, [&](int, int) {
        const uint64_t v = rnd.Next();
        return Px{uint8_t(v), uint8_t(v >> 8), uint8_t(v >> 16), uint8_t(v >> 24)};
    });
}

inline cDib Copy(const cDib& d) {
    return Make(d.Width(), d.Height(), [&d](int x, int y) { return At(d, x, y); });
}

inline std::pair<int, int> SizeOf(const cDib& d) { return {d.Width(), d.Height()}; }

// Every byte equal, the fourth included.
inline bool Same(const cDib& a, const cDib& b) {
    if (SizeOf(a) != SizeOf(b)) return false;
    return std::memcmp(a.lpBits(), b.lpBits(), static_cast<size_t>(a.Size())) == 0;
}

// The largest difference of any colour byte; 256 when the sizes differ.
inline int MaxDiff(const cDib& a, const cDib& b) {
    if (SizeOf(a) != SizeOf(b)) return 256;
    int m = 0;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            for (int c = 0; c < 3; ++c) m = std::max(m, std::abs(a.Row(y)[x * 4 + c] - b.Row(y)[x * 4 + c]));
    return m;
}

// The mean difference of the colour bytes of two pictures of one size.
inline double MeanDiff(const cDib& a, const cDib& b) {
    double s = 0;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            for (int c = 0; c < 3; ++c) s += std::abs(a.Row(y)[x * 4 + c] - b.Row(y)[x * 4 + c]);
    return s / (3.0 * a.Width() * a.Height());
}

}  // namespace quorbel::test
