#pragma once
// The program's own seeded generator for effects that need noise. Numbers in [0, 1),
// like the classic "Rnd"; the same seed always gives the same sequence.
#include <chrono>
#include <cstdint>

namespace quorbel {

class Random {
public:
    explicit Random(uint64_t seed) : state_(seed ? seed : 0x9E3779B97F4A7C15ull) {}

    // Seeded from the clock, for effects where a repeatable sequence is not wanted.
    static Random FromClock() {
        return Random(static_cast<uint64_t>(
            std::chrono::steady_clock::now().time_since_epoch().count()));
    }

    // splitmix64: tiny, fast and statistically sound for picture noise.
    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // A number in [0, 1) with 24 random bits, as a single-precision generator gives.
    float Rnd() { return static_cast<float>(Next() >> 40) * (1.0f / 16777216.0f); }

private:
    uint64_t state_;
};

}  // namespace quorbel
