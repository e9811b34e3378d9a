// WebP, AVIF and HEIC: found by content, round trips, the containers' own orientation.
#include <gtest/gtest.h>

#include "Pictures.h"
#include "output/Codecs.h"
#include "output/PictureFormat.h"

namespace quorbel {
namespace {

TEST(ModernCodecs, FormatFoundByContent) {
    // Exactly the literal's bytes, without its final NUL.
    auto bytes = [](const auto& s) { return std::vector<uint8_t>(s, s + sizeof(s) - 1); };
    EXPECT_EQ(DetectPictureFormat(bytes("RIFF\0\0\0\0WEBPVP8 ")), PictureFormat::Webp);
    EXPECT_EQ(DetectPictureFormat(bytes("RIFF\0\0\0\0WAVEfmt ")), PictureFormat::Unknown);
    EXPECT_EQ(DetectPictureFormat(bytes("\0\0\0\x18" "ftypavif\0\0\0\0mif1miaf")), PictureFormat::Avif);
    // A HEIF major brand with AVIF among the compatible ones is an AVIF.
    EXPECT_EQ(DetectPictureFormat(bytes("\0\0\0\x18" "ftypmif1\0\0\0\0avifmiaf")), PictureFormat::Avif);
    EXPECT_EQ(DetectPictureFormat(bytes("\0\0\0\x18" "ftypheic\0\0\0\0mif1heic")), PictureFormat::Heif);
    EXPECT_EQ(DetectPictureFormat(bytes("\0\0\0\x18" "ftypisom\0\0\0\0mp41isom")), PictureFormat::Unknown);
}

TEST(ModernCodecs, WebpAndAvifRoundTripUprightAndClose) {
    const cDib source = test::Gradient(64, 48);
    auto avif = [](const cDib& d, int q, std::vector<uint8_t>& o) { return EncodeAvif(d, q, o); };
    for (bool (*encode)(const cDib&, int, std::vector<uint8_t>&) : {+EncodeWebp, +avif}) {
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(encode(source, 90, bytes));
        DecodedPicture back;
        ASSERT_TRUE(DecodePicture(bytes, back));
        EXPECT_LT(test::MeanDiff(source, back.pixels), 6.0);  // a flipped picture is off by ~100
        // Truncated files are refused.
        bytes.resize(bytes.size() / 2);
        EXPECT_FALSE(DecodePicture(bytes, back));
    }
}

}  // namespace
}  // namespace quorbel
