// libFuzzer target for one picture decoder, chosen at build time with QUORBEL_FUZZ_DECODER.
// A decoder may refuse anything; it must never crash, hang, leak or read out of bounds,
// and what it accepts must be a picture of the size it claims.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "output/Codecs.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quorbel::DecodedPicture picture;
    if (quorbel::QUORBEL_FUZZ_DECODER(std::span<const uint8_t>(data, size), picture)) {
        const quorbel::cDib& d = picture.pixels;
        if (!d.hDIB() || d.Width() <= 0 || d.Height() <= 0) std::abort();
        // Touch the first and last row: a buffer smaller than claimed shows up here.
        volatile uint8_t sink = d.Row(0)[0] ^ d.Row(d.Height() - 1)[d.Width() * 4 - 1];
        (void)sink;
        if (picture.bitsPerPixel <= 8 && !picture.indices.empty() &&
            picture.indices.size() != static_cast<size_t>(d.Width()) * d.Height())
            std::abort();
    }
    return 0;
}
