#include "output/PictureFormat.h"

#include <algorithm>
#include <cstring>

namespace quorbel {

namespace {
bool StartsWith(std::span<const uint8_t> bytes, const char* magic, size_t n) {
    return bytes.size() >= n && std::memcmp(bytes.data(), magic, n) == 0;
}
// An ISO media file ("ftyp" box first): AVIF when its major or any compatible brand says so,
// else HEIF for the HEIF and HEVC brands.
PictureFormat IsoBrand(std::span<const uint8_t> bytes) {
    if (bytes.size() < 16 || std::memcmp(&bytes[4], "ftyp", 4) != 0) return PictureFormat::Unknown;
    const size_t box = std::min<size_t>(bytes.size(), size_t(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3]);
    bool heif = false;
    for (size_t at = 8; at + 4 <= box; at += at == 8 ? 8 : 4) {  // major brand, minor version, compatible brands
        const auto brand = bytes.subspan(at, 4);
        if (StartsWith(brand, "avif", 4) || StartsWith(brand, "avis", 4)) return PictureFormat::Avif;
        for (const char* b : {"heic", "heix", "heim", "heis", "hevc", "hevx", "mif1", "msf1"})
            heif = heif || StartsWith(brand, b, 4);
    }
    return heif ? PictureFormat::Heif : PictureFormat::Unknown;
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
    if (StartsWith(bytes, "RIFF", 4) && bytes.size() >= 12 && std::memcmp(&bytes[8], "WEBP", 4) == 0)
        return PictureFormat::Webp;
    if (const PictureFormat f = IsoBrand(bytes); f != PictureFormat::Unknown) return f;
    // Icons (type 1) and cursors (type 2): reserved word 0, type, a non-zero count.
    if (bytes.size() >= 6 && bytes[0] == 0 && bytes[1] == 0 && (bytes[2] == 1 || bytes[2] == 2) &&
        bytes[3] == 0 && (bytes[4] | bytes[5]) != 0)
        return PictureFormat::Ico;
    return PictureFormat::Unknown;
}

}  // namespace quorbel
