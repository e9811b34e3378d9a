#include "effects/Kernel3x3.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <vector>

namespace quorbel {

// Shift 24 + ceil(log2 d) and the rounded-up reciprocal make (n × m) >> shift equal n / d
// for all n < 2^24: the error of the reciprocal stays below 1 / d of a unit.
Divider::Divider(uint32_t divisor) {
    const uint32_t d = std::max<uint32_t>(divisor, 1);
    const unsigned log2Ceil = static_cast<unsigned>(std::bit_width(d - 1));
    shift_ = 24 + log2Ceil;
    multiplier_ = ((uint64_t(1) << shift_) + d - 1) / d;
}

void Convolve3x3(cDib& picture, const Kernel3x3& kernel, const ProgressFn& progress) {
    struct Tap {
        int row;     // 0 above, 1 same, 2 below
        int offset;  // bytes from the centre
        int32_t weight;
    };
    std::vector<Tap> taps;  // zero weights skipped once here, not per pixel
    for (int i = 0; i < 9; ++i)
        if (kernel.weights[i] != 0) taps.push_back({i / 3, (i % 3 - 1) * 4, kernel.weights[i]});
    const Divider divide(static_cast<uint32_t>(std::clamp(kernel.divisor, 1, 65535)));
    const int32_t bias = kernel.bias;
    const bool magnitude = kernel.magnitude;
    const int32_t sign = kernel.negate ? -1 : 1;

    ForInnerRows(picture, progress, [&](const uint8_t* up, const uint8_t* mid, const uint8_t* down,
                                        uint8_t* out, int first, int end) {
        thread_local std::vector<int32_t> acc;
        acc.assign(static_cast<size_t>(end), 0);
        int32_t* a = acc.data();
        const uint8_t* rows[3] = {up, mid, down};
        for (const Tap& t : taps) {
            const uint8_t* src = rows[t.row] + t.offset;
            const int32_t w = t.weight;
            for (int i = first; i < end; ++i) a[i] += w * src[i];
        }
        for (int i = first; i < end; ++i) {
            int32_t s = a[i];
            if (magnitude) s = std::abs(s);
            const int32_t v = bias + sign * divide.Signed(s);
            out[i] = static_cast<uint8_t>(std::clamp(v, 0, 255));
        }
    });
}

}  // namespace quorbel
