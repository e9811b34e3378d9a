#pragma once
// 3 × 3 neighbourhood filters on the 32-bit buffer. The border rule, stated once: only the
// inner area (x in 1..width-2, y in 1..height-2) is written; the outermost row and column
// on each side keep their values, and a picture narrower or lower than 3 is left alone.
// Every colour byte is filtered on its own; the fourth byte is never changed.
#include <array>
#include <cstdint>

#include "effects/RowRunner.h"
#include "imaging/cDib.h"

namespace quorbel {

// Division by a fixed divisor as a multiply and a shift: exact (truncating) for every
// numerator below 2^24, which is far above any sum of nine weighted bytes here.
class Divider {
public:
    explicit Divider(uint32_t divisor);
    uint32_t operator()(uint32_t n) const { return static_cast<uint32_t>((uint64_t(n) * multiplier_) >> shift_); }
    // Whole-number division truncating toward zero.
    int32_t Signed(int32_t n) const {
        return n >= 0 ? static_cast<int32_t>((*this)(static_cast<uint32_t>(n)))
                      : -static_cast<int32_t>((*this)(static_cast<uint32_t>(-n)));
    }

private:
    uint64_t multiplier_;
    unsigned shift_;
};

// out = clamp(bias ± (sum of weight × neighbour) / divisor) with the division truncating
// toward zero; with magnitude the sum's absolute value is divided, with negate the quotient
// is subtracted from the bias instead of added.
struct Kernel3x3 {
    std::array<int32_t, 9> weights{};  // rows top to bottom, left to right
    int32_t divisor = 1;               // 1..65535
    int32_t bias = 0;
    bool magnitude = false;
    bool negate = false;
};

// Applies the kernel to the inner area; raises progress.
void Convolve3x3(cDib& picture, const Kernel3x3& kernel, const ProgressFn& progress);

// The walk shared by the neighbourhood filters. rowFn(up, mid, down, out, first, end) writes
// the bytes [first, end) of the output row from the three source rows; the fourth byte of
// every pixel is put back afterwards, so rowFn may treat the row as plain bytes.
template <class RowFn>
void ForInnerRows(cDib& picture, const ProgressFn& progress, RowFn rowFn) {
    const int w = picture.Width(), h = picture.Height();
    if (w < 3 || h < 3) {
        if (progress) {
            progress(0);
            progress(100);
        }
        return;
    }
    const PixelCopy source(picture);
    RunRows(1, h - 1, w, progress, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const uint8_t* mid = source.Row(y);
            uint8_t* out = picture.Row(y);
            rowFn(source.Row(y - 1), mid, source.Row(y + 1), out, 4, 4 * (w - 1));
            for (int x = 1; x < w - 1; ++x) out[4 * x + 3] = mid[4 * x + 3];
        }
    });
}

}  // namespace quorbel
