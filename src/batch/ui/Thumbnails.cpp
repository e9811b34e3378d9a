#include "batch/ui/Thumbnails.h"

#include "imaging/ui/DibImage.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"
#include "output/PictureFormat.h"
#include "output/Upright.h"

namespace quorbel {

cDib LoadSmallPicture(const std::filesystem::path& file, int box) {
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(file, bytes)) return {};
    cDib picture;
    JpegInfo info;
    if (DetectPictureFormat(bytes) == PictureFormat::Jpeg && ReadJpegInfo(bytes, info) == kJpegOk &&
        DecodeJpeg(bytes, picture, JpegScaleDenominator(info.width, info.height, box, box)) == kJpegOk &&
        TurnUpright(picture, FileOrientation(bytes)))
        return MakePreview(picture, box, box);
    DecodedPicture decoded;
    if (!DecodePicture(bytes, decoded) || !decoded.pixels.hDIB()) return {};
    return MakePreview(decoded.pixels, box, box);
}

QImage LoadThumbnail(const std::filesystem::path& file, int box) {
    const cDib picture = LoadSmallPicture(file, box);
    return picture.hDIB() ? ToQImage(picture) : QImage();
}

}  // namespace quorbel
