// AVIF through libavif: the primary picture, turned and mirrored as its container says;
// encoding at a quality mapped onto the AV1 quantiser.
#include <avif/avif.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"
#include "output/Upright.h"

namespace quorbel {
namespace {

struct DecoderFree {
    void operator()(avifDecoder* d) const { avifDecoderDestroy(d); }
};
struct EncoderFree {
    void operator()(avifEncoder* e) const { avifEncoderDestroy(e); }
};
struct ImageFree {
    void operator()(avifImage* i) const { avifImageDestroy(i); }
};

// Top-down rows the library fills in place, then reversed into the buffer's bottom-up order.
void FlipRows(cDib& d) {
    const size_t n = static_cast<size_t>(d.BytesPerScanLine());
    std::unique_ptr<uint8_t[]> tmp(new uint8_t[n]);
    uint8_t* base = d.lpBits();
    for (int a = 0, b = d.Height() - 1; a < b; ++a, --b) {
        std::memcpy(tmp.get(), base + a * n, n);
        std::memcpy(base + a * n, base + b * n, n);
        std::memcpy(base + b * n, tmp.get(), n);
    }
}

// The container's rotation (anticlockwise quarters) then mirror, as EXIF orientations.
bool ApplyTransforms(const avifImage& image, cDib& pixels) {
    static constexpr int kRotation[] = {1, 8, 3, 6};
    if ((image.transformFlags & AVIF_TRANSFORM_IROT) && !TurnUpright(pixels, kRotation[image.irot.angle & 3]))
        return false;
    if (image.transformFlags & AVIF_TRANSFORM_IMIR) return TurnUpright(pixels, image.imir.mode == 0 ? 4 : 2);
    return true;
}

}  // namespace

bool DecodeAvif(std::span<const uint8_t> bytes, DecodedPicture& out) {
    std::unique_ptr<avifDecoder, DecoderFree> decoder(avifDecoderCreate());
    if (!decoder) return false;
    decoder->maxThreads = 1;
    decoder->imageSizeLimit = static_cast<uint32_t>(std::min<int64_t>(kDecodeMaxPixels, UINT32_MAX));
    decoder->imageDimensionLimit = kMaxSide;
    decoder->strictFlags = AVIF_STRICT_DISABLED;  // phones write files the strict checks refuse
    if (avifDecoderSetIOMemory(decoder.get(), bytes.data(), bytes.size()) != AVIF_RESULT_OK ||
        avifDecoderParse(decoder.get()) != AVIF_RESULT_OK)
        return false;
    const avifImage& header = *decoder->image;
    if (!PictureSizeAllowed(header.width, header.height)) return false;
    if (avifDecoderNextImage(decoder.get()) != AVIF_RESULT_OK) return false;
    avifImage* image = decoder->image;
    DecodedPicture pic;
    if (!pic.pixels.Create(static_cast<int32_t>(image->width), static_cast<int32_t>(image->height))) return false;
    avifRGBImage rgb;
    avifRGBImageSetDefaults(&rgb, image);
    rgb.depth = 8;
    rgb.format = AVIF_RGB_FORMAT_BGRA;
    rgb.alphaPremultiplied = AVIF_TRUE;  // transparent parts show on black
    rgb.pixels = pic.pixels.lpBits();
    rgb.rowBytes = static_cast<uint32_t>(pic.pixels.BytesPerScanLine());
    if (avifImageYUVToRGB(image, &rgb) != AVIF_RESULT_OK) return false;
    FlipRows(pic.pixels);
    uint8_t* p = pic.pixels.lpBits();
    for (int32_t i = 0; i < pic.pixels.Size(); i += 4) p[i + 3] = 0;
    if (!ApplyTransforms(*image, pic.pixels)) return false;
    pic.bitsPerPixel = image->alphaPlane ? 32 : 24;
    out = std::move(pic);
    return true;
}

bool EncodeAvif(const cDib& picture, int quality, std::vector<uint8_t>& out, const MetadataBlocks* metadata) {
    out.clear();
    if (!picture.hDIB() || quality < 0 || quality > 100) return false;
    const int w = picture.Width(), h = picture.Height();
    std::unique_ptr<avifImage, ImageFree> image(avifImageCreate(w, h, 8, AVIF_PIXEL_FORMAT_YUV420));
    if (!image) return false;
    // Full-range BT.601 YUV, as JPEG stores it. Naming the matrix (the library leaves it
    // unspecified) lets the conversion run through libyuv, ten times faster. Without a
    // profile the pixels are sRGB, and the file says so.
    image->matrixCoefficients = AVIF_MATRIX_COEFFICIENTS_BT601;
    image->yuvRange = AVIF_RANGE_FULL;
    if (!metadata || metadata->icc.empty()) {
        image->colorPrimaries = AVIF_COLOR_PRIMARIES_BT709;
        image->transferCharacteristics = AVIF_TRANSFER_CHARACTERISTICS_SRGB;
    }
    // The library wants rows top-down with a positive pitch: a top-down copy.
    cDib topDown;
    if (!topDown.Create(w, h)) return false;
    const size_t rowBytes = static_cast<size_t>(w) * 4;
    for (int y = 0; y < h; ++y) std::memcpy(topDown.lpBits() + y * rowBytes, picture.Row(y), rowBytes);
    avifRGBImage rgb;
    avifRGBImageSetDefaults(&rgb, image.get());
    rgb.format = AVIF_RGB_FORMAT_BGRA;
    rgb.ignoreAlpha = AVIF_TRUE;
    rgb.pixels = topDown.lpBits();
    rgb.rowBytes = static_cast<uint32_t>(rowBytes);
    if (avifImageRGBToYUV(image.get(), &rgb) != AVIF_RESULT_OK) return false;
    if (metadata) {
        if (!metadata->exif.empty()) avifImageSetMetadataExif(image.get(), metadata->exif.data(), metadata->exif.size());
        if (!metadata->xmp.empty())
            avifImageSetMetadataXMP(image.get(), reinterpret_cast<const uint8_t*>(metadata->xmp.data()),
                                    metadata->xmp.size());
        if (!metadata->icc.empty()) avifImageSetProfileICC(image.get(), metadata->icc.data(), metadata->icc.size());
    }
    std::unique_ptr<avifEncoder, EncoderFree> encoder(avifEncoderCreate());
    if (!encoder) return false;
    // Quality 100 is the finest quantiser, 0 the coarsest.
    const int quantiser = (100 - quality) * AVIF_QUANTIZER_WORST_QUALITY / 100;
    encoder->minQuantizer = encoder->maxQuantizer = quantiser;
    encoder->maxThreads = 1;  // the batch runs one picture per core already
    // Speed 9 would halve the time again, but at high qualities its files are a quarter
    // larger for the same fidelity.
    encoder->speed = 8;
    avifRWData output = AVIF_DATA_EMPTY;
    const bool ok = avifEncoderWrite(encoder.get(), image.get(), &output) == AVIF_RESULT_OK;
    if (ok) out.assign(output.data, output.data + output.size);
    avifRWDataFree(&output);
    return ok;
}

}  // namespace quorbel
