#include <gtest/gtest.h>

#include <iterator>

#include "BmpFile.h"
#include "Pictures.h"
#include "Scratch.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/PictureFormat.h"
#include "output/Quantiser.h"

namespace quorbel {
namespace {

using namespace test;

TEST(Codecs, LosslessFormatsRoundTripExactlyAndAreFoundByContent) {
    cDib picture = Gradient(37, 23);  // odd width: padded rows in BMP
    std::vector<uint8_t> png, tiff, lzw, bmp;
    ASSERT_TRUE(EncodePng(picture, png));
    ASSERT_TRUE(EncodeTiff(picture, 6, 24, tiff));
    ASSERT_TRUE(EncodeTiff(picture, 2, 24, lzw));
    ASSERT_TRUE(EncodeBmp(picture, bmp));
    EXPECT_EQ(bmp.size(), 54u + 112u * 23);  // rows of 37 × 3 = 111 bytes padded to 112
    EXPECT_GE(tiff.size(), 37u * 23 * 3);    // no compression asked: every byte stored
    EXPECT_EQ(DetectPictureFormat(png), PictureFormat::Png);
    EXPECT_EQ(DetectPictureFormat(tiff), PictureFormat::Tiff);
    EXPECT_EQ(DetectPictureFormat(bmp), PictureFormat::Bmp);
    for (const auto* bytes : {&png, &tiff, &lzw, &bmp}) {
        DecodedPicture out;
        ASSERT_TRUE(DecodePicture(*bytes, out));
        EXPECT_EQ(out.bitsPerPixel, 24);
        EXPECT_EQ(MaxDiff(out.pixels, picture), 0);
    }
}

TEST(Codecs, GifKeepsAFewColoursExactlyAndApproximatesMany) {
    const cDib few = Make(20, 10, [](int x, int y) { return Px{uint8_t(x * 10), uint8_t(y * 20), 7}; });  // 200 colours
    std::vector<uint8_t> gif;
    ASSERT_TRUE(EncodeGif(few, gif));
    DecodedPicture out;
    ASSERT_TRUE(DecodePicture(gif, out));
    EXPECT_EQ(out.bitsPerPixel, 8);
    EXPECT_EQ(MaxDiff(out.pixels, few), 0);
    ASSERT_EQ(out.indices.size(), 200u);
    EXPECT_GE(out.palette.size(), 200u);
    // The index and the palette give the pixel.
    const RgbQuad& c = out.palette[out.indices[5 * 20 + 3]];
    EXPECT_EQ(c.blue, 30);
    EXPECT_EQ(c.green, 100);

    cDib many = Gradient(128, 96);  // about 12,000 colours
    ASSERT_TRUE(EncodeGif(many, gif));
    ASSERT_TRUE(DecodePicture(gif, out));
    EXPECT_LT(MeanDiff(out.pixels, many), 6.0);
    EXPECT_LE(out.palette.size(), 256u);
}

TEST(Codecs, QuantiserKeepsTheAverageColourWithDiffusion) {
    // A flat colour that no 5-bit cell centre hits, next to a ramp, forces real reduction.
    cDib picture = Gradient(300, 200);
    const IndexedPicture ix = ReduceTo256Colours(picture);
    ASSERT_EQ(ix.indices.size(), 300u * 200);
    ASSERT_LE(ix.palette.size(), 256u);
    double before = 0, after = 0;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x) {
            before += picture.Row(y)[x * 4 + 1];
            after += ix.palette[ix.indices[y * 300 + x]].green;
        }
    EXPECT_NEAR(after / before, 1.0, 0.01);
}

// A hand-made 8-bit run-length BMP, 4 × 2: bottom row "run of 3 × index 1, then index 2",
// top row "delta right 2, absolute run 1, 0, (padding)".
TEST(Codecs, BmpRunLengthPalettesAndRowOrder) {
    std::vector<uint8_t> b = BmpFile(4, 2, 8, 1, 3, 3 * 4, 0);  // RLE8
    Put32(b, 54, 0x000000), Put32(b, 58, 0x0000FF), Put32(b, 62, 0xFF0000);  // black, blue, red
    const std::vector<uint8_t> rle = {3, 1, 1, 2, 0, 0, 0, 2, 2, 0, 0, 3, 1, 0, 2, 0, 0, 1, 0, 0};
    b.insert(b.end(), rle.begin(), rle.end());
    DecodedPicture out;
    ASSERT_TRUE(DecodeBmp(b, out));
    EXPECT_EQ(out.bitsPerPixel, 8);
    // Top row: two untouched pixels, then "1 0 2" cut to the width: indices 0 0 1 0.
    const std::vector<uint8_t> expected = {0, 0, 1, 0, 1, 1, 1, 2};
    EXPECT_EQ(out.indices, expected);
    EXPECT_EQ(out.pixels.Row(1)[3 * 4 + 2], 0xFF);  // bottom right is red
    EXPECT_EQ(out.pixels.Row(0)[2 * 4 + 0], 0xFF);  // top row, third pixel blue

    // The decoded picture hands its palette and depth on.
    cDib target;
    EXPECT_EQ(target.CreateFromStdPicture(&out), 8);
}

TEST(Codecs, OneBitTopDownBmpAndFourBitPalette) {
    // 1-bit, 3 × 2, top-down: top row 1 0 1, bottom row 0 1 0.
    std::vector<uint8_t> b = BmpFile(3, -2, 1, 0, 0, 8, 8);
    Put32(b, 58, 0xFFFFFF);
    b[62] = 0b10100000, b[66] = 0b01000000;
    DecodedPicture out;
    ASSERT_TRUE(DecodeBmp(b, out));
    EXPECT_EQ(out.bitsPerPixel, 1);
    EXPECT_EQ(out.indices, (std::vector<uint8_t>{1, 0, 1, 0, 1, 0}));
    EXPECT_EQ(out.pixels.Row(0)[0], 0xFF);
    EXPECT_EQ(out.pixels.Row(1)[0], 0x00);
}

// An icon file with a 2 × 2 32-bit entry and a 4 × 4 PNG entry: the larger one loads.
TEST(Codecs, IconLoadsItsLargestPicture) {
    cDib four = Gradient(4, 4);
    std::vector<uint8_t> png;
    ASSERT_TRUE(EncodePng(four, png));
    std::vector<uint8_t> dib(40 + 2 * 2 * 4 + 2 * 4, 0);
    Put32(dib, 0, 40), Put32(dib, 4, 2), Put32(dib, 8, 4);
    dib[12] = 1, dib[14] = 32;
    std::vector<uint8_t> ico = {0, 0, 1, 0, 2, 0};
    auto entry = [&](uint8_t side, size_t size, size_t offset) {
        std::vector<uint8_t> e(16, 0);
        e[0] = e[1] = side;
        e[6] = 32;
        Put32(e, 8, static_cast<uint32_t>(size));
        Put32(e, 12, static_cast<uint32_t>(offset));
        ico.insert(ico.end(), e.begin(), e.end());
    };
    entry(2, dib.size(), 6 + 32);
    entry(4, png.size(), 6 + 32 + dib.size());
    std::copy(dib.begin(), dib.end(), std::back_inserter(ico));
    std::copy(png.begin(), png.end(), std::back_inserter(ico));
    DecodedPicture out;
    ASSERT_TRUE(DecodePicture(ico, out));
    EXPECT_EQ(out.type, PictureType::Bitmap);
    EXPECT_EQ(MaxDiff(out.pixels, four), 0);

    ico[6 + 16] = ico[6 + 17] = 1;  // now the 32-bit entry is the larger one
    ASSERT_TRUE(DecodePicture(ico, out));
    EXPECT_EQ(out.pixels.Width(), 2);
    EXPECT_EQ(out.bitsPerPixel, 32);
}

TEST(Codecs, CorpusFilesOfOtherFormatsLoad) {
    const char* corpus = Corpus();
    if (!corpus) GTEST_SKIP() << "corpus not present";
    for (const char* name : {"mate-Blinds.png", "plasma-DarkestHour.tif"}) {
        std::vector<uint8_t> bytes;
        ASSERT_FALSE(ReadWholeFile(std::filesystem::path(corpus) / name, bytes));
        DecodedPicture out;
        EXPECT_TRUE(DecodePicture(bytes, out)) << name;
        EXPECT_GT(out.pixels.Width(), 100) << name;
    }
}

}  // namespace
}  // namespace quorbel
