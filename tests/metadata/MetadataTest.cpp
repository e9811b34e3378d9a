// Camera metadata and colour profiles carried from a source into outputs, read back with the
// metadata library; bad metadata left out without losing the picture.
#include <gtest/gtest.h>

#include "ExifTestFiles.h"
#include "PhotoFiles.h"
#include "Pictures.h"
#include "metadata/PictureMetadata.h"
#include "output/ColourProfile.h"

#include <turbojpeg.h>

namespace quorbel {
namespace {

std::vector<uint8_t> CameraJpeg() {
    std::vector<uint8_t> jpeg;
    EncodeJpeg(test::Flat(64, 48, {10, 20, 30}).View(), 90, jpeg);
    return test::Edited(jpeg, [](Exiv2::Image& image) {
        image.setExifData(test::CameraExif(6));
        image.iptcData()["Iptc.Application2.Keywords"] = "harbour";
        image.xmpData()["Xmp.xmp.Rating"] = "3";
        Exiv2::DataBuf icc = test::Buf(test::SwappedProfile());
        image.setIccProfile(icc);
    });
}

using Encoder = bool (*)(const cDib&, std::vector<uint8_t>&);
const struct {
    const char* name;
    Encoder encode;
} kOutputs[] = {
    {"jpeg", [](const cDib& d, std::vector<uint8_t>& o) { return EncodeJpeg(d.View(), 90, o) == kJpegOk; }},
    {"png", [](const cDib& d, std::vector<uint8_t>& o) { return EncodePng(d, o); }},
    {"tiff", [](const cDib& d, std::vector<uint8_t>& o) { return EncodeTiff(d, 2, 24, o); }},
    {"webp", [](const cDib& d, std::vector<uint8_t>& o) { return EncodeWebp(d, 90, o); }},
};

// The thumbnail is left out, the size and orientation are the output's.
constexpr const char* kCarried = "Quorcam Q1 2024:05:06 07:08:09 1/250 1 48 64 gps rating 3 harbour swapped";

TEST(Metadata, CarriedIntoEveryOutputTypeWithSizeAndOrientationUpdated) {
    const SourceMetadata source = ReadMetadata(CameraJpeg());
    ASSERT_TRUE(source.HasMetadata());
    EXPECT_EQ(source.Note(), "");
    for (const auto& out : kOutputs) {
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(out.encode(test::Flat(48, 64, {10, 20, 30}), bytes));
        ASSERT_TRUE(WriteMetadata(source, bytes, 48, 64, {})) << out.name;
        DecodedPicture still;
        ASSERT_TRUE(DecodePicture(bytes, still)) << out.name;
        EXPECT_EQ(still.pixels.Width(), 48) << out.name;
        std::string want = kCarried;
        if (std::string(out.name) == "webp") want.replace(want.find("harbour "), 8, "");  // WebP has no place for IPTC
        EXPECT_EQ(test::Facts(bytes), want) << out.name;
    }
}

TEST(Metadata, AvifOutputTakesTheBlocksWhileEncoding) {
    const MetadataBlocks blocks = OutputBlocks(ReadMetadata(CameraJpeg()), 48, 64, {.removeGps = true});
    std::vector<uint8_t> bytes;
    ASSERT_TRUE(EncodeAvif(test::Flat(48, 64, {10, 20, 30}), 80, bytes, &blocks));
    EXPECT_EQ(test::Facts(bytes), "Quorcam Q1 2024:05:06 07:08:09 1/250 1 48 64 rating 3 swapped");
}

// A TIFF's own orientation tag is its EXIF orientation.
TEST(Metadata, TiffOrientationTagTurnsItUpright) {
    const cDib stored = test::Make(30, 20, [](int, int y) { return y < 10 ? test::Rgb(255, 0, 0) : test::Rgb(0, 255, 0); });
    std::vector<uint8_t> tiff;
    ASSERT_TRUE(EncodeTiff(stored, 2, 24, tiff));
    tiff = test::Edited(tiff, [](Exiv2::Image& image) { image.exifData()["Exif.Image.Orientation"] = uint16_t(8); });
    DecodedPicture d;
    ASSERT_TRUE(DecodePicture(tiff, d));
    // Orientation 8 turns it a quarter anticlockwise: the red top becomes the left half.
    EXPECT_EQ(test::MaxDiff(d.pixels, test::Make(20, 30, [](int x, int) { return x < 10 ? test::Rgb(255, 0, 0) : test::Rgb(0, 255, 0); })), 0);
}

TEST(Metadata, RemovingGpsOrEverything) {
    const SourceMetadata source = ReadMetadata(CameraJpeg());
    std::vector<uint8_t> noGps, none;
    ASSERT_TRUE(kOutputs[0].encode(test::Flat(48, 64, {0, 0, 0}), noGps));
    none = noGps;
    ASSERT_TRUE(WriteMetadata(source, noGps, 48, 64, {.removeGps = true}));
    ASSERT_TRUE(WriteMetadata(source, none, 48, 64, {.removeAll = true}));
    EXPECT_EQ(test::Facts(noGps), "Quorcam Q1 2024:05:06 07:08:09 1/250 1 48 64 rating 3 harbour swapped");
    auto b = test::OpenBytes(none);
    EXPECT_TRUE(b->exifData().empty() && b->iptcData().empty() && b->xmpData().empty());
    EXPECT_EQ(test::Facts(none), "swapped");  // colours are not metadata
}

// A damaged EXIF block through the batch: PhonePhotosTest.
TEST(Metadata, BadMetadataIsLeftOutWithANote) {
    std::vector<uint8_t> jpeg, png;
    ASSERT_EQ(EncodeJpeg(test::Flat(16, 16, {1, 2, 3}).View(), 90, jpeg), kJpegOk);
    // A CMYK profile does not describe the RGB pixels the loader hands over.
    std::vector<uint8_t> cmyk = test::SwappedProfile();
    std::memcpy(cmyk.data() + 16, "CMYK", 4);
    const auto cmykJpeg = test::Edited(jpeg, [&cmyk](Exiv2::Image& image) {
        Exiv2::DataBuf icc = test::Buf(cmyk);
        image.setIccProfile(icc, false);
    });
    EXPECT_TRUE(ReadMetadata(cmykJpeg).IccProfile().empty());

    ASSERT_TRUE(EncodePng(test::Flat(16, 16, {1, 2, 3}), png));
    const std::string huge = "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'>" +
                             std::string(10 << 20, ' ') + "</x:xmpmeta><?xpacket end='w'?>";
    png = test::Edited(png, [&huge](Exiv2::Image& image) {
        image.exifData()["Exif.Image.Make"] = "Quorcam";
        image.writeXmpFromPacket(true);
        image.setXmpPacket(huge);
    });
    const SourceMetadata fromHuge = ReadMetadata(png);
    EXPECT_NE(fromHuge.Note(), "");
    EXPECT_TRUE(fromHuge.HasMetadata());  // the EXIF is still good
}

// CMYK JPEGs store their inks inverted, as most editors write them: stored (0, 255, 255, 255)
// is full cyan and no black, which shows as RGB (0, 255, 255); stored (255, 255, 255, 127)
// is no ink and half black: grey 127. A one-row CMYK JPEG of the given inks, four bytes a pixel.
std::vector<uint8_t> CmykJpeg(std::span<const uint8_t> inks) {
    tjhandle tj = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    const int w = int(inks.size() / 4);
    const bool ok = tjCompress2(tj, inks.data(), w, w * 4, 1, TJPF_CMYK, &jpeg, &size, TJSAMP_444, 100, 0) == 0;
    std::vector<uint8_t> bytes(ok ? jpeg : nullptr, ok ? jpeg + size : nullptr);
    tjFree(jpeg);
    tjDestroy(tj);
    return bytes;
}

// A printer's CMYK profile made here: its cyan ink lets 70 % of green through, where simple
// ink arithmetic lets it all through. RGB = (1-C)(1-K), (1-0.3C)(1-M)(1-K), (1-Y)(1-K).
std::vector<uint8_t> InkProfile() {
    cmsHPROFILE srgb = cmsCreate_sRGBProfile(), lab = cmsCreateLab4Profile(nullptr);
    cmsHTRANSFORM toLab = cmsCreateTransform(srgb, TYPE_RGB_DBL, lab, TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC, 0);
    cmsHPROFILE p = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(p, 2.1);
    cmsSetDeviceClass(p, cmsSigOutputClass);
    cmsSetColorSpace(p, cmsSigCmykData);
    cmsSetPCS(p, cmsSigLabData);
    cmsStage* clut = cmsStageAllocCLut16bit(nullptr, 5, 4, 3, nullptr);
    cmsStageSampleCLut16bit(clut, [](const cmsUInt16Number in[], cmsUInt16Number out[], void* toLab) -> cmsInt32Number {
        const double c = in[0] / 65535.0, m = in[1] / 65535.0, y = in[2] / 65535.0, k = in[3] / 65535.0;
        const double rgb[3] = {(1 - c) * (1 - k), (1 - 0.3 * c) * (1 - m) * (1 - k), (1 - y) * (1 - k)};
        cmsCIELab lab;
        cmsDoTransform(toLab, rgb, &lab, 1);
        cmsFloat2LabEncodedV2(out, &lab);
        return 1;
    }, toLab, 0);
    cmsPipeline* lut = cmsPipelineAlloc(nullptr, 4, 3);
    cmsPipelineInsertStage(lut, cmsAT_BEGIN, clut);
    cmsWriteTag(p, cmsSigAToB0Tag, lut);
    cmsWriteTag(p, cmsSigMediaWhitePointTag, cmsD50_XYZ());
    std::vector<uint8_t> bytes = test::ProfileBytes(p);
    cmsPipelineFree(lut);
    cmsDeleteTransform(toLab);
    for (cmsHPROFILE each : {p, srgb, lab}) cmsCloseProfile(each);
    return bytes;
}

// The profile in 1000-byte APP2 pieces, last piece first; piece number `skip` left out.
std::vector<uint8_t> WithProfile(std::vector<uint8_t> jpeg, const std::vector<uint8_t>& icc, size_t skip) {
    const size_t count = (icc.size() + 999) / 1000;
    for (size_t n = 0; n < count; ++n) {
        if (n == skip) continue;
        const size_t len = std::min<size_t>(1000, icc.size() - n * 1000) + 16;
        std::vector<uint8_t> seg = {0xFF, 0xE2, uint8_t(len >> 8), uint8_t(len),
            'I', 'C', 'C', '_', 'P', 'R', 'O', 'F', 'I', 'L', 'E', 0, uint8_t(n + 1), uint8_t(count)};
        seg.insert(seg.end(), icc.begin() + n * 1000, icc.begin() + n * 1000 + len - 16);
        jpeg.insert(jpeg.begin() + 2, seg.begin(), seg.end());
    }
    return jpeg;
}

TEST(ColourProfile, CmykJpegThroughItsOwnProfile) {
    const uint8_t inks[2 * 4] = {0, 255, 255, 255, 255, 255, 255, 127};  // full cyan; no ink and half black
    const std::vector<uint8_t> jpeg = CmykJpeg(inks);
    ASSERT_FALSE(jpeg.empty());
    const std::vector<uint8_t> ink = InkProfile(), garbage(ink.size(), 0x5A);  // ink: 4 pieces
    const struct {
        std::vector<uint8_t> file;
        int green;  // of the cyan: 0.7 × 255 through the profile; 255 by ink arithmetic
    } cases[] = {{WithProfile(jpeg, ink, 99), 178}, {jpeg, 255}, {WithProfile(jpeg, ink, 1), 255},
                 {WithProfile(jpeg, garbage, 99), 255}};
    for (const auto& c : cases) {
        DecodedPicture d;
        ASSERT_TRUE(DecodePicture(c.file, d));
        const uint8_t* p = d.pixels.Row(0);
        EXPECT_GT(p[0], 240);  // blue
        EXPECT_NEAR(p[1], c.green, 10);
        EXPECT_LT(p[2], 30);  // red
        for (int i : {4, 5, 6}) EXPECT_NEAR(p[i], 127, 4) << i;  // half black is grey either way
    }
}

TEST(ColourProfile, ConvertsToSrgbAndRefusesDamagedProfiles) {
    cDib red = test::Flat(4, 4, {0, 0, 255});
    ASSERT_TRUE(ConvertToSrgb(red, test::SwappedProfile()));
    EXPECT_NEAR(red.Row(1)[0], 255, 2);  // the profile's red primary is sRGB's blue
    EXPECT_NEAR(red.Row(1)[2], 0, 2);

    cDib grey = test::Flat(4, 4, {90, 90, 90});
    std::vector<uint8_t> garbage = test::SwappedProfile();
    garbage.resize(60);
    EXPECT_FALSE(ConvertToSrgb(grey, garbage));
    EXPECT_EQ(grey.Row(0)[0], 90);
}

}  // namespace
}  // namespace quorbel
