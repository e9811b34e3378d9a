// Pictures whose EXIF orientation is 1..8 load upright, whatever the file type.
#include <gtest/gtest.h>

#include "ExifTestFiles.h"
#include "HeifTestFile.h"
#include "Pictures.h"
#include <avif/avif.h>
#include "output/Codecs.h"
#include "output/JpegCodec.h"
#include "output/Upright.h"

namespace quorbel {
namespace {

constexpr int kBlock = 16;  // each letter a flat 16 × 16 square, so JPEG keeps it
// Stored as "abc" over "def"; what shows upright for each orientation, worked out by hand.
struct Case {
    int orientation;
    int w, h;
    const char* rows;
};
constexpr Case kCases[] = {
    {1, 3, 2, "abcdef"}, {2, 3, 2, "cbafed"}, {3, 3, 2, "fedcba"}, {4, 3, 2, "defabc"},
    {5, 2, 3, "adbecf"}, {6, 2, 3, "daebfc"}, {7, 2, 3, "fcebda"}, {8, 2, 3, "cfbead"},
};

test::Px Colour(char letter) {
    static constexpr test::Px kColours[] = {{0, 0, 255}, {0, 255, 0}, {255, 0, 0}, {0, 255, 255}, {255, 0, 255}, {255, 255, 0}};
    return kColours[letter - 'a'];
}

// Where a letter is stored: "abc" over "def".
std::pair<int, int> StoredAt(char letter) { return {(letter - 'a') % 3, (letter - 'a') / 3}; }

cDib Stored() {
    return test::Make(3 * kBlock, 2 * kBlock, [](int x, int y) { return Colour(char('a' + (y / kBlock) * 3 + x / kBlock)); });
}

// Compares the centre of each square with the expected letter's colour.
void ExpectLetters(const cDib& d, const Case& c, int tolerance) {
    ASSERT_EQ(test::SizeOf(d), std::make_pair(c.w * kBlock, c.h * kBlock));
    for (int i = 0; i < c.w * c.h; ++i) {
        const test::Px got = test::At(d, (i % c.w) * kBlock + kBlock / 2, (i / c.w) * kBlock + kBlock / 2);
        const test::Px want = Colour(c.rows[i]);
        for (auto part : {&test::Px::r, &test::Px::g, &test::Px::b})
            EXPECT_NEAR(got.*part, want.*part, tolerance) << "orientation " << c.orientation << " square " << i;
    }
}

// The turn itself, one pixel a letter, and for a paletted picture its colour indices too
// (index i for stored letter i): everything lands where the table puts its letter.
TEST(Upright, EveryOrientationTurnsEachPixelAndIndexIntoPlace) {
    const cDib stored = test::Numbered(3, 2);
    for (const Case& c : kCases) {
        DecodedPicture picture;
        picture.pixels = test::Copy(stored);
        picture.indices = {0, 1, 2, 3, 4, 5};
        ASSERT_TRUE(TurnUpright(picture, c.orientation));
        const cDib want = test::Make(c.w, c.h, [&](int x, int y) {
            const auto [sx, sy] = StoredAt(c.rows[y * c.w + x]);
            return test::At(stored, sx, sy);
        });
        EXPECT_TRUE(test::Same(picture.pixels, want)) << "orientation " << c.orientation;
        std::vector<uint8_t> indices;
        for (const char* letter = c.rows; *letter; ++letter) indices.push_back(uint8_t(*letter - 'a'));
        EXPECT_EQ(picture.indices, indices) << "orientation " << c.orientation;
    }
    for (int nonsense : {0, 9, -1}) {
        cDib d = test::Copy(stored);
        ASSERT_TRUE(TurnUpright(d, nonsense));
        EXPECT_TRUE(test::Same(d, stored)) << nonsense;
    }
}

TEST(Upright, EveryOrientationOfPngAndJpegLoadsUpright) {
    const cDib stored = Stored();
    std::vector<uint8_t> png, jpeg;
    ASSERT_TRUE(EncodePng(stored, png));
    ASSERT_EQ(EncodeJpeg(stored.View(), 100, jpeg), kJpegOk);
    for (const Case& c : kCases) {
        DecodedPicture fromPng, fromJpeg;
        ASSERT_TRUE(DecodePicture(test::WithPngExif(png, test::OrientationBlock(c.orientation)), fromPng));
        ExpectLetters(fromPng.pixels, c, 0);
        ASSERT_TRUE(DecodePicture(test::WithJpegExif(jpeg, test::OrientationBlock(c.orientation)), fromJpeg));
        ExpectLetters(fromJpeg.pixels, c, 40);
    }
}

// The orientation here is written as the container's rotation and mirror boxes.
TEST(Upright, EveryOrientationOfHeicLoadsUpright) {
    for (const Case& c : kCases) {
        const auto file = test::HeifFile(Stored(), heif_compression_HEVC, c.orientation);
        if (file.empty()) GTEST_SKIP() << "no HEVC encoder";
        DecodedPicture d;
        ASSERT_TRUE(DecodePicture(file, d));
        ExpectLetters(d.pixels, c, 60);
    }
}

// AVIF's boxes: a rotation in anticlockwise quarters, then a mirror (mode 0 exchanges top
// and bottom, 1 left and right). The upright letters are worked out from those words.
TEST(Upright, AvifRotationAndMirrorBoxes) {
    struct AvifCase {
        int angle, mirror;  // mirror -1: no box
        Case upright;
    };
    const AvifCase cases[] = {{1, -1, {0, 2, 3, "cfbead"}}, {3, -1, {0, 2, 3, "daebfc"}},
                              {0, 1, {0, 3, 2, "cbafed"}},  {1, 0, {0, 2, 3, "adbecf"}}};
    const cDib stored = Stored();
    std::vector<uint8_t> plain;
    ASSERT_TRUE(EncodeAvif(stored, 100, plain));
    for (const AvifCase& c : cases) {
        avifDecoder* decoder = avifDecoderCreate();
        avifImage* image = avifImageCreateEmpty();
        ASSERT_EQ(avifDecoderReadMemory(decoder, image, plain.data(), plain.size()), AVIF_RESULT_OK);
        image->transformFlags = (c.angle ? AVIF_TRANSFORM_IROT : 0) | (c.mirror >= 0 ? AVIF_TRANSFORM_IMIR : 0);
        image->irot.angle = static_cast<uint8_t>(c.angle);
        image->imir.mode = static_cast<uint8_t>(std::max(c.mirror, 0));
        avifEncoder* encoder = avifEncoderCreate();
        encoder->minQuantizer = encoder->maxQuantizer = 0;
        avifRWData file = AVIF_DATA_EMPTY;
        ASSERT_EQ(avifEncoderWrite(encoder, image, &file), AVIF_RESULT_OK);
        DecodedPicture d;
        EXPECT_TRUE(DecodePicture(std::span<const uint8_t>(file.data, file.size), d));
        ExpectLetters(d.pixels, c.upright, 60);
        avifRWDataFree(&file);
        avifEncoderDestroy(encoder);
        avifDecoderDestroy(decoder);
        avifImageDestroy(image);
    }
}

}  // namespace
}  // namespace quorbel
