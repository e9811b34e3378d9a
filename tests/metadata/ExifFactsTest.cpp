// The EXIF walk the loader trusts: damaged blocks are recognised, good ones read.
#include <gtest/gtest.h>

#include "ExifTestFiles.h"
#include "metadata/ExifFacts.h"

namespace quorbel {
namespace {

using test::ExifBlock;

TEST(ExifFacts, DamagedBlocksAreMalformed) {
    const struct {
        const char* what;
        std::vector<uint8_t> block;
    } cases[] = {
        {"orientation 0", test::OrientationBlock(0)},
        {"orientation 9", test::OrientationBlock(9)},
        // 20 ASCII bytes stored at offset 4000, past the 26-byte block.
        {"value past the end", ExifBlock({{0x010F, 2, 20, 4000}})},
        // The EXIF directory pointer leads back to the first directory.
        {"directory loop", ExifBlock({{0x8769, 4, 1, 8}})},
        {"65535 entries", ExifBlock({{0x0112, 3, 1, 1}}, 65535)},
        {"first directory past the end", {'I', 'I', 42, 0, 0xFF, 0xFF, 0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        const ExifFacts f = ParseExifBlock(c.block);
        EXPECT_TRUE(f.malformed) << c.what;
        EXPECT_EQ(f.orientation, 1) << c.what;
    }
}

TEST(ExifFacts, GoodBlockGivesItsOrientation) {
    // Orientation 8 and a 20-byte make stored right after the directory (8 + 2 + 24 + 4 = 38).
    auto block = ExifBlock({{0x010F, 2, 20, 38}, {0x0112, 3, 1, 8}});
    block.resize(block.size() + 20, 'x');
    const ExifFacts f = ParseExifBlock(block);
    EXPECT_TRUE(f.present);
    EXPECT_FALSE(f.malformed);
    EXPECT_EQ(f.orientation, 8);
    // One byte short, the make runs past the end.
    block.pop_back();
    EXPECT_TRUE(ParseExifBlock(block).malformed);
}

}  // namespace
}  // namespace quorbel
