#pragma once
// How every filter walks its rows: slices taken in turn on the calling thread (progress is
// raised between slices, always from the caller), each slice cut into bands for the
// program's thread pool. A band computes exactly what a single thread would, so results do
// not depend on the number of threads.
#include <cstdint>
#include <functional>
#include <vector>

#include "imaging/cDib.h"

namespace quorbel {

// Calls body(begin, end) over the rows [first, last), raising progress 0..100.
void RunRows(int first, int last, int width, const ProgressFn& progress,
             const std::function<void(int begin, int end)>& body);

// Calls f(pixel) for every pixel, borders included; f sees blue, green, red at p[0..2].
template <class F>
void ForEachPixel(cDib& picture, const ProgressFn& progress, F f) {
    const int w = picture.Width();
    RunRows(0, picture.Height(), w, progress, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            uint8_t* p = picture.Row(y);
            for (int x = 0; x < w; ++x, p += 4) f(p);
        }
    });
}

// A copy of a picture's pixels with the same top-down addressing, for filters whose output
// depends on unchanged neighbours. The one extra picture a filter may allocate.
class PixelCopy {
public:
    explicit PixelCopy(const cDib& picture);
    const uint8_t* Row(int y) const { return top_ + static_cast<ptrdiff_t>(y) * stride_; }
    const uint8_t* At(int x, int y) const { return Row(y) + static_cast<ptrdiff_t>(x) * 4; }

private:
    std::vector<uint8_t> bytes_;
    const uint8_t* top_ = nullptr;
    ptrdiff_t stride_ = 0;
};

}  // namespace quorbel
