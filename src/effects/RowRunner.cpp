#include "effects/RowRunner.h"

#include <algorithm>
#include <cstring>

#include "core/ThreadPool.h"

namespace quorbel {

void RunRows(int first, int last, int width, const ProgressFn& progress,
             const std::function<void(int begin, int end)>& body) {
    if (progress) progress(0);
    const int rows = last - first;
    if (rows > 0) {
        // Enough slices for a smooth progress display, few enough that each one still
        // feeds every thread; bands of at least 64K pixels so small pictures stay serial.
        const int slices = std::clamp(rows / 64, 1, 20);
        const int grain = std::max(1, 65536 / std::max(1, width));
        for (int s = 0; s < slices; ++s) {
            const int b = first + static_cast<int>(int64_t(rows) * s / slices);
            const int e = first + static_cast<int>(int64_t(rows) * (s + 1) / slices);
            ParallelFor(e - b, grain, [&](int lo, int hi) { body(b + lo, b + hi); });
            if (progress && s + 1 < slices) progress(static_cast<int>(int64_t(100) * (s + 1) / slices));
        }
    }
    if (progress) progress(100);
}

PixelCopy::PixelCopy(const cDib& picture) {
    const PixelView& v = picture.View();
    if (v.Empty()) return;
    const size_t size = static_cast<size_t>(picture.Size());
    bytes_.resize(size);
    std::memcpy(bytes_.data(), picture.lpBits(), size);
    top_ = bytes_.data() + (v.top - picture.lpBits());
    stride_ = v.stride;
}

}  // namespace quorbel
