#pragma once
// A picture as a decoder hands it over: the pixels, what kind of picture it was, the bits
// per pixel of the source file, and for sources of 8 bits or fewer their palette and the
// colour index of every pixel.
#include <cstdint>
#include <vector>

#include "imaging/cDib.h"

namespace quorbel {

enum class PictureType : uint8_t { Bitmap, Icon, Metafile };

struct RgbQuad {
    uint8_t blue = 0, green = 0, red = 0, reserved = 0;
    friend bool operator==(const RgbQuad&, const RgbQuad&) = default;
};

struct DecodedPicture {
    PictureType type = PictureType::Bitmap;
    cDib pixels;                  // the picture as it shows
    int bitsPerPixel = 24;        // of the source: 1, 4, 8, 16, 24 or 32
    std::vector<RgbQuad> palette; // bitsPerPixel <= 8 only; may hold fewer than 2^bpp entries
    std::vector<uint8_t> indices; // bitsPerPixel <= 8 only: one index per pixel, top row first
};

// What receives a source palette: resizes itself to count entries and returns the first,
// so the caller can fill them directly.
class PaletteReceiver {
public:
    virtual ~PaletteReceiver() = default;
    virtual RgbQuad* SetEntryCount(int count) = 0;
};

// What receives the colour indices of a paletted source, in the classic device-independent
// layout: bitsPerPixel bits per index (high bits first), rows padded to 4 bytes, bottom row
// first. Returns a buffer of PackedIndexBytes(width, height, bitsPerPixel) bytes.
class IndexReceiver {
public:
    virtual ~IndexReceiver() = default;
    virtual uint8_t* Init(int width, int height, int bitsPerPixel) = 0;
};

// Bytes of one padded row and of the whole packed index buffer.
int32_t PackedIndexRowBytes(int width, int bitsPerPixel);
int32_t PackedIndexBytes(int width, int height, int bitsPerPixel);

}  // namespace quorbel
