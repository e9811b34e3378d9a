// WebP through libwebp: still pictures (the first frame of an animation is refused by the
// library's simple decoder), lossy encoding at a quality.
#include <webp/decode.h>
#include <webp/encode.h>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"

namespace quorbel {

bool DecodeWebp(std::span<const uint8_t> bytes, DecodedPicture& out) {
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config)) return false;
    if (WebPGetFeatures(bytes.data(), bytes.size(), &config.input) != VP8_STATUS_OK) return false;
    if (config.input.has_animation || !PictureSizeAllowed(config.input.width, config.input.height)) return false;
    DecodedPicture pic;
    if (!pic.pixels.Create(config.input.width, config.input.height)) return false;
    // The buffer's memory is bottom-up: the library writes its rows flipped, straight into it.
    config.options.flip = 1;
    config.output.colorspace = MODE_bgrA;  // premultiplied: transparent parts show on black
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = pic.pixels.lpBits();
    config.output.u.RGBA.stride = pic.pixels.BytesPerScanLine();
    config.output.u.RGBA.size = static_cast<size_t>(pic.pixels.Size());
    const bool ok = WebPDecode(bytes.data(), bytes.size(), &config) == VP8_STATUS_OK;
    WebPFreeDecBuffer(&config.output);
    if (!ok) return false;
    uint8_t* p = pic.pixels.lpBits();
    for (int32_t i = 0; i < pic.pixels.Size(); i += 4) p[i + 3] = 0;
    pic.bitsPerPixel = config.input.has_alpha ? 32 : 24;
    out = std::move(pic);
    return true;
}

bool EncodeWebp(const cDib& picture, int quality, std::vector<uint8_t>& out) {
    out.clear();
    if (!picture.hDIB() || quality < 0 || quality > 100) return false;
    WebPConfig config;
    WebPPicture pic;
    if (!WebPConfigPreset(&config, WEBP_PRESET_PHOTO, static_cast<float>(quality)) || !WebPPictureInit(&pic))
        return false;
    pic.width = picture.Width();
    pic.height = picture.Height();
    WebPMemoryWriter writer;
    WebPMemoryWriterInit(&writer);
    pic.writer = WebPMemoryWrite;
    pic.custom_ptr = &writer;
    const PixelView& v = picture.View();
    const bool ok = WebPPictureImportBGRX(&pic, v.top, static_cast<int>(v.stride)) && WebPEncode(&config, &pic);
    WebPPictureFree(&pic);
    if (ok) out.assign(writer.mem, writer.mem + writer.size);
    WebPMemoryWriterClear(&writer);
    return ok;
}

}  // namespace quorbel
