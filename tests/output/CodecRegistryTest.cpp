#include <gtest/gtest.h>

#include "Pictures.h"
#include "Scratch.h"
#include "core/MessageBox.h"
#include "output/CodecRegistry.h"

namespace quorbel {
namespace {

using namespace test;

TEST(CodecRegistry, StatusTexts) {
    const std::pair<int, const char*> cases[] = {
        {0, "Unknown GDI+ Error"},  {1, "Generic Error"},  {7, "Win32 Error"},  {13, "Unknown Image Format"},
        {14, "FontFamily Not Found"}, {17, "Unsupported Gdiplus Version"}, {18, "Gdiplus Not Initialized"},
        {20, "Property Not Supported"}, {21, "Unknown GDI+ Error"}, {-1, "Unknown GDI+ Error"}};
    for (const auto& [status, text] : cases) EXPECT_EQ(GdiplusStatusText(status), text) << status;
}

TEST(CodecRegistry, GuidTextParsesFieldByFieldAndParameterBlocksPointAtTheArguments) {
    const Guid quality{0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
    Guid g, lower, compression, depth;
    ASSERT_TRUE(CLSIDFromString("{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}", g));
    ASSERT_TRUE(CLSIDFromString("{1d5be4b5-fa4a-452d-9cdd-5db35105e7eb}", lower));
    EXPECT_EQ(g, quality);
    EXPECT_EQ(lower, quality);
    EXPECT_FALSE(CLSIDFromString("1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB", g));
    EXPECT_FALSE(CLSIDFromString("{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EX}", g));
    CLSIDFromString("{E09D739D-CCD4-44EE-8EBA-3FBF8BE4FC58}", compression);
    CLSIDFromString("{66087055-AD66-4C7C-9A18-38A2310B8337}", depth);

    const int32_t q = 90, bits = 24, lzw = 6;
    for (int format : {0, 2, 4, 7}) EXPECT_EQ(BuildEncoderParameters(format, q, bits, lzw).count, 0u);
    const EncoderParameters jpeg = BuildEncoderParameters(1, q, bits, lzw), tiff = BuildEncoderParameters(3, q, bits, lzw);
    // JPEG: the quality; TIFF: compression, then colour depth; each one long value.
    const std::vector<std::pair<Guid, const void*>> want = {{quality, &q}, {compression, &lzw}, {depth, &bits}};
    ASSERT_EQ(jpeg.count + tiff.count, 3u);
    for (size_t i = 0; i < 3; ++i) {
        const EncoderParameter& p = i ? tiff.parameter[i - 1] : jpeg.parameter[0];
        EXPECT_EQ(std::make_pair(p.guid, p.value), want[i]) << i;
        EXPECT_EQ(std::make_pair(p.numberOfValues, p.type), std::make_pair(1u, 4u)) << i;
    }
    EXPECT_EQ(MimeTypeOfFormat(0), "image/gif");
    EXPECT_EQ(MimeTypeOfFormat(3), "image/tiff");
    EXPECT_EQ(MimeTypeOfFormat(4), "");
}

TEST(CodecRegistry, NothingWorksBeforeStartUp) {
    ASSERT_FALSE(GdiplusRunning());
    uintptr_t token = 99;
    EXPECT_EQ(GdiplusStartup(token, GdiplusStartupInput{.GdiplusVersion = 2}), UnsupportedGdiplusVersion);
    EXPECT_EQ(token, 0u);
    EXPECT_TRUE(ImageEncoders().empty());
    ScratchDir dir;
    cDib picture = Gradient(4, 4);
    EXPECT_FALSE(SaveDibGdiplus(picture, (dir / "a.png").string(), 2, 90, 24, 6));
    int status = 0;
    EXPECT_EQ(LoadPictureGdiplus((dir / "a.png").string(), &status), nullptr);
    EXPECT_EQ(status, GdiplusNotInitialized);
}

class RegistryRunning : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(StartCodecRegistry(token, messages)); }
    void TearDown() override {
        GdiplusShutdown(token);
        EXPECT_FALSE(GdiplusRunning());
    }
    uintptr_t token = 0;
    ScriptedMessageBox messages;
    ScratchDir dir;
};

TEST_F(RegistryRunning, EncodersByMimeType) {
    EXPECT_TRUE(messages.Shown().empty());
    std::vector<std::string> mimes;
    for (const auto& e : ImageEncoders()) mimes.push_back(e.mimeType);
    EXPECT_EQ(mimes, (std::vector<std::string>{"image/bmp", "image/jpeg", "image/gif", "image/tiff", "image/png"}));
    Guid jpeg;
    ASSERT_TRUE(GetEncoderClsid("image/jpeg", jpeg));
    EXPECT_EQ(jpeg, ImageEncoders()[1].clsid);
    EXPECT_FALSE(GetEncoderClsid("image/x-icon", jpeg));
}

// The other formats go through the savers; BMP has an encoder but no format code of its own.
TEST_F(RegistryRunning, BmpSavesThroughItsEncoderAndLoadsBack) {
    cDib picture = Gradient(41, 29);
    Guid bmp;
    ASSERT_TRUE(GetEncoderClsid("image/bmp", bmp));
    ASSERT_EQ(SaveImageToFile(picture, (dir / "b.bmp").string(), bmp, nullptr), Ok);
    int status = -1;
    const auto loaded = LoadPictureGdiplus((dir / "b.bmp").string(), &status);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(status, Ok);
    EXPECT_EQ(MaxDiff(loaded->pixels, picture), 0);
}

TEST_F(RegistryRunning, EncodersReadTheirParameters) {
    cDib flat;
    flat.Create(64, 64, 0x336699);
    ASSERT_TRUE(SaveDibGdiplus(flat, (dir / "none.tif").string(), 3, 90, 24, 6));
    ASSERT_TRUE(SaveDibGdiplus(flat, (dir / "lzw.tif").string(), 3, 90, 24, 2));
    EXPECT_GE(std::filesystem::file_size(dir / "none.tif"), 64u * 64 * 3);
    EXPECT_LT(std::filesystem::file_size(dir / "lzw.tif"), 64u * 64);
    cDib picture = Gradient(64, 64);
    ASSERT_TRUE(SaveDibGdiplus(picture, (dir / "q10.jpg").string(), 1, 10, 24, 6));
    ASSERT_TRUE(SaveDibGdiplus(picture, (dir / "q95.jpg").string(), 1, 95, 24, 6));
    EXPECT_LT(std::filesystem::file_size(dir / "q10.jpg"), std::filesystem::file_size(dir / "q95.jpg"));
}

TEST_F(RegistryRunning, TheReleaseDecidesTheResultAndOldFilesSurvive) {
    cDib picture = Gradient(8, 8);
    const auto target = dir / "old.jpg";
    WriteBytes(target, {1, 2, 3, 4});
    // The encoder refuses quality 1000, yet the result is true; the old file is untouched.
    EXPECT_TRUE(SaveDibGdiplus(picture, target.string(), 1, 1000, 24, 6));
    EXPECT_EQ(ReadBytes(target), (std::vector<uint8_t>{1, 2, 3, 4}));
    // A folder that does not exist, or code 4 that has no encoder: no file, still true.
    for (const auto& [name, format] : {std::pair{"nowhere/a.png", 2}, {"four.x", 4}}) {
        EXPECT_TRUE(SaveDibGdiplus(picture, (dir / name).string(), format, 90, 24, 6)) << name;
        EXPECT_FALSE(fs::exists(dir / *fs::path(name).begin())) << name;  // not even the folder
    }
    // An empty buffer makes no bitmap, so there is nothing to release: false.
    cDib empty;
    EXPECT_FALSE(SaveDibGdiplus(empty, (dir / "e.png").string(), 2, 90, 24, 6));
    // Replacing works and leaves no temporary files behind.
    EXPECT_TRUE(SaveDibGdiplus(picture, target.string(), 2, 90, 24, 6));
    EXPECT_EQ(ReadBytes(target)[1], 'P');
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path), {}), 1);
}

TEST_F(RegistryRunning, LoadDecidesByContentAndSaysWhyItFails) {
    cDib few;
    few.Create(6, 4, 0x0000FF);
    few.Row(1)[8] = 200;
    const auto misnamed = (dir / "really a gif.jpg").string();
    ASSERT_TRUE(SaveDibGdiplus(few, misnamed, 0, 90, 24, 6));
    auto loaded = LoadPictureGdiplus(misnamed);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(MaxDiff(loaded->pixels, few), 0);

    EXPECT_EQ(loaded->bitsPerPixel, 8);

    WriteBytes(dir / "empty.png", {});
    const std::pair<fs::path, int> failures[] = {
        {dir / "missing.png", FileNotFound}, {dir / "empty.png", UnknownImageFormat}, {dir.path, FileNotFound}};
    for (const auto& [path, want] : failures) {
        int status = 0;
        EXPECT_EQ(LoadPictureGdiplus(path.string(), &status), nullptr) << path;
        EXPECT_EQ(status, want) << path;
    }
}

}  // namespace
}  // namespace quorbel
