#pragma once
// A photo's EXIF, IPTC and XMP and its colour profile, read from a source file and written
// into the encoded output: the camera, lens, exposure and dates stay with the picture, the
// pixel size and orientation describe the output, and the embedded thumbnail goes (it would
// show the old picture). Bad metadata never stops a picture: it is dropped, with a note.
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quorbel {

struct MetadataOptions {
    bool removeGps = false;  // "Remove location data (GPS)"
    bool removeAll = false;  // "Remove all metadata" (the colour profile stays: it is not metadata)
};

struct MetadataBlocks;

class SourceMetadata {
public:
    SourceMetadata();
    ~SourceMetadata();
    SourceMetadata(SourceMetadata&&) noexcept;
    SourceMetadata& operator=(SourceMetadata&&) noexcept;

    bool HasMetadata() const;  // any EXIF, IPTC or XMP
    const std::vector<uint8_t>& IccProfile() const { return icc_; }  // RGB profiles only
    void SetIccProfile(std::vector<uint8_t> icc) { icc_ = std::move(icc); }
    // Why some or all of the source's metadata was left out; empty when none was.
    const std::string& Note() const { return note_; }

private:
    friend SourceMetadata ReadMetadata(std::span<const uint8_t> file);
    friend bool WriteMetadata(const SourceMetadata&, std::vector<uint8_t>&, int, int, const MetadataOptions&,
                              std::string*);
    friend MetadataBlocks OutputBlocks(const SourceMetadata&, int, int, const MetadataOptions&);
    struct Blocks;
    std::unique_ptr<Blocks> blocks_;
    std::vector<uint8_t> icc_;
    std::string note_;
};

// The output's metadata as raw blocks, for encoders that take them (AVIF): EXIF as a TIFF-form
// block, XMP as a packet, and the colour profile.
struct MetadataBlocks {
    std::vector<uint8_t> exif;
    std::string xmp;
    std::vector<uint8_t> icc;
};

// Reads what the file carries (JPEG, PNG, TIFF, WebP, HEIC, AVIF). Never throws.
SourceMetadata ReadMetadata(std::span<const uint8_t> file);

// Puts the metadata into an encoded JPEG, PNG, TIFF or WebP, describing a width × height
// upright picture. False (encoded unchanged, note set) when the library refused; other
// formats are left as they are and return true.
bool WriteMetadata(const SourceMetadata& metadata, std::vector<uint8_t>& encoded, int width, int height,
                   const MetadataOptions& options, std::string* note = nullptr);

// The blocks WriteMetadata would put into a width × height output; empty ones are left out.
MetadataBlocks OutputBlocks(const SourceMetadata& metadata, int width, int height, const MetadataOptions& options);

}  // namespace quorbel
