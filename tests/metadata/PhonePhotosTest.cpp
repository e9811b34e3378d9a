// A folder of phone-style photos through the "Email" job: every output upright, in sRGB,
// without GPS, with the camera data and dates kept; read back with the metadata library.
#include <gtest/gtest.h>

#include <map>

#include "ExifTestFiles.h"
#include "HeifTestFile.h"
#include "PhotoFiles.h"
#include "Pictures.h"
#include "Scratch.h"
#include "batch/BatchRun.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

// Left half red, right half green as stored; or top half red, bottom half green.
cDib Halves(int w, int h, bool leftRight = true) {
    return test::Make(w, h, [=](int x, int y) { return (leftRight ? x < w / 2 : y < h / 2) ? test::Rgb(255, 0, 0) : test::Rgb(0, 255, 0); });
}

std::vector<uint8_t> ExifBytes(const Exiv2::ExifData& exif) {
    Exiv2::Blob blob;
    Exiv2::ExifParser::encode(blob, Exiv2::littleEndian, exif);
    return blob;
}

// The colour at the middle of the top or bottom quarter: 'r', 'g', 'b' or '?'.
char Colour(const cDib& d, bool top) {
    const uint8_t* p = d.Row(top ? d.Height() / 4 : d.Height() * 3 / 4) + d.Width() / 2 * 4;
    if (p[2] > 180 && p[1] < 80 && p[0] < 80) return 'r';
    if (p[1] > 180 && p[2] < 80 && p[0] < 80) return 'g';
    if (p[0] > 180 && p[1] < 80 && p[2] < 80) return 'b';
    return '?';
}

TEST(PhonePhotos, EmailJobOutputsUprightSrgbWithoutGpsWithCameraData) {
    test::ScratchDir in, out;
    const Exiv2::ExifData camera = test::CameraExif(1);
    std::vector<uint8_t> bytes;

    // A portrait JPEG stored on its side (orientation 6) with a profile whose red is sRGB's blue.
    ASSERT_EQ(EncodeJpeg(Halves(1600, 1200).View(), 92, bytes), kJpegOk);
    test::WriteBytes(in.path / "portrait.jpg", test::Edited(bytes, [](Exiv2::Image& image) {
                         image.setExifData(test::CameraExif(6));
                         Exiv2::DataBuf icc = test::Buf(test::SwappedProfile());
                         image.setIccProfile(icc);
                     }));
    // A WebP stored the other way (orientation 8).
    ASSERT_TRUE(EncodeWebp(Halves(320, 240), 90, bytes));
    test::WriteBytes(in.path / "webp-photo.webp",
                     test::Edited(bytes, [](Exiv2::Image& image) { image.setExifData(test::CameraExif(8)); }));
    // HEIC turned by its container (a quarter clockwise), AVIF upright; both with camera EXIF.
    bytes = test::HeifFile(Halves(320, 240), heif_compression_HEVC, 6, ExifBytes(camera));
    if (bytes.empty()) GTEST_SKIP() << "no HEVC encoder";
    test::WriteBytes(in.path / "heic-photo.heic", bytes);
    test::WriteBytes(in.path / "avif-photo.avif", test::HeifFile(Halves(240, 320, false), heif_compression_AV1, 1, ExifBytes(camera)));

    BatchJob job;
    job.type = "Email";
    SetSharingDefaults(job);
    job.source = in.path.string();
    job.target = out.path.string();
    job.preset = "Email Large";
    job.width = 640;
    job.height = 480;
    // "Keep Original File Type": HEIC becomes JPEG, the others keep their type.
    const BatchRunReport report = RunBatch(job, {.threads = 2});
    ASSERT_EQ(report.written, 4) << report.FailureText();
    EXPECT_TRUE(report.notes.empty());

    // Upright: red on top after the turn (the WebP's red ends at the bottom); the JPEG's red
    // was the profile's red, which is sRGB blue.
    const std::map<std::string, std::string> expected = {
        {"portrait.jpg", "bg"}, {"heic-photo.jpg", "rg"}, {"webp-photo.webp", "gr"}, {"avif-photo.avif", "rg"}};
    for (const fs::path& output : report.outputs) {
        const std::string name = output.filename().string();
        SCOPED_TRACE(name);
        const std::vector<uint8_t> file = test::ReadBytes(output);
        DecodedPicture picture;
        ASSERT_TRUE(DecodePicture(file, picture));
        EXPECT_GT(picture.pixels.Height(), picture.pixels.Width());
        if (name == "portrait.jpg") {
            EXPECT_EQ(picture.pixels.Width(), 480);  // 1200 × 1600 into 480 × 640
        }
        ASSERT_EQ(expected.count(name), 1u);
        EXPECT_EQ(std::string({Colour(picture.pixels, true), Colour(picture.pixels, false)}), expected.at(name));

        // What each output keeps and how it is updated: MetadataTest; here, that the batch
        // carries it, without GPS and without a profile (sRGB needs none).
        EXPECT_EQ(test::Facts(file), "Quorcam Q1 2024:05:06 07:08:09 1/250 1 " + std::to_string(picture.pixels.Width()) +
                                         " " + std::to_string(picture.pixels.Height()) + " ");
    }
}

TEST(PhonePhotos, SharingJobsDefaultToNoGpsAndSrgbAndKeepTheChoiceInTheirFile) {
    BatchJob web = BatchJobFromIni(IniFile::FromText("[Job]\nType=Web\n"));
    EXPECT_TRUE(web.removeGps && web.convertToSrgb && !web.removeMetadata);
    const BatchJob resize = BatchJobFromIni(IniFile::FromText("[Job]\nType=Resize\n"));
    EXPECT_FALSE(resize.removeGps || resize.convertToSrgb);
    web.removeGps = false;
    web.removeMetadata = true;
    IniFile ini;
    BatchJobToIni(web, ini);
    const BatchJob back = BatchJobFromIni(ini);
    EXPECT_FALSE(back.removeGps);
    EXPECT_TRUE(back.removeMetadata && back.convertToSrgb);
}

TEST(PhonePhotos, DamagedExifIsLeftOutWithANoteInTheReport) {
    test::ScratchDir in, out;
    std::vector<uint8_t> jpeg;
    ASSERT_EQ(EncodeJpeg(Halves(32, 16).View(), 90, jpeg), kJpegOk);
    test::WriteBytes(in.path / "loop.jpg", test::WithJpegExif(jpeg, test::ExifBlock({{0x8769, 4, 1, 8}})));
    BatchJob job;
    job.source = in.path.string();
    job.target = out.path.string();
    const BatchRunReport report = RunBatch(job);
    EXPECT_EQ(report.written, 1);
    ASSERT_EQ(report.notes.size(), 1u);
    EXPECT_EQ(report.notes[0].source.filename(), "loop.jpg");
    EXPECT_NE(report.notes[0].message, "");
}

}  // namespace
}  // namespace quorbel
