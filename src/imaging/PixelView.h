#pragma once
// A view of pixel memory: the first byte of the top row, the size, and a signed stride.
// A bottom-up buffer is a view whose stride is negative; nobody copies to flip.
#include <cassert>
#include <cstddef>
#include <cstdint>

namespace quorbel {

enum class PixelFormat : uint8_t {
    Bgrx32,  // blue, green, red, unused
    Bgr24,   // blue, green, red
};

constexpr int BytesPerPixel(PixelFormat f) { return f == PixelFormat::Bgrx32 ? 4 : 3; }

struct PixelView {
    uint8_t* top = nullptr;  // first byte of row 0 (the top row)
    int width = 0;
    int height = 0;
    ptrdiff_t stride = 0;    // bytes from one row to the one below it
    PixelFormat format = PixelFormat::Bgrx32;

    bool Empty() const { return top == nullptr || width <= 0 || height <= 0; }
    uint8_t* Row(int y) const {
        assert(y >= 0 && y < height);
        return top + static_cast<ptrdiff_t>(y) * stride;
    }
    uint8_t* At(int x, int y) const {
        assert(x >= 0 && x < width);
        return Row(y) + static_cast<ptrdiff_t>(x) * BytesPerPixel(format);
    }
};

// Stretch modes of the classic drawing interface, by their numbers.
enum class StretchMode : int {
    BlackOnWhite = 1,  // shrinking keeps the darker pixels (AND of the dropped ones)
    WhiteOnBlack = 2,  // shrinking keeps the lighter pixels (OR of the dropped ones)
    ColorOnColor = 3,  // nearest pixel, dropped ones ignored
    Halftone = 4,      // averages the source pixels each target pixel covers
};

// What a drawing target is here: pixels and the current stretch mode of the target.
struct Surface {
    PixelView view;
    StretchMode stretchMode = StretchMode::BlackOnWhite;  // the default of a fresh target
};

}  // namespace quorbel
