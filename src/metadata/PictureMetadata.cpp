#include "metadata/PictureMetadata.h"

#include <exiv2/exiv2.hpp>
#include <exiv2/webpimage.hpp>
#include <webp/mux.h>

#include <cstring>
#include <mutex>
#include <stdexcept>
#include <string_view>

#include "metadata/ExifFacts.h"

namespace quorbel {

struct SourceMetadata::Blocks {
    Exiv2::ExifData exif;
    Exiv2::IptcData iptc;
    Exiv2::XmpData xmp;
};

namespace {

// A bigger packet is not a photo's description but something hidden in it.
constexpr size_t kMaxXmpBytes = size_t(1) << 20;

std::mutex& XmpMutex() {
    static std::mutex m;
    return m;
}

// The ICCP chunk through libwebp's own container code, which also sets the header's flag for it.
void SetWebpProfile(std::vector<uint8_t>& webp, const std::vector<uint8_t>& icc) {
    const WebPData in{webp.data(), webp.size()};
    std::unique_ptr<WebPMux, void (*)(WebPMux*)> mux(WebPMuxCreate(&in, 0), WebPMuxDelete);
    const WebPData chunk{icc.data(), icc.size()};
    WebPData out{};
    if (!mux || WebPMuxSetChunk(mux.get(), "ICCP", &chunk, 0) != WEBP_MUX_OK ||
        WebPMuxAssemble(mux.get(), &out) != WEBP_MUX_OK)
        throw std::runtime_error("profile not written");
    webp.assign(out.bytes, out.bytes + out.size);
    WebPDataClear(&out);
}

// The XMP toolkit is shared by the batch's threads: it runs under one lock.
void InitialiseOnce() {
    static std::once_flag once;
    std::call_once(once, [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        Exiv2::enableBMFF(true);
        Exiv2::XmpParser::initialize(
            [](void*, bool lock) {
                if (lock) XmpMutex().lock();
                else XmpMutex().unlock();
            },
            nullptr);
    });
}

// Tags that describe how the source file stored its pixels (or hold blocks written apart):
// the output's encoder writes its own.
constexpr const char* kStorageTags[] = {
    "ImageWidth", "ImageLength", "BitsPerSample", "Compression", "PhotometricInterpretation",
    "StripOffsets", "SamplesPerPixel", "RowsPerStrip", "StripByteCounts", "PlanarConfiguration",
    "Predictor", "ExtraSamples", "SampleFormat", "TileWidth", "TileLength", "TileOffsets",
    "TileByteCounts", "SubIFDs", "JPEGInterchangeFormat", "JPEGInterchangeFormatLength",
    "InterColorProfile", "XMLPacket", "IPTCNAA", "ImageResources", "NewSubfileType"};

bool StartsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

template <class Data, class Pred>
void EraseIf(Data& data, Pred pred) {
    for (auto it = data.begin(); it != data.end();) it = pred(it->key()) ? data.erase(it) : std::next(it);
}

Exiv2::ExifData OutputExif(const Exiv2::ExifData& source, int width, int height, bool removeGps) {
    Exiv2::ExifData exif = source;
    Exiv2::ExifThumb(exif).erase();
    EraseIf(exif, [removeGps](const std::string& key) {
        std::string_view k(key);
        if (removeGps && (StartsWith(k, "Exif.GPSInfo.") || k == "Exif.Image.GPSTag")) return true;
        // Other pages and sub-pictures of the source (thumbnails, previews) are not the output.
        if (StartsWith(k, "Exif.Thumbnail.") || StartsWith(k, "Exif.SubImage") ||
            (StartsWith(k, "Exif.Image") && !StartsWith(k, "Exif.Image.")))
            return true;
        for (const char* tag : kStorageTags)
            if (k == std::string("Exif.Image.") + tag) return true;
        return false;
    });
    if (!exif.empty()) {
        exif["Exif.Image.Orientation"] = uint16_t(1);
        exif["Exif.Photo.PixelXDimension"] = uint32_t(width);
        exif["Exif.Photo.PixelYDimension"] = uint32_t(height);
    }
    return exif;
}

Exiv2::XmpData OutputXmp(const Exiv2::XmpData& source, int width, int height, bool removeGps) {
    Exiv2::XmpData xmp = source;
    if (removeGps) EraseIf(xmp, [](const std::string& key) { return StartsWith(key, "Xmp.exif.GPS"); });
    EraseIf(xmp, [](const std::string& key) { return StartsWith(key, "Xmp.xmp.Thumbnails"); });
    auto update = [&xmp](const char* key, const std::string& value) {
        if (xmp.findKey(Exiv2::XmpKey(key)) != xmp.end()) xmp[key] = value;
    };
    update("Xmp.tiff.Orientation", "1");
    update("Xmp.tiff.ImageWidth", std::to_string(width));
    update("Xmp.tiff.ImageLength", std::to_string(height));
    update("Xmp.exif.PixelXDimension", std::to_string(width));
    update("Xmp.exif.PixelYDimension", std::to_string(height));
    return xmp;
}

}  // namespace

SourceMetadata::SourceMetadata() = default;
SourceMetadata::~SourceMetadata() = default;
SourceMetadata::SourceMetadata(SourceMetadata&&) noexcept = default;
SourceMetadata& SourceMetadata::operator=(SourceMetadata&&) noexcept = default;

bool SourceMetadata::HasMetadata() const {
    return blocks_ && !(blocks_->exif.empty() && blocks_->iptc.empty() && blocks_->xmp.empty());
}

SourceMetadata ReadMetadata(std::span<const uint8_t> file) {
    SourceMetadata m;
    // The library's own walk trusts offsets and counts too far: a damaged block is left out.
    if (ReadExifFacts(file).malformed) {
        m.note_ = "metadata left out: its EXIF is damaged";
        return m;
    }
    InitialiseOnce();
    try {
        auto image = Exiv2::ImageFactory::open(file.data(), static_cast<long>(file.size()));
        if (!image.get()) return m;
        image->readMetadata();
        auto blocks = std::make_unique<SourceMetadata::Blocks>();
        blocks->exif = image->exifData();
        blocks->iptc = image->iptcData();
        if (image->xmpPacket().size() > kMaxXmpBytes) m.note_ = "XMP left out: too large";
        else blocks->xmp = image->xmpData();
        if (image->iccProfileDefined()) {
            const Exiv2::DataBuf* icc = image->iccProfile();
            // The decoders hand over RGB: a CMYK or grey profile describes pixels that are
            // no longer there (a CMYK JPEG is converted on loading), and goes.
            if (icc->size_ < 128) m.note_ = "colour profile left out: it is damaged";
            else if (std::memcmp(icc->pData_ + 16, "RGB ", 4) == 0) m.icc_.assign(icc->pData_, icc->pData_ + icc->size_);
        }
        m.blocks_ = std::move(blocks);
    } catch (const Exiv2::AnyError& e) {
        // A format the library does not know (an icon) simply has no metadata.
        m = SourceMetadata();
        if (e.code() != Exiv2::kerMemoryContainsUnknownImageType) m.note_ = "metadata left out: it could not be read";
    } catch (...) {
        m = SourceMetadata();
        m.note_ = "metadata left out: it could not be read";
    }
    return m;
}

bool WriteMetadata(const SourceMetadata& metadata, std::vector<uint8_t>& encoded, int width, int height,
                   const MetadataOptions& options, std::string* note) {
    const bool tags = metadata.HasMetadata() && !options.removeAll;
    if (!tags && metadata.icc_.empty()) return true;
    InitialiseOnce();
    try {
        auto image = Exiv2::ImageFactory::open(encoded.data(), static_cast<long>(encoded.size()));
        switch (image->imageType()) {
            case Exiv2::ImageType::jpeg:
            case Exiv2::ImageType::png:
            case Exiv2::ImageType::tiff:
            case Exiv2::ImageType::webp: break;
            default: return true;
        }
        if (tags) {
            image->setExifData(OutputExif(metadata.blocks_->exif, width, height, options.removeGps));
            image->setIptcData(metadata.blocks_->iptc);
            image->setXmpData(OutputXmp(metadata.blocks_->xmp, width, height, options.removeGps));
        }
        // Into a plain WebP the library writes the profile under a wrong chunk name, making the
        // file unreadable: WebP profiles go in afterwards, below.
        const bool webp = image->imageType() == Exiv2::ImageType::webp;
        if (!metadata.icc_.empty() && !webp) {
            Exiv2::DataBuf icc(metadata.icc_.data(), static_cast<long>(metadata.icc_.size()));
            image->setIccProfile(icc, false);
        }
        image->writeMetadata();
        Exiv2::BasicIo& io = image->io();
        io.seek(0, Exiv2::BasicIo::beg);
        const Exiv2::DataBuf written = io.read(io.size());
        if (written.size_ <= 0) throw std::runtime_error("nothing written");
        std::vector<uint8_t> result(written.pData_, written.pData_ + written.size_);
        if (webp && !metadata.icc_.empty()) SetWebpProfile(result, metadata.icc_);
        encoded = std::move(result);
        return true;
    } catch (...) {
        if (note) *note = "metadata left out: it could not be written";
        return false;
    }
}

MetadataBlocks OutputBlocks(const SourceMetadata& metadata, int width, int height, const MetadataOptions& options) {
    MetadataBlocks blocks;
    blocks.icc = metadata.icc_;
    if (!metadata.HasMetadata() || options.removeAll) return blocks;
    InitialiseOnce();
    try {
        const Exiv2::ExifData exif = OutputExif(metadata.blocks_->exif, width, height, options.removeGps);
        if (!exif.empty()) Exiv2::ExifParser::encode(blocks.exif, Exiv2::littleEndian, exif);
        const Exiv2::XmpData xmp = OutputXmp(metadata.blocks_->xmp, width, height, options.removeGps);
        if (!xmp.empty()) Exiv2::XmpParser::encode(blocks.xmp, xmp);
    } catch (...) {
        blocks.exif.clear();
        blocks.xmp.clear();
    }
    return blocks;
}

}  // namespace quorbel
