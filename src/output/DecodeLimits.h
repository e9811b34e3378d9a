#pragma once
// The caps every decoder checks from the header, before any pixel memory exists: at most
// 2^28 pixels, each side at most 65,535, and no buffer over 2 GiB. Fuzz builds lower the
// pixel cap so the fuzzer spends its time on odd files, not on legitimately large ones.
#include <cstdint>

#include "imaging/cDib.h"

namespace quorbel {

#ifdef QUORBEL_FUZZ_MAX_PIXELS
inline constexpr int64_t kDecodeMaxPixels = QUORBEL_FUZZ_MAX_PIXELS;
#else
inline constexpr int64_t kDecodeMaxPixels = kMaxPixels;
#endif
inline constexpr int64_t kDecodeMaxBytes = int64_t(1) << 31;

// True when a width × height picture of bytesPerPixel may be allocated. Takes 64-bit
// values so that header fields of any width can be passed unconverted.
constexpr bool PictureSizeAllowed(int64_t width, int64_t height, int64_t bytesPerPixel = 4) {
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide) return false;
    const int64_t pixels = width * height;  // both ≤ 65,535: cannot overflow 64 bits
    return pixels <= kDecodeMaxPixels && pixels * bytesPerPixel <= kDecodeMaxBytes;
}

}  // namespace quorbel
