#include <gtest/gtest.h>

#include "Pictures.h"
#include "imaging/ui/DibImage.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

TEST(DibImage, ScreenCopyIsTopDownWithTheBuffersColours) {
    // Memory is bottom-up: a copy that forgot would show row 2 on top.
    const cDib d = Make(2, 3, [](int x, int y) { return Rgb(uint8_t(10 + x), uint8_t(20 * y), uint8_t(200 + y)); });
    const QImage image = ToQImage(d);
    ASSERT_EQ(image.size(), QSize(2, 3));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 2; ++x) EXPECT_EQ(image.pixel(x, y), qRgb(10 + x, 20 * y, 200 + y)) << x << "," << y;
    EXPECT_TRUE(ToQImage(cDib{}).isNull());
    // And back, from the screen's format or any other: the same pixels (the fourth byte
    // opaque, as the screen copy has it), empty for nothing.
    const cDib opaque = Make(2, 3, [&d](int x, int y) { return Px{At(d, x, y).b, At(d, x, y).g, At(d, x, y).r, 0xFF}; });
    EXPECT_TRUE(Same(FromQImage(image), opaque));
    EXPECT_TRUE(Same(FromQImage(image.convertToFormat(QImage::Format_RGB888)), opaque));
    EXPECT_FALSE(FromQImage(QImage()).hDIB());
}

TEST(DibImage, ColourValuesKeepRedInTheLowByte) {
    const ColorRef c = RGBColor(10, 20, 30);
    EXPECT_EQ(ToQColor(c), QColor(10, 20, 30));
    EXPECT_EQ(ToColorRef(QColor(10, 20, 30)), 0x1E140Au);
    const cDib d = Make(2, 2, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 7); });
    EXPECT_EQ(PixelColour(d, 1, 0), RGBColor(1, 0, 7));
}

TEST(DibImage, PreviewFitsTheBoxKeepingTheShapeAndAverages) {
    const cDib wide = Flat(1000, 500, Grey(5));
    const cDib p = MakePreview(wide, 480, 360);
    EXPECT_EQ(p.Width(), 480);
    EXPECT_EQ(p.Height(), 240);
    const cDib tall = MakePreview(Flat(300, 900, Grey(5)), 480, 360);
    EXPECT_EQ(tall.Width(), 120);
    EXPECT_EQ(tall.Height(), 360);

    // Columns of black and white halved: each preview pixel is the average of two, not
    // one of them picked.
    const cDib stripes = Make(960, 2, [](int x, int) { return Grey(x % 2 ? 255 : 0); });
    const cDib half = MakePreview(stripes, 480, 360);
    ASSERT_EQ(half.Width(), 480);
    ASSERT_EQ(half.Height(), 1);
    for (int x : {0, 1, 239, 479}) {
        EXPECT_GE(At(half, x, 0).g, 127);
        EXPECT_LE(At(half, x, 0).g, 128);
    }

    // A picture that fits is shown as it is.
    const cDib small = Noisy(100, 50);
    EXPECT_TRUE(Same(MakePreview(small, 480, 360), small));
    EXPECT_FALSE(MakePreview(cDib{}, 480, 360).hDIB());
}

}  // namespace
}  // namespace quorbel
