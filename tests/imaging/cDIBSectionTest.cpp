#include <gtest/gtest.h>

#include "core/RuntimeError.h"
#include "imaging/DecodedPicture.h"
#include "imaging/cDIBSection.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

namespace {
void Put(cDIBSection& d, int x, int y, uint8_t b, uint8_t g, uint8_t r) {
    uint8_t* p = d.Row(y) + x * 3;
    p[0] = b, p[1] = g, p[2] = r;
}
std::array<int, 3> Get(const cDIBSection& d, int x, int y) {
    const uint8_t* p = d.Row(y) + x * 3;
    return {p[0], p[1], p[2]};
}
}  // namespace

TEST(cDIBSection, RowsArePaddedToFourBytes) {
    EXPECT_EQ(BytesPerScanLine24(1), 4);
    EXPECT_EQ(BytesPerScanLine24(4), 12);
    EXPECT_EQ(BytesPerScanLine24(5), 16);
    cDIBSection d;
    ASSERT_TRUE(d.Create(5, 3));
    EXPECT_EQ(d.BytesPerScanLine(), 16);
    EXPECT_EQ(d.Header().biBitCount, 24);
    EXPECT_EQ(d.Header().biSizeImage, 48u);
    // Bottom row first in memory.
    EXPECT_EQ(d.Row(2), d.DIBSectionBitsPtr());
    EXPECT_EQ(d.Row(0), d.DIBSectionBitsPtr() + 32);
}

TEST(cDIBSection, BadSizesFailAndOverflowRaises) {
    cDIBSection d;
    EXPECT_FALSE(d.Create(0, 4));
    EXPECT_FALSE(d.Create(4, -1));
    EXPECT_FALSE(d.hDIB());
    EXPECT_THROW(d.Create(800000000, 1), RuntimeError);  // width × 3 overflows
    EXPECT_THROW(d.Create(40000, 40000), RuntimeError);  // height × row bytes overflows
}

TEST(cDIBSection, CreateFromPictureAndPaintPictureCopyThePixels) {
    DecodedPicture pic;
    pic.pixels = Numbered(3, 2);
    cDIBSection d;
    ASSERT_TRUE(d.CreateFromPicture(pic));
    EXPECT_EQ(Get(d, 2, 1), (std::array{2, 1, 3}));
    cDib target;
    target.Create(4, 4, RGBColor(9, 9, 9));
    d.PaintPicture(target.hDC(), 1, 1);
    EXPECT_EQ(At(target, 3, 2), Rgb(3, 1, 2));
    EXPECT_EQ(At(target, 0, 0), Rgb(9, 9, 9));
    // A part of it: width 1 from source column 2.
    d.PaintPicture(target.hDC(), 0, 0, 1, 1, 2, 0);
    EXPECT_EQ(At(target, 0, 0), Rgb(2, 0, 2));
}

TEST(cDIBSection, CopyToClipboardAsADibIsRefusedWithItsMessage) {
    struct Clip : ClipboardTarget {
        bool SetBitmap(const PixelView&) override { return took = true; }
        bool took = false;
    } clip;
    cDIBSection d;
    d.Create(2, 2);
    ClipboardResult r = d.CopyToClipboard(clip);
    EXPECT_FALSE(r.copied);
    EXPECT_EQ(r.message, "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!");
    EXPECT_FALSE(clip.took);
    r = d.CopyToClipboard(clip, false);
    EXPECT_TRUE(r.copied);
    EXPECT_TRUE(r.message.empty());
}

TEST(cDIBSection, RandomiseBitsGreyGivesEqualBytesAndColourDoesNot) {
    Random rnd(42);
    cDIBSection d;
    d.Create(64, 64);
    d.RandomiseBits(true, &rnd);
    int distinct = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const auto p = Get(d, x, y);
            ASSERT_EQ(p[0], p[1]);
            ASSERT_EQ(p[1], p[2]);
            distinct += p[0] != Get(d, 0, 0)[0];
        }
    EXPECT_GT(distinct, 4000);
    d.RandomiseBits(false, &rnd);
    int unequal = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) unequal += Get(d, x, y)[0] != Get(d, x, y)[1];
    EXPECT_GT(unequal, 4000);
}

TEST(cDIBSection, ResampleStepsBySourceMinusOneOverNewSize) {
    // 2 × 1 to 3 × 1: step 1/3, so the columns sample 0, 1/3 and 2/3 of the way: 0, 85, 170.
    cDIBSection d;
    d.Create(2, 1);
    Put(d, 1, 0, 255, 255, 255);
    cDIBSection r = d.Resample(1, 3);
    ASSERT_EQ(r.Width(), 3);
    EXPECT_EQ(Get(r, 0, 0), (std::array{0, 0, 0}));
    EXPECT_EQ(Get(r, 1, 0), (std::array{85, 85, 85}));
    EXPECT_EQ(Get(r, 2, 0), (std::array{170, 170, 170}));
    // The same size is a plain copy, and the source is left as it was.
    EXPECT_EQ(Get(d.Resample(1, 2), 1, 0), (std::array{255, 255, 255}));
    EXPECT_EQ(Get(d, 1, 0), (std::array{255, 255, 255}));
}

TEST(cDIBSection, ResampleRoundsHalvesToEvenInBothSteps) {
    // 3 × 1 to 4 × 1, step 2/4: the second column sits half way between the first two
    // source columns. 1.5 -> 2, 2.5 -> 2, 0.5 -> 0.
    cDIBSection d;
    d.Create(3, 1);
    Put(d, 0, 0, 1, 2, 0);
    Put(d, 1, 0, 2, 3, 1);
    cDIBSection r = d.Resample(1, 4);
    EXPECT_EQ(Get(r, 1, 0), (std::array{2, 2, 0}));

    // Vertically the steps count rows as they lie in memory, bottom row first: with two
    // source rows and two target rows (step 1/2) the bottom target row samples the bottom
    // source row and the top one lies half way up.
    cDIBSection v;
    v.Create(2, 2);
    Put(v, 0, 1, 0, 0, 0);  // bottom row: 0, 3
    Put(v, 1, 1, 3, 3, 3);
    Put(v, 0, 0, 4, 4, 4);  // top row: 4, 5
    Put(v, 1, 0, 5, 5, 5);
    cDIBSection t = v.Resample(2, 3);
    // Column 1 of 3 (step 1/3): bottom 0 + 3/3 = 1, top 4 + 1/3 = 4.33 -> 4; row half way:
    // (1 + 4) / 2 = 2.5 -> 2.
    EXPECT_EQ(Get(t, 1, 0), (std::array{2, 2, 2}));
    // The bottom memory row samples the bottom source row exactly.
    EXPECT_EQ(Get(t, 1, 1), (std::array{1, 1, 1}));
    EXPECT_EQ(Get(t, 0, 0), (std::array{2, 2, 2}));
}

TEST(cDIBSection, ResampleOfAOnePixelWideSourceReadsOnlyItsColumn) {
    cDIBSection d;
    d.Create(1, 1);
    Put(d, 0, 0, 7, 8, 9);
    cDIBSection r = d.Resample(3, 4);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(Get(r, x, y), (std::array{7, 8, 9}));
}

}  // namespace quorbel
