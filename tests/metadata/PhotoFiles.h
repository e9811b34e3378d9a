#pragma once
// Photos as cameras and phones write them, made with the metadata and colour libraries
// directly (not through the code under test), and outputs read back the same way.
#include <exiv2/exiv2.hpp>
#include <lcms2.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "output/Codecs.h"
#include "output/JpegCodec.h"

namespace quorbel::test {

// The library hands out a std::auto_ptr; taken over at once, so no test names that type.
inline std::unique_ptr<Exiv2::Image> OpenBytes(const std::vector<uint8_t>& bytes) {
    std::unique_ptr<Exiv2::Image> image(
        Exiv2::ImageFactory::open(bytes.data(), static_cast<long>(bytes.size())).release());
    image->readMetadata();
    return image;
}

// The file with whatever edit writes into its metadata.
inline std::vector<uint8_t> Edited(const std::vector<uint8_t>& file, const std::function<void(Exiv2::Image&)>& edit) {
    auto image = OpenBytes(file);
    edit(*image);
    image->writeMetadata();
    Exiv2::BasicIo& io = image->io();
    io.seek(0, Exiv2::BasicIo::beg);
    const Exiv2::DataBuf b = io.read(io.size());
    return {b.pData_, b.pData_ + b.size_};
}

// A camera's EXIF: make, model, exposure, date taken, a GPS position, an orientation and a
// small embedded thumbnail.
inline Exiv2::ExifData CameraExif(int orientation) {
    Exiv2::ExifData exif;
    exif["Exif.Image.Make"] = "Quorcam";
    exif["Exif.Image.Model"] = "Q1";
    exif["Exif.Image.Orientation"] = uint16_t(orientation);
    exif["Exif.Photo.DateTimeOriginal"] = "2024:05:06 07:08:09";
    exif["Exif.Photo.ExposureTime"] = Exiv2::URational(1, 250);
    exif["Exif.GPSInfo.GPSLatitudeRef"] = "N";
    exif["Exif.GPSInfo.GPSLatitude"] = "48/1 51/1 24/1";
    cDib thumb;
    thumb.Create(16, 16);
    std::vector<uint8_t> jpeg;
    EncodeJpeg(thumb.View(), 80, jpeg);
    Exiv2::ExifThumb(exif).setJpegThumbnail(jpeg.data(), static_cast<long>(jpeg.size()));
    return exif;
}

inline bool Has(const Exiv2::ExifData& exif, const char* key) { return exif.findKey(Exiv2::ExifKey(key)) != exif.end(); }
inline bool HasGps(const Exiv2::ExifData& exif) {
    for (const auto& d : exif)
        if (d.groupName() == "GPSInfo") return true;
    return false;
}

// The profile's bytes, as a file would hold them.
inline std::vector<uint8_t> ProfileBytes(cmsHPROFILE p) {
    cmsUInt32Number n = 0;
    cmsSaveProfileToMem(p, nullptr, &n);
    std::vector<uint8_t> bytes(n);
    cmsSaveProfileToMem(p, bytes.data(), &n);
    return bytes;
}

// An RGB profile with sRGB's primaries but red and blue exchanged: the profile's pure red is
// sRGB's pure blue, a conversion that can be checked by eye.
inline std::vector<uint8_t> SwappedProfile() {
    cmsCIExyY white;
    cmsWhitePointFromTemp(&white, 6504);
    const cmsCIExyYTRIPLE primaries = {{0.15, 0.06, 1}, {0.30, 0.60, 1}, {0.64, 0.33, 1}};
    cmsToneCurve* gamma = cmsBuildGamma(nullptr, 2.2);
    cmsToneCurve* curves[3] = {gamma, gamma, gamma};
    cmsHPROFILE p = cmsCreateRGBProfile(&white, &primaries, curves);
    std::vector<uint8_t> bytes = ProfileBytes(p);
    cmsCloseProfile(p);
    cmsFreeToneCurve(gamma);
    return bytes;
}

// What a file's metadata says, as one line: the camera fields present, "gps" for any GPS
// data, "thumbnail", the rating, the keywords, and "swapped" or "icc" for a colour profile.
inline std::string Facts(const std::vector<uint8_t>& file) {
    auto image = OpenBytes(file);
    const Exiv2::ExifData& exif = image->exifData();
    std::string s;
    for (const char* key : {"Exif.Image.Make", "Exif.Image.Model", "Exif.Photo.DateTimeOriginal", "Exif.Photo.ExposureTime",
                            "Exif.Image.Orientation", "Exif.Photo.PixelXDimension", "Exif.Photo.PixelYDimension"})
        if (const auto it = exif.findKey(Exiv2::ExifKey(key)); it != exif.end()) s += it->toString() + " ";
    if (HasGps(exif) || Has(exif, "Exif.Image.GPSTag")) s += "gps ";
    if (Has(exif, "Exif.Thumbnail.JPEGInterchangeFormat")) s += "thumbnail ";
    for (const auto& x : image->xmpData())
        if (x.key() == "Xmp.xmp.Rating") s += "rating " + x.toString() + " ";
    for (const auto& i : image->iptcData())
        if (i.key() == "Iptc.Application2.Keywords") s += i.toString() + " ";
    if (const Exiv2::DataBuf* icc = image->iccProfileDefined() ? image->iccProfile() : nullptr)
        s += std::vector<uint8_t>(icc->pData_, icc->pData_ + icc->size_) == SwappedProfile() ? "swapped" : "icc";
    return s;
}

inline Exiv2::DataBuf Buf(const std::vector<uint8_t>& v) { return Exiv2::DataBuf(v.data(), static_cast<long>(v.size())); }

}  // namespace quorbel::test
