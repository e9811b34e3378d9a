#pragma once
// The picture buffer every part of the program passes around: 32 bits a pixel in the
// order blue, green, red, unused; rows of exactly width × 4 bytes; the bottom row first in
// memory. Code addresses rows top-down through Row(y); only this class knows memory is
// bottom-up.
#include <cstdint>
#include <functional>
#include <memory>

#include "imaging/Colour.h"
#include "imaging/PixelView.h"

namespace quorbel {

struct DecodedPicture;
class PaletteReceiver;
class IndexReceiver;

// The header the buffer describes itself with (the classic 40-byte bitmap info header).
struct BitmapInfoHeader {
    uint32_t biSize = 40;
    int32_t biWidth = 0;
    int32_t biHeight = 0;  // positive: rows bottom-up
    uint16_t biPlanes = 0;
    uint16_t biBitCount = 0;
    uint32_t biCompression = 0;
    uint32_t biSizeImage = 0;
    int32_t biXPelsPerMeter = 0;
    int32_t biYPelsPerMeter = 0;
    uint32_t biClrUsed = 0;
    uint32_t biClrImportant = 0;
};

// Progress of a long operation, in percent.
using ProgressFn = std::function<void(int percent)>;

// Where CopyToClipboard puts its picture; the desktop program supplies the real clipboard.
class ClipboardTarget {
public:
    virtual ~ClipboardTarget() = default;
    // Hands over a copy of the pixels; true when the clipboard took it.
    virtual bool SetBitmap(const PixelView& pixels) = 0;
};

// The largest picture the program holds: 2^28 pixels (each side up to 65,535). Larger
// requests fail like an allocation the system refused.
inline constexpr int64_t kMaxPixels = int64_t(1) << 28;
inline constexpr int32_t kMaxSide = 65535;

class cDib {
public:
    cDib() = default;
    ~cDib() { Destroy(); }
    cDib(cDib&& other) noexcept { Swap(other); }
    cDib& operator=(cDib&& other) noexcept {
        if (this != &other) {
            Destroy();
            Swap(other);
        }
        return *this;
    }
    cDib(const cDib&) = delete;
    cDib& operator=(const cDib&) = delete;

    // Frees any previous content and makes a buffer filled with the background colour.
    // An overflow of width × 4 × height raises the overflow error before anything is
    // allocated; a zero, negative or too large size returns false and leaves it empty.
    bool Create(int32_t width, int32_t height, ColorRef background = 0);

    // Takes over a decoded picture's pixels (a copy); for sources of 8 bits or fewer also
    // hands its palette and colour indices to the receivers given. Returns the source's bits
    // per pixel when 8 or fewer, else 24; 0 (buffer untouched) for no picture or a picture
    // that is not a bitmap.
    int CreateFromStdPicture(const DecodedPicture* picture, PaletteReceiver* palette = nullptr,
                             IndexReceiver* dither = nullptr);

    // Copies the buffer's size worth of pixels from source (x, y) into the buffer at (0, 0).
    void LoadBlt(const PixelView& source, int x, int y);
    // Stretches another buffer onto this one's whole size (nearest pixel).
    void LoadDIBBlt(const cDib& other);
    // Draws the buffer at (x, y), each pixel zoom × zoom, in the target's current stretch mode.
    void Paint(Surface& target, int x, int y, int zoom = 1) const;
    // Draws a part of the buffer onto a rectangle of the target with the given stretch mode;
    // the target's own mode is put back afterwards.
    void Stretch(Surface& target, int dx, int dy, int dw, int dh, int sx, int sy, int sw, int sh,
                 StretchMode mode) const;
    // Frees the memory; the buffer is empty afterwards.
    void Destroy();

    // Mirrors in place (columns, then rows when asked) and then, when asked, turns a quarter
    // turn clockwise into a buffer of swapped size, keeping every pixel.
    void Orientation(bool flipHorizontal, bool flipVertical, bool rotate,
                     const ProgressFn& progress = {});

    // The aspect-keeping fit of the buffer into a box, centred. Without stretch a picture that
    // already fits keeps its size and sits at (0, 0).
    void GetBestFitInfo(int32_t boxWidth, int32_t boxHeight, bool stretch, int32_t& left,
                        int32_t& top, int32_t& width, int32_t& height) const;

    // Puts a copy on the clipboard; nothing happens on an empty buffer.
    bool CopyToClipboard(ClipboardTarget& clipboard) const;

    Surface& hDC() { return dc_; }
    bool hDIB() const { return bits_ != nullptr; }  // true while the buffer is live
    uint8_t* lpBits() const { return bits_.get(); }
    int32_t Size() const { return static_cast<int32_t>(header_.biSizeImage); }
    int32_t BytesPerScanLine() const;
    int32_t Width() const { return header_.biWidth; }
    int32_t Height() const { return header_.biHeight; }
    const BitmapInfoHeader& Header() const { return header_; }

    // Row y counted from the top (y = 0 is the top row).
    uint8_t* Row(int y) const { return dc_.view.Row(y); }
    // The pixels as a top-down view (negative stride over the bottom-up memory).
    const PixelView& View() const { return dc_.view; }

    // Exchanges the contents of two buffers; how a new picture replaces an old one cheaply.
    void Swap(cDib& other) noexcept;

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

}  // namespace quorbel
