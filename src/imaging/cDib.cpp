#include "imaging/cDib.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

#include "core/CheckedMath.h"
#include "core/PixelMemory.h"
#include "core/Rounding.h"
#include "imaging/Blit.h"
#include "imaging/DecodedPicture.h"
#include "imaging/QuarterTurn.h"

namespace quorbel {

void cDib::FreeBits::operator()(uint8_t* p) const noexcept { FreePixels(p, bytes); }

bool cDib::Create(int32_t width, int32_t height, ColorRef background) {
    Destroy();
    // The byte count is checked before anything else, so an impossible size is an error,
    // not an allocation attempt.
    const int32_t sizeImage = CheckedMul(CheckedMul(width, 4, "cDib.Create"), height, "cDib.Create");
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide ||
        int64_t(width) * height > kMaxPixels)
        return false;
    // Zeroed memory: a black buffer costs nothing to clear.
    uint8_t* memory = AllocatePixels(static_cast<size_t>(sizeImage));
    if (!memory) return false;
    bits_ = std::unique_ptr<uint8_t, FreeBits>(memory, FreeBits{static_cast<size_t>(sizeImage)});

    header_ = BitmapInfoHeader{};
    header_.biWidth = width;
    header_.biHeight = height;
    header_.biPlanes = 1;
    header_.biBitCount = 32;
    header_.biSizeImage = static_cast<uint32_t>(sizeImage);

    const ptrdiff_t rowBytes = static_cast<ptrdiff_t>(width) * 4;
    dc_.view = PixelView{memory + rowBytes * (height - 1), width, height, -rowBytes, PixelFormat::Bgrx32};
    dc_.stretchMode = StretchMode::BlackOnWhite;
    if (background != 0) FillRect(dc_.view, 0, 0, width, height, background);
    return true;
}

void cDib::Destroy() {
    bits_.reset();
    header_ = BitmapInfoHeader{};
    dc_ = Surface{};
}

void cDib::Swap(cDib& other) noexcept {
    std::swap(header_, other.header_);
    std::swap(dc_, other.dc_);
    std::swap(bits_, other.bits_);
}

int32_t cDib::BytesPerScanLine() const { return CheckedMul(header_.biWidth, 4, "cDib.BytesPerScanLine"); }

int cDib::CreateFromStdPicture(const DecodedPicture* picture, PaletteReceiver* palette,
                               IndexReceiver* dither) {
    if (!picture || picture->type != PictureType::Bitmap || !picture->pixels.hDIB()) return 0;
    const cDib& source = picture->pixels;
    const int width = source.Width(), height = source.Height();
    if (!Create(width, height, 0)) return 0;
    BitBlt(dc_.view, 0, 0, width, height, source.View(), 0, 0);

    const int bpp = picture->bitsPerPixel;
    if (bpp <= 8) {
        const int count = 1 << bpp;
        if (palette) {
            RgbQuad* entries = palette->SetEntryCount(count);
            for (int i = 0; i < count; ++i)
                entries[i] = i < static_cast<int>(picture->palette.size()) ? picture->palette[i] : RgbQuad{};
        }
        const bool haveIndices = picture->indices.size() == static_cast<size_t>(width) * height;
        if (dither && haveIndices) {
            uint8_t* packed = dither->Init(width, height, bpp);
            const int32_t rowBytes = PackedIndexRowBytes(width, bpp);
            std::memset(packed, 0, static_cast<size_t>(rowBytes) * height);
            const int perByte = 8 / bpp;
            const unsigned mask = (1u << bpp) - 1;
            for (int y = 0; y < height; ++y) {
                // Bottom row first, high bits first within a byte.
                uint8_t* row = packed + static_cast<ptrdiff_t>(height - 1 - y) * rowBytes;
                const uint8_t* in = picture->indices.data() + static_cast<ptrdiff_t>(y) * width;
                for (int x = 0; x < width; ++x) {
                    const int shift = bpp * (perByte - 1 - x % perByte);
                    row[x / perByte] |= static_cast<uint8_t>((in[x] & mask) << shift);
                }
            }
        }
        return bpp;
    }
    return 24;
}

