#include "output/JpegCodec.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "imaging/cDIBSection.h"
#include "imaging/cDib.h"
#include "output/ColourProfile.h"
#include "output/DecodeLimits.h"

namespace quorbel {

namespace {

// A TurboJPEG handle is not thread-safe; each thread keeps its own for its lifetime.
// After a failure the library may leave a handle mid-way through a file, so a failed call
// drops the handle and the next call starts with a fresh one.
struct TjHandle {
    tjhandle handle = nullptr;
    ~TjHandle() { Reset(); }
    void Reset() {
        if (handle) tjDestroy(handle);
        handle = nullptr;
    }
};

TjHandle& DecompressorSlot() {
    thread_local TjHandle h;
    if (!h.handle) h.handle = tjInitDecompress();
    return h;
}
tjhandle Decompressor() { return DecompressorSlot().handle; }
// Passes a library result through, dropping the handle after a failure.
int Checked(int rc, TjHandle& slot) {
    if (rc != 0) slot.Reset();
    return rc;
}

TjHandle& CompressorSlot() {
    thread_local TjHandle h;
    if (!h.handle) h.handle = tjInitCompress();
    return h;
}

// Progressive-file bombs stop at the library's scan limit; a warning (truncation, corrupt
// data) stops the decode so no half-grey picture is passed off as the photo.
constexpr int kDecodeFlags = TJFLAG_LIMITSCANS | TJFLAG_STOPONWARNING;

// What the library needs to address a view: the first byte in memory, a positive pitch and
// whether rows run bottom-up.
struct LibraryLayout {
    uint8_t* first;
    int pitch;
    int flags;
};

LibraryLayout LayoutOf(const PixelView& v) {
    if (v.stride < 0)
        return {v.top + v.stride * static_cast<ptrdiff_t>(v.height - 1), static_cast<int>(-v.stride),
                TJFLAG_BOTTOMUP};
    return {v.top, static_cast<int>(v.stride), 0};
}

int TjFormat(PixelFormat f) { return f == PixelFormat::Bgrx32 ? TJPF_BGRX : TJPF_BGR; }

// Adobe CMYK JPEGs store inverted ink values; TurboJPEG 2.1 hands them over as they are
// and cannot turn them into RGB itself. Through the file's own CMYK profile when it has
// one, else by simple ink arithmetic.
int DecodeCmyk(std::span<const uint8_t> bytes, int width, int height, const PixelView& out) {
    std::unique_ptr<uint8_t[]> cmyk(new (std::nothrow) uint8_t[static_cast<size_t>(width) * height * 4]);
    if (!cmyk) return kJpegTooLarge;
    if (Checked(tjDecompress2(Decompressor(), bytes.data(), static_cast<unsigned long>(bytes.size()),
                              cmyk.get(), width, width * 4, height, TJPF_CMYK, kDecodeFlags),
                DecompressorSlot()) != 0)
        return kJpegDecodeFailed;
    const JpegColour colour = ReadJpegColour(bytes);
    if (ConvertCmykToSrgb(cmyk.get(), colour.adobe, colour.icc, out)) return kJpegOk;
    const int bpp = BytesPerPixel(out.format);
    for (int y = 0; y < height; ++y) {
        const uint8_t* in = cmyk.get() + static_cast<ptrdiff_t>(y) * width * 4;
        uint8_t* o = out.Row(y);
        for (int x = 0; x < width; ++x, in += 4, o += bpp) {
            const unsigned k = in[3];
            o[0] = static_cast<uint8_t>((in[2] * k + 127) / 255);
            o[1] = static_cast<uint8_t>((in[1] * k + 127) / 255);
            o[2] = static_cast<uint8_t>((in[0] * k + 127) / 255);
        }
    }
    return kJpegOk;
}

int DecodeInto(std::span<const uint8_t> bytes, const JpegInfo& info, const PixelView& out) {
    if (info.cmyk) {
        if (out.width != info.width || out.height != info.height) return kJpegDecodeFailed;
        return DecodeCmyk(bytes, info.width, info.height, out);
    }
    const LibraryLayout layout = LayoutOf(out);
    if (Checked(tjDecompress2(Decompressor(), bytes.data(), static_cast<unsigned long>(bytes.size()),
                              layout.first, out.width, layout.pitch, out.height, TjFormat(out.format),
                              kDecodeFlags | layout.flags),
                DecompressorSlot()) != 0)
        return kJpegDecodeFailed;
    return kJpegOk;
}

}  // namespace

int ReadJpegInfo(std::span<const uint8_t> bytes, JpegInfo& info) {
    info = {};
    tjhandle h = Decompressor();
    if (!h || bytes.empty()) return kJpegBadHeader;
    int w = 0, hgt = 0, subsamp = 0, colorspace = 0;
    if (Checked(tjDecompressHeader3(h, bytes.data(), static_cast<unsigned long>(bytes.size()), &w, &hgt,
                                    &subsamp, &colorspace),
                DecompressorSlot()) != 0)
        return kJpegBadHeader;
    if (!PictureSizeAllowed(w, hgt)) return kJpegTooLarge;
    info.width = w;
    info.height = hgt;
    info.cmyk = colorspace == TJCS_CMYK || colorspace == TJCS_YCCK;
    return kJpegOk;
}

int JpegScaleDenominator(int width, int height, int targetWidth, int targetHeight) {
    if (targetWidth <= 0 && targetHeight <= 0) return 1;
    int best = 1;
    for (int d : {2, 4, 8}) {
        // Scaled sizes round up, as the library's own do.
        const int64_t w = (int64_t(width) + d - 1) / d, h = (int64_t(height) + d - 1) / d;
        if (w >= 2 * int64_t(std::max(targetWidth, 0)) && h >= 2 * int64_t(std::max(targetHeight, 0)))
            best = d;
    }
    return best;
}

int DecodeJpeg(std::span<const uint8_t> bytes, cDib& out, int denominator) {
    JpegInfo info;
    if (const int status = ReadJpegInfo(bytes, info); status != kJpegOk) return status;
    if (denominator != 2 && denominator != 4 && denominator != 8) denominator = 1;
    if (info.cmyk) denominator = 1;  // converted by hand at full size
    const tjscalingfactor factor{1, denominator};
    const int w = TJSCALED(info.width, factor), h = TJSCALED(info.height, factor);
    cDib picture;
    if (!picture.Create(w, h)) return kJpegTooLarge;
    if (const int status = DecodeInto(bytes, info, picture.View()); status != kJpegOk) return status;
    out.Swap(picture);
    return kJpegOk;
}

int DecodeJpeg(std::span<const uint8_t> bytes, cDIBSection& out) {
    JpegInfo info;
    if (const int status = ReadJpegInfo(bytes, info); status != kJpegOk) return status;
    cDIBSection picture;
    if (!picture.Create(info.width, info.height)) return kJpegTooLarge;
    if (const int status = DecodeInto(bytes, info, picture.View()); status != kJpegOk) return status;
    out.Swap(picture);
    return kJpegOk;
}

int EncodeJpeg(const PixelView& pixels, int quality, std::vector<uint8_t>& out) {
    out.clear();
    if (pixels.Empty()) return kJpegNoPicture;
    TjHandle& slot = CompressorSlot();
    if (!slot.handle) return kJpegEncodeFailed;
    const LibraryLayout layout = LayoutOf(pixels);
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    const int rc = Checked(tjCompress2(slot.handle, layout.first, pixels.width, layout.pitch, pixels.height,
                               TjFormat(pixels.format), &jpeg, &size, TJSAMP_420, quality, layout.flags),
                           slot);
    if (rc == 0 && jpeg) out.assign(jpeg, jpeg + size);
    tjFree(jpeg);
    return rc == 0 ? kJpegOk : kJpegEncodeFailed;
}

}  // namespace quorbel
