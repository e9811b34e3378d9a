// libFuzzer target for the whole road of a picture: sniff the format, decode, resize,
// encode as PNG and decode that again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "imaging/ResizeDib.h"
#include "output/Codecs.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quorbel::DecodedPicture picture;
    if (!quorbel::DecodePicture(std::span<const uint8_t>(data, size), picture)) return 0;
    quorbel::cDib& d = picture.pixels;
    const int w = 1 + d.Width() / 3, h = 1 + d.Height() / 2;
    if (!quorbel::ResizeDib(d, w, h, (size & 1) != 0)) std::abort();
    std::vector<uint8_t> png;
    if (!quorbel::EncodePng(d, png)) std::abort();
    quorbel::DecodedPicture back;
    if (!quorbel::DecodePng(png, back) || back.pixels.Width() != w || back.pixels.Height() != h) std::abort();
    return 0;
}
