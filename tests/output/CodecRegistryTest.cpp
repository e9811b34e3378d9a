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

TEST(CodecRegistry, GuidTextParsesFieldByField) {
    Guid g;
    ASSERT_TRUE(CLSIDFromString("{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}", g));
    EXPECT_EQ(g.data1, 0x1D5BE4B5u);
    EXPECT_EQ(g.data2, 0xFA4A);
    EXPECT_EQ(g.data3, 0x452D);
    const uint8_t tail[8] = {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB};
    EXPECT_TRUE(std::equal(tail, tail + 8, g.data4));
    Guid lower;
    ASSERT_TRUE(CLSIDFromString("{1d5be4b5-fa4a-452d-9cdd-5db35105e7eb}", lower));
    EXPECT_EQ(lower, g);
    EXPECT_FALSE(CLSIDFromString("1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB", g));
    EXPECT_FALSE(CLSIDFromString("{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EX}", g));
}

TEST(CodecRegistry, ParameterBlocksPerFormat) {
    const int32_t quality = 90, depth = 24, compression = 6;
    for (int format : {0, 2, 4, 7}) EXPECT_EQ(BuildEncoderParameters(format, quality, depth, compression).count, 0u);

    Guid q, c, d;
    CLSIDFromString("{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}", q);
    CLSIDFromString("{E09D739D-CCD4-44EE-8EBA-3FBF8BE4FC58}", c);
    CLSIDFromString("{66087055-AD66-4C7C-9A18-38A2310B8337}", d);

    const EncoderParameters jpeg = BuildEncoderParameters(1, quality, depth, compression);
    ASSERT_EQ(jpeg.count, 1u);
    EXPECT_EQ(jpeg.parameter[0].guid, q);
    EXPECT_EQ(jpeg.parameter[0].numberOfValues, 1u);
    EXPECT_EQ(jpeg.parameter[0].type, 4u);
    EXPECT_EQ(jpeg.parameter[0].value, &quality);  // points at the argument itself

    const EncoderParameters tiff = BuildEncoderParameters(3, quality, depth, compression);
    ASSERT_EQ(tiff.count, 2u);
    EXPECT_EQ(tiff.parameter[0].guid, c);  // compression first, then colour depth
    EXPECT_EQ(tiff.parameter[0].value, &compression);
    EXPECT_EQ(tiff.parameter[1].guid, d);
    EXPECT_EQ(tiff.parameter[1].value, &depth);
    EXPECT_EQ(tiff.parameter[1].type, 4u);

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
    Guid jpeg, png;
    ASSERT_TRUE(GetEncoderClsid("image/jpeg", jpeg));
    ASSERT_TRUE(GetEncoderClsid("image/png", png));
    EXPECT_NE(jpeg, png);
    EXPECT_FALSE(GetEncoderClsid("image/x-icon", jpeg));
}

TEST_F(RegistryRunning, EveryFormatRoundTrips) {
    cDib picture = Gradient(41, 29);
    cDib few;  // 12 colours: a GIF keeps them exactly
    few.Create(41, 29);
    for (int y = 0; y < 29; ++y)
        for (int x = 0; x < 41; ++x) few.Row(y)[x * 4 + (x + y) % 3] = static_cast<uint8_t>(60 * (x % 4) + 15);
    struct Case {
        int format;
        const char* name;
        cDib* source;
        int maxDiff;
        int bpp;
    } cases[] = {{2, "p n g.png", &picture, 0, 24},
                 {3, "tïff.tif", &picture, 0, 24},
                 {0, "g\xfe.gif", &few, 0, 8},
                 {1, "jpeg.jpg", &picture, 60, 24}};
    for (const Case& c : cases) {
        const std::string file = (dir / c.name).string();
        ASSERT_TRUE(SaveDibGdiplus(*c.source, file, c.format, 95, 24, 6)) << c.name;
        int status = -1;
        auto loaded = LoadPictureGdiplus(file, &status);
        ASSERT_NE(loaded, nullptr) << c.name;
        EXPECT_EQ(status, Ok);
        EXPECT_LE(MaxDiff(loaded->pixels, *c.source), c.maxDiff) << c.name;
        EXPECT_EQ(loaded->bitsPerPixel, c.bpp) << c.name;
    }
    EXPECT_LT(MeanDiff(LoadPictureGdiplus((dir / "jpeg.jpg").string())->pixels, picture), 3.0);

    // BMP has an encoder but no format code of its own.
    Guid bmp;
    ASSERT_TRUE(GetEncoderClsid("image/bmp", bmp));
    ASSERT_EQ(SaveImageToFile(picture, (dir / "b.bmp").string(), bmp, nullptr), Ok);
    EXPECT_EQ(MaxDiff(LoadPictureGdiplus((dir / "b.bmp").string())->pixels, picture), 0);
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
    // A folder that does not exist: no file, still true.
    EXPECT_TRUE(SaveDibGdiplus(picture, (dir / "nowhere" / "a.png").string(), 2, 90, 24, 6));
    EXPECT_FALSE(std::filesystem::exists(dir / "nowhere"));
    // Code 4: no encoder, nothing written, true.
    EXPECT_TRUE(SaveDibGdiplus(picture, (dir / "four.x").string(), 4, 90, 24, 6));
    EXPECT_FALSE(std::filesystem::exists(dir / "four.x"));
    // An empty buffer makes no bitmap, so there is nothing to release: false.
    cDib empty;
    EXPECT_FALSE(SaveDibGdiplus(empty, (dir / "e.png").string(), 2, 90, 24, 6));
    // Replacing works and leaves no temporary files behind.
    EXPECT_TRUE(SaveDibGdiplus(picture, target.string(), 2, 90, 24, 6));
    EXPECT_EQ(ReadBytes(target)[1], 'P');
    int files = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(dir.path)) ++files;
    EXPECT_EQ(files, 1);
}

TEST_F(RegistryRunning, LoadDecidesByContentAndKeepsPalettes) {
    cDib few;
    few.Create(6, 4, 0x0000FF);
    few.Row(1)[8] = 200;
    const auto misnamed = (dir / "really a gif.jpg").string();
    ASSERT_TRUE(SaveDibGdiplus(few, misnamed, 0, 90, 24, 6));
    auto loaded = LoadPictureGdiplus(misnamed);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(MaxDiff(loaded->pixels, few), 0);

    struct Palette : PaletteReceiver {
        std::vector<RgbQuad> entries;
        RgbQuad* SetEntryCount(int n) override {
            entries.resize(static_cast<size_t>(n));
            return entries.data();
        }
    } palette;
    cDib target;
    EXPECT_EQ(target.CreateFromStdPicture(loaded.get(), &palette), 8);
    ASSERT_EQ(palette.entries.size(), 256u);
    EXPECT_TRUE(std::count(palette.entries.begin(), palette.entries.end(), RgbQuad{0, 0, 255, 0}) >= 1);

    int status = 0;
    EXPECT_EQ(LoadPictureGdiplus((dir / "missing.png").string(), &status), nullptr);
    EXPECT_EQ(status, FileNotFound);
    WriteBytes(dir / "empty.png", {});
    EXPECT_EQ(LoadPictureGdiplus((dir / "empty.png").string(), &status), nullptr);
    EXPECT_EQ(status, UnknownImageFormat);
    EXPECT_EQ(LoadPictureGdiplus(dir.path.string(), &status), nullptr);  // a folder
}

}  // namespace
}  // namespace quorbel
