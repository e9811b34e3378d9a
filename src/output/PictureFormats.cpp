#include "output/PictureFormats.h"

#include "core/text/TextCase.h"
#include "output/Codecs.h"
#include "output/JpegCodec.h"

namespace quorbel {
namespace {

using F = PictureFormat;

bool Jpeg(const cDib& d, const EncodeSettings& s, std::vector<uint8_t>& out) {
    return EncodeJpeg(d.View(), s.quality, out) == kJpegOk;
}
bool Gif(const cDib& d, const EncodeSettings&, std::vector<uint8_t>& out) { return EncodeGif(d, out); }
bool Png(const cDib& d, const EncodeSettings&, std::vector<uint8_t>& out) { return EncodePng(d, out); }
bool Tiff(const cDib& d, const EncodeSettings& s, std::vector<uint8_t>& out) {
    return EncodeTiff(d, s.compression, s.colorDepth, out);
}
bool Bmp(const cDib& d, const EncodeSettings&, std::vector<uint8_t>& out) { return EncodeBmp(d, out); }
bool Webp(const cDib& d, const EncodeSettings& s, std::vector<uint8_t>& out) { return EncodeWebp(d, s.quality, out); }
bool Avif(const cDib& d, const EncodeSettings& s, std::vector<uint8_t>& out) {
    return EncodeAvif(d, s.quality, out, s.metadata);
}

// format, extensions, listed, kept, keptAs, type text, MIME type, readable, carries a
// profile, metadata while encoding, encoder
constexpr PictureFormatRow kRows[] = {
    {F::Bmp, {"bmp", "dib", "rle"}, 1, 1, F::Bmp, "BMP (*.bmp)", "image/bmp", true, false, false, Bmp},
    {F::Gif, {"gif"}, 1, 1, F::Gif, "GIF (*.gif)", "image/gif", true, false, false, Gif},
    {F::Jpeg, {"jpg", "jpeg", "jpe", "jfif"}, 2, 2, F::Jpeg, "JPEG (*.jpg)", "image/jpeg", true, true, false, Jpeg},
    {F::Png, {"png"}, 1, 1, F::Png, "PNG (*.png)", "image/png", true, true, false, Png},
    {F::Tiff, {"tif", "tiff"}, 2, 1, F::Tiff, "TIFF (*.tif)", "image/tiff", true, true, false, Tiff},
    {F::Ico, {"ico"}, 1, 0, F::Unknown, "", "image/x-icon", true, false, false, nullptr},
    {F::Webp, {"webp"}, 1, 1, F::Webp, "WebP (*.webp)", "image/webp", true, true, false, Webp},
    {F::Avif, {"avif"}, 1, 1, F::Avif, "AVIF (*.avif)", "image/avif", true, true, true, Avif},
    // Few programs open HEIC, so a kept HEIC picture is written as JPEG.
    {F::Heif, {"heic", "heif"}, 2, 2, F::Jpeg, "", "image/heif", true, false, false, nullptr},
};

}  // namespace

std::span<const PictureFormatRow> PictureFormats() { return kRows; }

const PictureFormatRow* FormatRow(PictureFormat format) {
    for (const PictureFormatRow& row : kRows)
        if (row.format == format) return &row;
    return nullptr;
}

const PictureFormatRow* RowWritingExtension(std::string_view extension) {
    for (const PictureFormatRow& row : kRows)
        if (row.encode && EqualsIgnoreCase(extension, row.Extension())) return &row;
    return nullptr;
}

std::vector<std::string_view> ListedExtensions() {
    std::vector<std::string_view> list;
    for (const PictureFormatRow& row : kRows)
        for (int i = 0; i < row.listed; ++i) list.push_back(row.extensions[static_cast<size_t>(i)]);
    return list;
}

std::string ExtensionPattern(const PictureFormatRow& row) {
    std::string pattern;
    for (std::string_view e : row.extensions)
        if (!e.empty()) {
            pattern += pattern.empty() ? "*." : ";*.";
            for (char c : e) pattern += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        }
    return pattern;
}

}  // namespace quorbel
