#pragma once
// HEIC and AVIF files made through libheif's encoder, with an orientation (written as the
// container's rotation and mirror boxes) and optionally an EXIF block.
#include <libheif/heif.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "imaging/cDib.h"

namespace quorbel::test {

// Empty when this machine's library has no encoder for the format.
inline std::vector<uint8_t> HeifFile(const cDib& d, heif_compression_format format, int orientation,
                                     const std::vector<uint8_t>& exif = {}) {
    std::vector<uint8_t> bytes;
    heif_context* ctx = heif_context_alloc();
    heif_encoder* encoder = nullptr;
    heif_image* image = nullptr;
    heif_encoding_options* options = heif_encoding_options_alloc();
    if (heif_context_get_encoder_for_format(ctx, format, &encoder).code == heif_error_Ok &&
        heif_image_create(d.Width(), d.Height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image).code ==
            heif_error_Ok &&
        heif_image_add_plane(image, heif_channel_interleaved, d.Width(), d.Height(), 8).code == heif_error_Ok) {
        int stride = 0;
        uint8_t* plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
        for (int y = 0; y < d.Height(); ++y)
            for (int x = 0; x < d.Width(); ++x)
                for (int c = 0; c < 3; ++c) plane[y * stride + x * 3 + c] = d.Row(y)[x * 4 + 2 - c];
        heif_encoder_set_lossy_quality(encoder, 90);
        options->image_orientation = static_cast<heif_orientation>(orientation);
        heif_image_handle* handle = nullptr;
        if (heif_context_encode_image(ctx, image, encoder, options, &handle).code == heif_error_Ok) {
            // The library puts the offset to the block's header in front itself.
            if (!exif.empty()) heif_context_add_exif_metadata(ctx, handle, exif.data(), static_cast<int>(exif.size()));
            heif_writer writer{1, [](heif_context*, const void* data, size_t size, void* out) {
                                   auto* v = static_cast<std::vector<uint8_t>*>(out);
                                   v->insert(v->end(), static_cast<const uint8_t*>(data),
                                             static_cast<const uint8_t*>(data) + size);
                                   return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                               }};
            heif_context_write(ctx, &writer, &bytes);
            heif_image_handle_release(handle);
        }
    }
    heif_encoding_options_free(options);
    if (image) heif_image_release(image);
    if (encoder) heif_encoder_release(encoder);
    heif_context_free(ctx);
    return bytes;
}

}  // namespace quorbel::test
