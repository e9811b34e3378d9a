#include <gtest/gtest.h>

#include <cstring>

#include "core/PixelMemory.h"

namespace quorbel {

TEST(PixelMemory, SmallAndLargeBlocksAreZeroedEvenWhenMemoryIsReused) {
    for (size_t bytes : {size_t(64), size_t(5) << 20, (size_t(9) << 20) + 123}) {
        for (int round = 0; round < 2; ++round) {
            uint8_t* p = AllocatePixels(bytes);
            ASSERT_NE(p, nullptr);
            EXPECT_EQ(p[0], 0);
            EXPECT_EQ(p[bytes / 2], 0);
            EXPECT_EQ(p[bytes - 1], 0);
            std::memset(p, 0xAB, bytes);  // dirty it: the next round must not see this
            FreePixels(p, bytes);
        }
    }
    uint8_t* big = AllocatePixels(size_t(6) << 20);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(big) % (size_t(2) << 20), 0u);  // huge-page aligned
    FreePixels(big, size_t(6) << 20);
}

}  // namespace quorbel
