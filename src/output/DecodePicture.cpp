#include "output/Codecs.h"
#include "output/JpegCodec.h"
#include "output/PictureFormat.h"
#include "output/Upright.h"

namespace quorbel {

bool DecodeJpegPicture(std::span<const uint8_t> bytes, DecodedPicture& out) {
    cDib pixels;
    if (DecodeJpeg(bytes, pixels) != kJpegOk) return false;
    out = DecodedPicture{};
    out.pixels.Swap(pixels);
    out.bitsPerPixel = 24;
    return true;
}

namespace {
// Decodes a format that may carry EXIF and turns the result upright by its orientation.
bool DecodeUpright(bool (*decode)(std::span<const uint8_t>, DecodedPicture&), std::span<const uint8_t> bytes,
                   DecodedPicture& out) {
    DecodedPicture picture;
    if (!decode(bytes, picture) || !TurnUpright(picture, FileOrientation(bytes))) return false;
    out = std::move(picture);
    return true;
}
}  // namespace

bool DecodePicture(std::span<const uint8_t> bytes, DecodedPicture& out) {
    switch (DetectPictureFormat(bytes)) {
        case PictureFormat::Jpeg: return DecodeUpright(DecodeJpegPicture, bytes, out);
        case PictureFormat::Png: return DecodeUpright(DecodePng, bytes, out);
        case PictureFormat::Gif: return DecodeGif(bytes, out);
        case PictureFormat::Tiff: return DecodeUpright(DecodeTiff, bytes, out);
        case PictureFormat::Bmp: return DecodeBmp(bytes, out);
        case PictureFormat::Ico: return DecodeIco(bytes, out);
        case PictureFormat::Webp: return DecodeUpright(DecodeWebp, bytes, out);
        case PictureFormat::Avif: return DecodeAvif(bytes, out);
        case PictureFormat::Heif: return DecodeHeif(bytes, out);
        case PictureFormat::Unknown: break;
    }
    return false;
}

bool FillPixelsFromIndices(DecodedPicture& out, int width, int height) {
    cDib pixels;
    if (!pixels.Create(width, height)) return false;
    const size_t n = out.palette.size();
    for (int y = 0; y < height; ++y) {
        const uint8_t* in = out.indices.data() + static_cast<size_t>(y) * width;
        uint8_t* o = pixels.Row(y);
        for (int x = 0; x < width; ++x, o += 4) {
            if (in[x] >= n) continue;  // calloc'd memory is already black
            const RgbQuad& c = out.palette[in[x]];
            o[0] = c.blue;
            o[1] = c.green;
            o[2] = c.red;
        }
    }
    out.pixels.Swap(pixels);
    return true;
}

}  // namespace quorbel
