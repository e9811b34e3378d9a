#include "imaging/cDIBSection.h"

#include <cmath>
#include <cstdlib>

#include "core/CheckedMath.h"
#include "core/PixelMemory.h"
#include "core/Rounding.h"
#include "imaging/Blit.h"
#include "imaging/DecodedPicture.h"

namespace quorbel {

void cDIBSection::FreeBits::operator()(uint8_t* p) const noexcept { FreePixels(p, bytes); }

int32_t BytesPerScanLine24(int32_t width) {
    const int32_t raw = CheckedAdd(CheckedMul(width, 3, "cDIBSection.BytesPerScanLine"), 3,
                                   "cDIBSection.BytesPerScanLine");
    return raw & ~3;
}

int32_t cDIBSection::BytesPerScanLine() const { return BytesPerScanLine24(header_.biWidth); }

bool cDIBSection::Create(int32_t width, int32_t height) {
    ClearUp();
    return CreateDIB(width, height);
}

bool cDIBSection::CreateDIB(int32_t width, int32_t height) {
    const int32_t rowBytes = BytesPerScanLine24(width);
    const int32_t sizeImage = CheckedMul(height, rowBytes, "cDIBSection.CreateDIB");
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide ||
        int64_t(width) * height > kMaxPixels)
        return false;
    uint8_t* memory = AllocatePixels(static_cast<size_t>(sizeImage));
    if (!memory) return false;
    bits_ = std::unique_ptr<uint8_t, FreeBits>(memory, FreeBits{static_cast<size_t>(sizeImage)});
    header_ = BitmapInfoHeader{};
    header_.biWidth = width;
    header_.biHeight = height;
    header_.biPlanes = 1;
    header_.biBitCount = 24;
    header_.biSizeImage = static_cast<uint32_t>(sizeImage);
    dc_.view = PixelView{memory + static_cast<ptrdiff_t>(rowBytes) * (height - 1), width, height,
                         -static_cast<ptrdiff_t>(rowBytes), PixelFormat::Bgr24};
    dc_.stretchMode = StretchMode::BlackOnWhite;
    return true;
}

bool cDIBSection::CreateFromPicture(const DecodedPicture& picture) {
    const cDib& source = picture.pixels;
    if (!Create(source.Width(), source.Height())) return false;
    LoadPictureBlt(source.View());
    return true;
}

void cDIBSection::LoadPictureBlt(const PixelView& source, int srcLeft, int srcTop, int width, int height) {
    if (!hDIB()) return;
    if (width < 0) width = Width();
    if (height < 0) height = Height();
    BitBlt(dc_.view, 0, 0, width, height, source, srcLeft, srcTop);
}

void cDIBSection::PaintPicture(Surface& target, int dstLeft, int dstTop, int width, int height,
                               int srcLeft, int srcTop) const {
    if (!hDIB()) return;
    if (width < 0) width = Width();
    if (height < 0) height = Height();
    BitBlt(target.view, dstLeft, dstTop, width, height, dc_.view, srcLeft, srcTop);
}

ClipboardResult cDIBSection::CopyToClipboard(ClipboardTarget& clipboard, bool asDib) const {
    if (asDib) return {false, kNoDibOnClipboard};
    if (!hDIB()) return {};
    return {clipboard.SetBitmap(dc_.view), {}};
}

void cDIBSection::RandomiseBits(bool grey, Random* generator) {
    if (!hDIB()) return;
    Random clock = Random::FromClock();
    Random& rnd = generator ? *generator : clock;
    auto value = [&] { return RoundToByte(static_cast<double>(rnd.Rnd()) * 255.0); };
    for (int y = 0; y < Height(); ++y) {
        uint8_t* p = Row(y);
        for (int x = 0; x < Width(); ++x, p += 3) {
            if (grey) {
                p[0] = p[1] = p[2] = value();
            } else {
                p[0] = value();
                p[1] = value();
                p[2] = value();
            }
        }
    }
}

cDIBSection cDIBSection::Resample(int32_t newHeight, int32_t newWidth) const {
    cDIBSection out;
    if (!out.Create(newWidth, newHeight) || !hDIB()) return out;
    if (newWidth == Width() && newHeight == Height()) {
        out.LoadPictureBlt(dc_.view);
        return out;
    }
    // Steps of (source - 1) / new size: the last target column and row fall just short of
    // the source's last ones. Rows are counted as they lie in memory, bottom row first.
    const float sx = static_cast<float>(static_cast<double>(Width() - 1) / newWidth);
    const float sy = static_cast<float>(static_cast<double>(Height() - 1) / newHeight);
    const int32_t srcLine = BytesPerScanLine(), dstLine = out.BytesPerScanLine();
    const uint8_t* src = bits_.get();
    uint8_t* dst = out.bits_.get();
    const int lastX = Width() - 1, lastY = Height() - 1;
    for (int y = 0; y < newHeight; ++y) {
        const float fy = sy * static_cast<float>(y);
        const int iy = std::min(static_cast<int>(fy), lastY);
        const float dy = fy - static_cast<float>(iy);
        const int iy1 = std::min(iy + 1, lastY);  // a one-row source reads its only row
        const uint8_t* r0 = src + static_cast<ptrdiff_t>(iy) * srcLine;
        const uint8_t* r1 = src + static_cast<ptrdiff_t>(iy1) * srcLine;
        uint8_t* d = dst + static_cast<ptrdiff_t>(y) * dstLine;
        for (int x = 0; x < newWidth; ++x, d += 3) {
            const float fx = sx * static_cast<float>(x);
            const int ix = std::min(static_cast<int>(fx), lastX);
            const float dx = fx - static_cast<float>(ix);
            const int ix1 = std::min(ix + 1, lastX);
            for (int c = 0; c < 3; ++c) {
                const float a = r0[ix * 3 + c], b = r0[ix1 * 3 + c];
                const float e = r1[ix * 3 + c], f = r1[ix1 * 3 + c];
                const float top = std::nearbyint(a * (1.0f - dx) + b * dx);
                const float bottom = std::nearbyint(e * (1.0f - dx) + f * dx);
                d[c] = RoundToByte(top * (1.0f - dy) + bottom * dy);
            }
        }
    }
    return out;
}

void cDIBSection::ClearUp() {
    bits_.reset();
    header_ = BitmapInfoHeader{};
    dc_ = Surface{};
}

void cDIBSection::Swap(cDIBSection& other) noexcept {
    std::swap(header_, other.header_);
    std::swap(dc_, other.dc_);
    std::swap(bits_, other.bits_);
}

}  // namespace quorbel
