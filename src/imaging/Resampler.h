#pragma once
// The program's own separable resampler for 32-bit pixels.
#include "imaging/PixelView.h"

namespace quorbel {

enum class ResampleFilter {
    Nearest,  // the pixel whose centre is nearest: fast, blocky
    Bicubic,  // cubic convolution; widened by the reduction factor when shrinking (no aliasing)
};

// Redraws the whole of src onto the whole of dst (both Bgrx32, any sizes, any strides).
// Pixel centres sit at half-pixel positions; weights are normalised and results rounded
// and clamped to 0..255. Runs on all threads; the result never depends on their number.
void Resample(const PixelView& src, const PixelView& dst, ResampleFilter filter);

}  // namespace quorbel
