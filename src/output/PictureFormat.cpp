#include "output/PictureFormat.h"

#include <cstring>

namespace quorbel {

namespace {
bool StartsWith(std::span<const uint8_t> bytes, const char* magic, size_t n) {
    return bytes.size() >= n && std::memcmp(bytes.data(), magic, n) == 0;
}
}  // namespace

PictureFormat DetectPictureFormat(std::span<const uint8_t> bytes) {
    if (StartsWith(bytes, "\xFF\xD8\xFF", 3)) return PictureFormat::Jpeg;
    if (StartsWith(bytes, "\x89PNG\r\n\x1A\n", 8)) return PictureFormat::Png;
    if (StartsWith(bytes, "GIF87a", 6) || StartsWith(bytes, "GIF89a", 6)) return PictureFormat::Gif;
    if (StartsWith(bytes, "II*\0", 4) || StartsWith(bytes, "MM\0*", 4) ||
        StartsWith(bytes, "II+\0", 4) || StartsWith(bytes, "MM\0+", 4))
        return PictureFormat::Tiff;
    if (StartsWith(bytes, "BM", 2)) return PictureFormat::Bmp;
    // Icons (type 1) and cursors (type 2): reserved word 0, type, a non-zero count.
    if (bytes.size() >= 6 && bytes[0] == 0 && bytes[1] == 0 && (bytes[2] == 1 || bytes[2] == 2) &&
        bytes[3] == 0 && (bytes[4] | bytes[5]) != 0)
        return PictureFormat::Ico;
    return PictureFormat::Unknown;
}

}  // namespace quorbel
