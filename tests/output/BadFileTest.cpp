// Broken files made from good ones: every decoder must refuse them cleanly (no picture,
// no crash) and refuse header bombs before allocating.
#include <gtest/gtest.h>
#include <zlib.h>

#include <chrono>
#include <climits>

#include "BmpFile.h"
#include "Pictures.h"
#include "output/Codecs.h"
#include "output/JpegCodec.h"

namespace quorbel {
namespace {

using namespace test;

void Put32BE(std::vector<uint8_t>& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = uint8_t(v >> (24 - 8 * i));
}

// Sets a PNG's size and mends the header chunk's checksum, so only the size is wrong.
std::vector<uint8_t> PngOfSize(std::vector<uint8_t> png, uint32_t w, uint32_t h) {
    Put32BE(png, 16, w);
    Put32BE(png, 20, h);
    Put32BE(png, 29, static_cast<uint32_t>(crc32(0, png.data() + 12, 17)));
    return png;
}

std::vector<std::vector<uint8_t>> GoodFiles() {
    cDib picture = Gradient(37, 23);
    std::vector<std::vector<uint8_t>> files(5);
    EncodePng(picture, files[0]);
    EncodeTiff(picture, 6, 24, files[1]);
    EncodeGif(picture, files[2]);
    EncodeBmp(picture, files[3]);
    EncodeJpeg(picture.View(), 80, files[4]);
    return files;
}

TEST(BadFiles, TruncatedFilesOfEveryFormatGiveNoPicture) {
    for (const auto& good : GoodFiles()) {
        ASSERT_GT(good.size(), 64u);
        DecodedPicture whole;
        ASSERT_TRUE(DecodePicture(good, whole));
        for (size_t cut : {size_t(0), size_t(1), size_t(7), size_t(30), good.size() / 2, good.size() - 40}) {
            DecodedPicture out;
            EXPECT_FALSE(DecodePicture(std::span(good).first(cut), out)) << int(good[0]) << " cut " << cut;
            EXPECT_FALSE(out.pixels.hDIB());
        }
    }
}

TEST(BadFiles, FlippedHeaderBytesNeverCrash) {
    // Whatever a flipped byte does to the picture, the decoders must come back.
    int decoded = 0, refused = 0;
    for (const auto& good : GoodFiles())
        for (size_t at = 0; at < std::min<size_t>(good.size(), 80); ++at)
            for (uint8_t flip : {uint8_t(0xFF), uint8_t(0x80), uint8_t(0x01)}) {
                std::vector<uint8_t> bad = good;
                bad[at] ^= flip;
                DecodedPicture out;
                (DecodePicture(bad, out) ? decoded : refused)++;
            }
    EXPECT_GT(refused, 0);
    EXPECT_GT(decoded, 0);
}

TEST(BadFiles, ZeroAndHugeDimensionsAreRefusedFast) {
    const auto files = GoodFiles();
    std::vector<std::vector<uint8_t>> bombs;
    bombs.push_back(PngOfSize(files[0], 0, 23));
    bombs.push_back(PngOfSize(files[0], 65535, 65535));
    bombs.push_back(PngOfSize(files[0], 100000, 100000));
    std::vector<uint8_t> bmp = files[3];
    Put32(bmp, 18, 65535), Put32(bmp, 22, 65535);
    bombs.push_back(bmp);
    Put32(bmp, 18, 0);
    bombs.push_back(bmp);
    Put32(bmp, 18, 37), Put32(bmp, 22, 0x80000000u);  // height INT_MIN
    bombs.push_back(bmp);
    std::vector<uint8_t> gif = files[2];  // logical screen 65535 × 65535
    gif[6] = gif[7] = gif[8] = gif[9] = 0xFF;
    bombs.push_back(gif);
    std::vector<uint8_t> tiff = files[1];  // first entries of the directory: width, length
    const uint32_t ifd = tiff[4] | tiff[5] << 8 | tiff[6] << 16 | uint32_t(tiff[7]) << 24;
    ASSERT_EQ(tiff[ifd + 2], 0x00);  // tag 256, image width
    ASSERT_EQ(tiff[ifd + 3], 0x01);
    Put32(tiff, ifd + 2 + 8, 65535);
    Put32(tiff, ifd + 2 + 12 + 8, 65535);
    bombs.push_back(tiff);

    for (size_t i = 0; i < bombs.size(); ++i) {
        DecodedPicture out;
        const auto t0 = std::chrono::steady_clock::now();
        EXPECT_FALSE(DecodePicture(bombs[i], out)) << i;
        const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
        EXPECT_LT(ms, 50.0) << i;
    }
}

// A 8-bit BMP with the given palette count field and a 2 × 1 picture.
std::vector<uint8_t> Bmp8(uint32_t paletteCount, uint32_t storedEntries) {
    return BmpFile(2, 1, 8, 0, paletteCount, storedEntries * 4, 4);
}

TEST(BadFiles, BmpPalettesAndMasksAreChecked) {
    DecodedPicture out;
    EXPECT_TRUE(DecodeBmp(Bmp8(2, 2), out));
    EXPECT_FALSE(DecodeBmp(Bmp8(1u << 20, 2), out));  // more entries than 8 bits can index
    EXPECT_FALSE(DecodeBmp(Bmp8(256, 2), out));      // palette runs past the end of the file

    // 32-bit with bit fields whose green mask is zero.
    std::vector<uint8_t> b = BmpFile(1, 1, 32, 3, 0, 12, 4);
    Put32(b, 54, 0xFF0000), Put32(b, 58, 0), Put32(b, 62, 0xFF);
    EXPECT_FALSE(DecodeBmp(b, out));
    Put32(b, 58, 0xFF00);
    Put32(b, 66, 0x00336699);
    ASSERT_TRUE(DecodeBmp(b, out));
    EXPECT_EQ(out.pixels.Row(0)[0], 0x99);
    EXPECT_EQ(out.pixels.Row(0)[2], 0x33);
    Put32(b, 10, 1000);  // pixel data offset past the end
    EXPECT_FALSE(DecodeBmp(b, out));
}

TEST(BadFiles, IconDirectoriesAreChecked) {
    std::vector<uint8_t> ico = {0, 0, 1, 0, 0xFF, 0xFF};  // 65535 entries, none present
    DecodedPicture out;
    EXPECT_FALSE(DecodePicture(ico, out));
    ico = {0, 0, 1, 0, 1, 0, 16, 16, 0, 0, 1, 0, 32, 0, 0, 1, 0, 0, 22, 0, 0, 0};  // data past the end
    EXPECT_FALSE(DecodePicture(ico, out));
    EXPECT_FALSE(DecodePicture(std::vector<uint8_t>(300, 0x5A), out));  // random bytes
}

}  // namespace
}  // namespace quorbel
