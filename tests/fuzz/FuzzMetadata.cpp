// libFuzzer target for the metadata path: the loader's own EXIF walk, reading a file's
// metadata, and writing what was read into a small JPEG. Bad metadata may be left out; it
// must never crash, hang or leak.
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/cDib.h"
#include "metadata/ExifFacts.h"
#include "metadata/PictureMetadata.h"
#include "output/JpegCodec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::vector<uint8_t> kJpeg = [] {
        quorbel::cDib d;
        d.Create(8, 8);
        std::vector<uint8_t> out;
        quorbel::EncodeJpeg(d.View(), 80, out);
        return out;
    }();
    const std::span<const uint8_t> bytes(data, size);
    (void)quorbel::ParseExifBlock(bytes);
    const quorbel::SourceMetadata metadata = quorbel::ReadMetadata(bytes);
    std::vector<uint8_t> jpeg = kJpeg;
    quorbel::WriteMetadata(metadata, jpeg, 8, 8, {.removeGps = true});
    return 0;
}
