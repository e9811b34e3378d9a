#pragma once
// Maps a true-colour picture onto a palette with Stucki error diffusion (weights out of
// 42), writing palette indices in the packed bottom-up layout of IndexReceiver.
#include <cstdint>
#include <vector>

#include "imaging/cDIBPal.h"
#include "imaging/DecodedPicture.h"
#include "imaging/cDib.h"

namespace quorbel {

// The twelve neighbours an error is spread to, as (columns ahead, rows below, weight):
// 8 and 4 along the row; 2 4 8 4 2 on the next; 1 2 4 2 1 on the one after.
struct StuckiTap {
    int dx, dy, weight;
};
inline constexpr StuckiTap kStucki[12] = {{1, 0, 8},  {2, 0, 4},  {-2, 1, 2}, {-1, 1, 4}, {0, 1, 8}, {1, 1, 4},
                                          {2, 1, 2},  {-2, 2, 1}, {-1, 2, 2}, {0, 2, 4},  {1, 2, 2}, {2, 2, 1}};

class cDIBDither : public IndexReceiver {
public:
    ProgressFn Progress;
    // Alternate the scan direction row by row (the error then spreads both ways).
    bool Serpentine = false;

    // Makes a zeroed index buffer of PackedIndexBytes(width, height, bitsPerPixel) bytes.
    uint8_t* Init(int width, int height, int bitsPerPixel) override;

    // Dithers source onto palette into a fresh index buffer of 1, 4 or 8 bits per index
    // (the fewest that hold the palette); when result is given it receives the picture in
    // the chosen colours. A grey palette is matched on the plain mean of the channels, one
    // error for all three. False, with nothing changed, for an empty picture or palette.
    bool Dither(const cDib& source, const cDIBPal& palette, cDib* result = nullptr);

    int Width() const { return width_; }
    int Height() const { return height_; }
    int BitsPerPixel() const { return bitsPerPixel_; }
    const std::vector<uint8_t>& Bits() const { return bits_; }
    // The index of pixel (x, y), y counted from the top.
    uint8_t IndexAt(int x, int y) const;

    // The share of an error (-255..255) for tap 0..11: error × weight / 42 truncated toward
    // zero, from the table prepared once.
    static int ErrorShare(int error, int tap);
    // The grey of a channel sum 0..765: the sum / 3 truncated, from its table.
    static int MeanGrey(int channelSum);

private:
    void SetIndex(int x, int y, uint8_t index);

    std::vector<uint8_t> bits_;
    int width_ = 0, height_ = 0, bitsPerPixel_ = 0;
    int32_t rowBytes_ = 0;
};

}  // namespace quorbel
