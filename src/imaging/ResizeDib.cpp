#include "imaging/ResizeDib.h"

#include "imaging/Resampler.h"

namespace quorbel {

bool ResizeDib(cDib& picture, int32_t newWidth, int32_t newHeight, bool highQuality) {
    if (!picture.hDIB()) return false;
    cDib scratch;
    if (!scratch.Create(newWidth, newHeight, 0)) return false;
    Resample(picture.View(), scratch.View(), highQuality ? ResampleFilter::Bicubic : ResampleFilter::Nearest);
    // The scratch buffer becomes the picture: the same result as re-creating the picture
    // and copying the scratch into it, without the copy.
    picture.Swap(scratch);
    return true;
}

}  // namespace quorbel