void cDib::LoadBlt(const PixelView& source, int x, int y) {
    if (!hDIB()) return;
    BitBlt(dc_.view, 0, 0, Width(), Height(), source, x, y);
}

void cDib::LoadDIBBlt(const cDib& other) {
    if (!hDIB() || !other.hDIB()) return;
    StretchBlt(dc_.view, 0, 0, Width(), Height(), other.View(), 0, 0, other.Width(), other.Height(),
               StretchMode::ColorOnColor);
}

void cDib::Paint(Surface& target, int x, int y, int zoom) const {
    if (!hDIB()) return;
    const int32_t w = CheckedMul(Width(), zoom, "cDib.Paint");
    const int32_t h = CheckedMul(Height(), zoom, "cDib.Paint");
    StretchBlt(target.view, x, y, w, h, dc_.view, 0, 0, Width(), Height(), target.stretchMode);
}

void cDib::Stretch(Surface& target, int dx, int dy, int dw, int dh, int sx, int sy, int sw, int sh,
                   StretchMode mode) const {
    if (!hDIB()) return;
    const StretchMode previous = target.stretchMode;
    target.stretchMode = mode;
    StretchBlt(target.view, dx, dy, dw, dh, dc_.view, sx, sy, sw, sh, mode);
    target.stretchMode = previous;
}

void cDib::Orientation(bool flipHorizontal, bool flipVertical, bool rotate, const ProgressFn& progress) {
    if (!hDIB()) return;
    const int w = Width(), h = Height();
    if (flipHorizontal) StretchBlt(dc_.view, w - 1, 0, -w, h, dc_.view, 0, 0, w, h, StretchMode::ColorOnColor);
    if (flipVertical) StretchBlt(dc_.view, 0, h - 1, w, -h, dc_.view, 0, 0, w, h, StretchMode::ColorOnColor);
    if (rotate) {
        cDib turned;
        if (!turned.Create(h, w, 0)) return;
        TurnQuarterClockwise(dc_.view, turned.dc_.view, progress);
        Swap(turned);
    }
}

void cDib::GetBestFitInfo(int32_t boxWidth, int32_t boxHeight, bool stretch, int32_t& left,
                          int32_t& top, int32_t& width, int32_t& height) const {
    left = 0;
    top = 0;
    const int32_t w = Width(), h = Height();
    if (w <= boxWidth && h <= boxHeight && !stretch) {
        // A picture that fits keeps its size and sits at the box's corner.
        width = w;
        height = h;
        return;
    }
    {
        if (w <= 0 || h <= 0) {
            width = height = 0;
            return;
        }
        // The ratios are kept in single precision; the size follows from them.
        const float rx = static_cast<float>(static_cast<double>(boxWidth) / w);
        const float ry = static_cast<float>(static_cast<double>(boxHeight) / h);
        if (rx < ry) {
            width = boxWidth;
            height = RoundToInt32(static_cast<double>(rx) * h, "cDib.GetBestFitInfo");
        } else {
            height = boxHeight;
            width = RoundToInt32(static_cast<double>(ry) * w, "cDib.GetBestFitInfo");
        }
    }
    // Centred in the box, halves truncated toward zero.
    left = (boxWidth - width) / 2;
    top = (boxHeight - height) / 2;
}

bool cDib::CopyToClipboard(ClipboardTarget& clipboard) const {
    if (!hDIB()) return false;
    return clipboard.SetBitmap(dc_.view);
}

int32_t PackedIndexRowBytes(int width, int bitsPerPixel) {
    const int32_t bits = CheckedMul(width, bitsPerPixel, "PackedIndexRowBytes");
    return CheckedAdd(bits, 31, "PackedIndexRowBytes") / 32 * 4;
}

int32_t PackedIndexBytes(int width, int height, int bitsPerPixel) {
    return CheckedMul(PackedIndexRowBytes(width, bitsPerPixel), height, "PackedIndexBytes");
}

}  // namespace quorbel
