#include "output/ColourProfile.h"

#include <lcms2.h>

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

}  // namespace

bool ConvertToSrgb(cDib& pixels, std::span<const uint8_t> icc) {
    if (!pixels.hDIB() || icc.empty()) return false;
    // A context of its own per call: the library's error handler is silenced, and batch
    // threads share nothing.
    std::unique_ptr<_cmsContext_struct, void (*)(cmsContext)> ctx(cmsCreateContext(nullptr, nullptr), cmsDeleteContext);
    if (!ctx) return false;
    cmsSetLogErrorHandlerTHR(ctx.get(), [](cmsContext, cmsUInt32Number, const char*) {});
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

}  // namespace quorbel
