#pragma once
// The 24-bit picture buffer: three bytes a pixel (blue, green, red), each row padded to a
// multiple of 4 bytes, bottom row first in memory. Used where a library wants that layout.
#include <cstdint>
#include <memory>
#include <string>

#include "core/Random.h"
#include "imaging/cDib.h"

namespace quorbel {

struct DecodedPicture;

// The refusal shown when a 24-bit buffer is asked to go on the clipboard as a DIB.
inline constexpr const char* kNoDibOnClipboard =
    "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!";

struct ClipboardResult {
    bool copied = false;
    std::string message;  // when not empty, the caller shows it in a plain message box
};

class cDIBSection {
public:
    cDIBSection() = default;
    ~cDIBSection() { ClearUp(); }
    cDIBSection(cDIBSection&& other) noexcept { Swap(other); }
    cDIBSection& operator=(cDIBSection&& other) noexcept {
        if (this != &other) {
            ClearUp();
            Swap(other);
        }
        return *this;
    }
    cDIBSection(const cDIBSection&) = delete;
    cDIBSection& operator=(const cDIBSection&) = delete;

    // Frees any previous content and makes a buffer of the size (no background fill: the
    // memory starts black). An overflow of the row or image size raises the overflow error.
    bool Create(int32_t width, int32_t height);
    // Fills the header for the size and allocates the pixel memory; true when it exists.
    bool CreateDIB(int32_t width, int32_t height);
    // Makes a buffer of the picture's size and copies the picture into it.
    bool CreateFromPicture(const DecodedPicture& picture);

    // Copies from a source into the buffer at (0, 0); a negative width or height means the
    // buffer's own.
    void LoadPictureBlt(const PixelView& source, int srcLeft = 0, int srcTop = 0, int width = -1,
                        int height = -1);
    // Copies the buffer (from srcLeft, srcTop) to the target; negative sizes mean the buffer's own.
    void PaintPicture(Surface& target, int dstLeft = 0, int dstTop = 0, int width = -1,
                      int height = -1, int srcLeft = 0, int srcTop = 0) const;

    // As a bitmap: copies through the clipboard target. As a DIB: refuses with a message.
    ClipboardResult CopyToClipboard(ClipboardTarget& clipboard, bool asDib = true) const;

    // Fills every pixel with noise: each byte is Rnd × 255 rounded; grey draws one value per
    // pixel for all three bytes. Seeded from the clock unless a generator is given.
    void RandomiseBits(bool grey, Random* generator = nullptr);

    // A new buffer of the size, filled by bilinear interpolation (or a plain copy when the
    // size is unchanged). This buffer is left as it was.
    cDIBSection Resample(int32_t newHeight, int32_t newWidth) const;

    void ClearUp();

    Surface& hDC() { return dc_; }
    bool hDIB() const { return bits_ != nullptr; }
    uint8_t* DIBSectionBitsPtr() const { return bits_.get(); }
    int32_t Width() const { return header_.biWidth; }
    int32_t Height() const { return header_.biHeight; }
    int32_t BytesPerScanLine() const;
    const BitmapInfoHeader& Header() const { return header_; }
    uint8_t* Row(int y) const { return dc_.view.Row(y); }  // y = 0 is the top row
    const PixelView& View() const { return dc_.view; }

    void Swap(cDIBSection& other) noexcept;

private:
    struct FreeBits {
        FreeBits() noexcept : bytes(0) {}
        explicit FreeBits(size_t size) noexcept : bytes(size) {}
        size_t bytes;  // the size it was allocated with
        void operator()(uint8_t* p) const noexcept;
    };

    BitmapInfoHeader header_{};
    Surface dc_{};
    std::unique_ptr<uint8_t, FreeBits> bits_;
};

// Padded bytes of one 24-bit row: (width × 3 + 3) with the two lowest bits cleared.
int32_t BytesPerScanLine24(int32_t width);

}  // namespace quorbel
