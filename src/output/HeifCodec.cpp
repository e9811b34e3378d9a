// HEIC/HEIF through libheif: the primary picture, which the library turns and mirrors as
// its container says. Decoding only: few programs open HEIC, so outputs are never HEIC.
#include <libheif/heif.h>

#include <memory>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"
#include "output/HeifItems.h"

namespace quorbel {
namespace {

struct ContextFree {
    void operator()(heif_context* c) const { heif_context_free(c); }
};
struct HandleFree {
    void operator()(heif_image_handle* h) const { heif_image_handle_release(h); }
};
struct ImageFree {
    void operator()(heif_image* i) const { heif_image_release(i); }
};
struct OptionsFree {
    void operator()(heif_decoding_options* o) const { heif_decoding_options_free(o); }
};

}  // namespace

bool DecodeHeif(std::span<const uint8_t> bytes, DecodedPicture& out) {
    if (!HeifCanvasesAllowed(bytes)) return false;
    std::unique_ptr<heif_context, ContextFree> ctx(heif_context_alloc());
    if (!ctx) return false;
    heif_context_set_maximum_image_size_limit(ctx.get(), kMaxSide);
    if (heif_context_read_from_memory_without_copy(ctx.get(), bytes.data(), bytes.size(), nullptr).code !=
        heif_error_Ok)
        return false;
    heif_image_handle* raw = nullptr;
    if (heif_context_get_primary_image_handle(ctx.get(), &raw).code != heif_error_Ok) return false;
    std::unique_ptr<heif_image_handle, HandleFree> handle(raw);
    // Both the stored and the turned size must pass before anything is decoded.
    const int w = heif_image_handle_get_width(handle.get()), h = heif_image_handle_get_height(handle.get());
    if (!PictureSizeAllowed(w, h) ||
        !PictureSizeAllowed(heif_image_handle_get_ispe_width(handle.get()),
                            heif_image_handle_get_ispe_height(handle.get())))
        return false;
    std::unique_ptr<heif_decoding_options, OptionsFree> options(heif_decoding_options_alloc());
    heif_image* decoded = nullptr;
    if (heif_decode_image(handle.get(), &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA,
                          options.get()).code != heif_error_Ok)
        return false;
    std::unique_ptr<heif_image, ImageFree> image(decoded);
    int stride = 0;
    const uint8_t* plane = heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride);
    const int iw = heif_image_get_width(image.get(), heif_channel_interleaved);
    const int ih = heif_image_get_height(image.get(), heif_channel_interleaved);
    DecodedPicture pic;
    if (!plane || !PictureSizeAllowed(iw, ih) || stride < iw * 4 || !pic.pixels.Create(iw, ih)) return false;
    for (int y = 0; y < ih; ++y) {
        const uint8_t* in = plane + static_cast<ptrdiff_t>(y) * stride;
        uint8_t* o = pic.pixels.Row(y);
        for (int x = 0; x < iw; ++x, in += 4, o += 4) {
            // Transparent parts show on black, as in the other decoders.
            o[0] = static_cast<uint8_t>((in[2] * in[3] + 127) / 255);
            o[1] = static_cast<uint8_t>((in[1] * in[3] + 127) / 255);
            o[2] = static_cast<uint8_t>((in[0] * in[3] + 127) / 255);
        }
    }
    pic.bitsPerPixel = heif_image_handle_has_alpha_channel(handle.get()) ? 32 : 24;
    out = std::move(pic);
    return true;
}

}  // namespace quorbel
