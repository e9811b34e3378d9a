#pragma once
// Every picture format the program knows, one row each: its file extensions, the text the
// batch type list shows and job files store, its MIME type, what can be read and written,
// and its encoder. Folder listings, the batch's output types and the codec registry all
// read this table; extensions and type texts are written nowhere else.
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/PictureFormat.h"

namespace quorbel {

class cDib;
struct MetadataBlocks;

// What an encoder may be told; each format reads only what it knows.
struct EncodeSettings {
    int quality = 75;        // JPEG, WebP, AVIF: 0..100
    int compression = 2;     // TIFF: 2 LZW, anything else none
    int colorDepth = 24;     // TIFF: 32 adds an unused fourth sample
    const MetadataBlocks* metadata = nullptr;  // AVIF: metadata put in while encoding
};
using PictureEncoder = bool (*)(const cDib&, const EncodeSettings&, std::vector<uint8_t>&);

struct PictureFormatRow {
    PictureFormat format;
    // Lower case, without the dot, "" after the last. The first is the one written.
    std::array<std::string_view, 4> extensions;
    int listed;  // how many extensions, from the first, a folder listing admits by default
    // How many extensions, from the first, "Keep Original File Type" writes as keptAs (a
    // ".tiff" source has never selected a saver).
    int kept;
    PictureFormat keptAs;
    std::string_view typeText;  // in the batch type list and job files; empty: not offered
    std::string_view mimeType;
    bool readable;
    bool carriesProfile;          // an ICC profile can be embedded
    bool metadataWhileEncoding;   // metadata goes in through EncodeSettings, not afterwards
    PictureEncoder encode;        // nullptr: never written

    std::string_view Extension() const { return extensions[0]; }
};

// Every row, in the order a folder listing's default extensions are given.
std::span<const PictureFormatRow> PictureFormats();
// The row of a format; nullptr for Unknown.
const PictureFormatRow* FormatRow(PictureFormat format);
// The row of the format written with this extension ("jpg", not "jpeg"; any case).
const PictureFormatRow* RowWritingExtension(std::string_view extension);
// The extensions a folder listing admits by default: bmp gif jpg jpeg png tif tiff ico webp
// avif heic heif.
std::vector<std::string_view> ListedExtensions();
// The codec registry's extension text of a format: "*.JPG;*.JPEG;*.JPE;*.JFIF".
std::string ExtensionPattern(const PictureFormatRow& row);

}  // namespace quorbel
