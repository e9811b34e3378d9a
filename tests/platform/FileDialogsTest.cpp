#include <gtest/gtest.h>

#include "platform/FileDialogs.h"
#include "platform/ui/QtFileDialogs.h"

namespace quorbel {

TEST(FileDialogs, ClassicFiltersSplitIntoDescriptionsAndPatterns) {
    const auto f = ParseFilter(
        "Supported files|*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.tif|JPEG files (*.jpg, *.jpeg)|*.jpg;*.jpeg|TIFF files (*.tif)|*.tif");
    ASSERT_EQ(f.size(), 3u);
    EXPECT_EQ(f[0].description, "Supported files");
    EXPECT_EQ(f[0].patterns.size(), 6u);
    EXPECT_EQ(f[1].description, "JPEG files (*.jpg, *.jpeg)");
    EXPECT_EQ(f[1].patterns, (std::vector<std::string>{"*.jpg", "*.jpeg"}));
    EXPECT_TRUE(ParseFilter("").empty());
    // Qt reads the patterns from the last parentheses, so the classic names survive intact.
    EXPECT_EQ(QtFilterString(f), "Supported files (*.bmp *.gif *.jpg *.jpeg *.png *.tif);;"
                                 "JPEG files (*.jpg, *.jpeg) (*.jpg *.jpeg);;TIFF files (*.tif) (*.tif)");
}

}  // namespace quorbel
