#pragma once
// Small pictures made in code for the effects tests.
#include <cstdint>
#include <cstring>
#include <functional>

#include "core/Random.h"
#include "imaging/cDib.h"

namespace quorbel::test {

struct Px {
    uint8_t b = 0, g = 0, r = 0, x = 0;
    friend bool operator==(const Px&, const Px&) = default;
};

inline Px Grey(uint8_t v) { return {v, v, v, 0}; }
inline Px Rgb(uint8_t r, uint8_t g, uint8_t b) { return {b, g, r, 0}; }

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

// Every byte random (the fourth too, so that filters are seen to leave it alone).
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

inline bool Same(const cDib& a, const cDib& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height()) return false;
    return std::memcmp(a.lpBits(), b.lpBits(), static_cast<size_t>(a.Size())) == 0;
}

}  // namespace quorbel::test
