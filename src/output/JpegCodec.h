#pragma once
// JPEG through TurboJPEG: decoding straight into the picture buffers' memory (bottom-up
// rows described to the library, no copy to flip), DCT-domain shrinking for the batch, and
// encoding to bytes in memory. One library handle per thread and direction.
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/PixelView.h"

namespace quorbel {

class cDib;
class cDIBSection;

// Status numbers of the JPEG routines; the save error's description shows them.
inline constexpr int kJpegOk = 0;
inline constexpr int kJpegNoPicture = -1;      // empty buffer, zero size, bad layout
inline constexpr int kJpegEncodeFailed = -2;   // the library refused (quality outside 1..100 too)
inline constexpr int kJpegWriteFailed = -3;    // the file could not be written
inline constexpr int kJpegBadHeader = -4;      // not a JPEG, or truncated before the frame header
inline constexpr int kJpegTooLarge = -5;       // over the pixel or memory cap
inline constexpr int kJpegDecodeFailed = -6;   // corrupt or truncated data, too many scans

struct JpegInfo {
    int width = 0;
    int height = 0;
    bool cmyk = false;
};

// Reads the frame header only. kJpegOk, kJpegBadHeader or kJpegTooLarge (checked here,
// before anything is allocated).
int ReadJpegInfo(std::span<const uint8_t> bytes, JpegInfo& info);

// The DCT scale for shrink-on-load: the largest of 1, 2, 4, 8 by which the picture can be
// divided while both sides stay at least twice the target's (so the resampler still has
// a 2× step to smooth). A target of 0 × 0 asks for the full size.
int JpegScaleDenominator(int width, int height, int targetWidth, int targetHeight);

// Decodes into a 32-bit buffer at 1/denominator of the full size (denominator 1, 2, 4 or
// 8), rounding sizes up. Warnings stop the decode: a truncated file gives no picture.
int DecodeJpeg(std::span<const uint8_t> bytes, cDib& out, int denominator = 1);

// Decodes at full size into a 24-bit buffer with padded rows.
int DecodeJpeg(std::span<const uint8_t> bytes, cDIBSection& out);

// Encodes a view of either pixel layout, any stride sign, at the given quality with 4:2:0
// chroma subsampling. Returns kJpegOk or a negative status.
int EncodeJpeg(const PixelView& pixels, int quality, std::vector<uint8_t>& out);

}  // namespace quorbel
