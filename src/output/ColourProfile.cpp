#include "output/ColourProfile.h"

#include <lcms2.h>

#include <cstring>
#include <map>
#include <memory>

namespace quorbel {
namespace {

struct ProfileClose {
    void operator()(void* p) const { cmsCloseProfile(p); }
};
struct TransformDelete {
    void operator()(void* t) const { cmsDeleteTransform(t); }
};
using Profile = std::unique_ptr<void, ProfileClose>;
using Context = std::unique_ptr<_cmsContext_struct, void (*)(cmsContext)>;

// A context of its own per call: the library's error handler is silenced, and batch threads
// share nothing.
Context QuietContext() {
    Context ctx(cmsCreateContext(nullptr, nullptr), cmsDeleteContext);
    if (ctx) cmsSetLogErrorHandlerTHR(ctx.get(), [](cmsContext, cmsUInt32Number, const char*) {});
    return ctx;
}

bool StartsWith(std::span<const uint8_t> data, const char* tag, size_t n) {
    return data.size() >= n && std::memcmp(data.data(), tag, n) == 0;
}

}  // namespace

bool ConvertToSrgb(cDib& pixels, std::span<const uint8_t> icc) {
    if (!pixels.hDIB() || icc.empty()) return false;
    const Context ctx = QuietContext();
    if (!ctx) return false;
    Profile source(cmsOpenProfileFromMemTHR(ctx.get(), icc.data(), static_cast<cmsUInt32Number>(icc.size())));
    Profile srgb(cmsCreate_sRGBProfileTHR(ctx.get()));
    if (!source || !srgb || cmsGetColorSpace(source.get()) != cmsSigRgbData) return false;
    std::unique_ptr<void, TransformDelete> transform(
        cmsCreateTransformTHR(ctx.get(), source.get(), TYPE_BGRA_8, srgb.get(), TYPE_BGRA_8, INTENT_PERCEPTUAL,
                              cmsFLAGS_COPY_ALPHA));
    if (!transform) return false;
    for (int y = 0; y < pixels.Height(); ++y)
        cmsDoTransform(transform.get(), pixels.Row(y), pixels.Row(y), static_cast<cmsUInt32Number>(pixels.Width()));
    return true;
}

JpegColour ReadJpegColour(std::span<const uint8_t> jpeg) {
    JpegColour colour;
    std::map<int, std::span<const uint8_t>> pieces;  // by sequence number, from 1
    int count = 0;
    size_t i = 2;  // past the start-of-image marker
    // Marker segments up to the first scan; a length running past the end ends the walk.
    while (i + 4 <= jpeg.size() && jpeg[i] == 0xFF) {
        const uint8_t marker = jpeg[i + 1];
        if (marker == 0xFF) {  // fill byte
            ++i;
            continue;
        }
        if (marker == 0xDA || marker == 0xD9) break;
        const size_t length = size_t(jpeg[i + 2]) << 8 | jpeg[i + 3];
        if (length < 2 || i + 2 + length > jpeg.size()) break;
        const auto data = jpeg.subspan(i + 4, length - 2);
        if (marker == 0xEE && StartsWith(data, "Adobe", 5)) colour.adobe = true;
        if (marker == 0xE2 && StartsWith(data, "ICC_PROFILE", 12) && data.size() > 14 && data[12] > 0) {
            if (count != 0 && count != data[13]) return colour;  // pieces that disagree: no profile
            count = data[13];
            pieces[data[12]] = data.subspan(14);
        }
        i += 2 + length;
    }
    if (count == 0 || static_cast<int>(pieces.size()) != count || pieces.rbegin()->first != count) return colour;
    for (const auto& [number, piece] : pieces) colour.icc.insert(colour.icc.end(), piece.begin(), piece.end());
    return colour;
}

bool ConvertCmykToSrgb(const uint8_t* cmyk, bool inverted, std::span<const uint8_t> icc, const PixelView& out) {
    if (!cmyk || out.Empty() || icc.empty()) return false;
    const Context ctx = QuietContext();
    if (!ctx) return false;
    Profile source(cmsOpenProfileFromMemTHR(ctx.get(), icc.data(), static_cast<cmsUInt32Number>(icc.size())));
    Profile srgb(cmsCreate_sRGBProfileTHR(ctx.get()));
    if (!source || !srgb || cmsGetColorSpace(source.get()) != cmsSigCmykData) return false;
    // The _REV form reads Adobe's inverted ink (255 = none).
    const cmsUInt32Number in = inverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8;
    const cmsUInt32Number outFormat = out.format == PixelFormat::Bgrx32 ? TYPE_BGRA_8 : TYPE_BGR_8;
    std::unique_ptr<void, TransformDelete> transform(
        cmsCreateTransformTHR(ctx.get(), source.get(), in, srgb.get(), outFormat, INTENT_PERCEPTUAL, 0));
    if (!transform) return false;
    const size_t rowBytes = static_cast<size_t>(out.width) * 4;
    for (int y = 0; y < out.height; ++y)
        cmsDoTransform(transform.get(), cmyk + y * rowBytes, out.Row(y), static_cast<cmsUInt32Number>(out.width));
    return true;
}

}  // namespace quorbel
