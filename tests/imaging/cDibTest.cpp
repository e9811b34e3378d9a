#include <gtest/gtest.h>

#include <array>

#include "core/RuntimeError.h"
#include "imaging/DecodedPicture.h"
#include "imaging/cDib.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

TEST(cDib, CreateFillsEveryPixelWithTheBackgroundAndDescribesItself) {
    cDib d;
    ASSERT_TRUE(d.Create(3, 2, RGBColor(10, 20, 30)));
    EXPECT_TRUE(d.hDIB());
    EXPECT_EQ((std::array{d.Width(), d.Height(), d.BytesPerScanLine(), d.Size()}), (std::array{3, 2, 12, 24}));
    const auto& hdr = d.Header();
    EXPECT_EQ((std::array<uint32_t, 4>{hdr.biSize, uint32_t(hdr.biBitCount), uint32_t(hdr.biPlanes), hdr.biCompression}),
              (std::array<uint32_t, 4>{40, 32, 1, 0}));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(At(d, x, y), Rgb(10, 20, 30)) << x << "," << y;  // fourth byte 0
}

TEST(cDib, RowsAreTopDownWhileMemoryIsBottomUp) {
    cDib d = Numbered(2, 3);
    // The first bytes in memory are the bottom row (y = 2).
    EXPECT_EQ(d.lpBits()[1], 2);
    EXPECT_EQ(d.Row(0), d.lpBits() + 2 * 8);
    EXPECT_EQ(At(d, 1, 0), Rgb(1, 0, 1));
}

TEST(cDib, ZeroOrNegativeSizeGivesAnEmptyBufferAndPaintingDoesNothing) {
    for (auto [w, h] : {std::pair{0, 5}, {5, 0}, {-2, 3}, {-4, -4}}) {
        cDib d;
        EXPECT_FALSE(d.Create(w, h, 0)) << w << "x" << h;
        EXPECT_FALSE(d.hDIB());
        EXPECT_EQ(d.lpBits(), nullptr);
    }
    cDib empty, target;
    target.Create(2, 2, RGBColor(1, 2, 3));
    empty.Paint(target.hDC(), 0, 0, 1);
    empty.Stretch(target.hDC(), 0, 0, 2, 2, 0, 0, 1, 1, StretchMode::Halftone);
    empty.Orientation(true, true, true);
    empty.LoadBlt(target.View(), 0, 0);
    EXPECT_FALSE(empty.hDIB());
    EXPECT_EQ(At(target, 0, 0), Rgb(1, 2, 3));
}

TEST(cDib, AByteCountBeyondTheSignedRangeRaisesOverflowBeforeAllocating) {
    cDib d;
    d.Create(4, 4, 0);
    try {
        d.Create(40000, 40000, 0);  // 6.4e9 bytes
        FAIL() << "no overflow raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), kErrOverflow);
    }
    // The old content was freed first, as Create always does.
    EXPECT_FALSE(d.hDIB());
    // Fits in 32 bits but exceeds the pixel cap: refused like a failed allocation.
    EXPECT_FALSE(d.Create(65536, 2, 0));
}

TEST(cDib, LoadBltCopiesTheBuffersSizeFromTheSourceOffset) {
    cDib src = Numbered(4, 4);
    cDib d;
    d.Create(2, 2, 0);
    d.LoadBlt(src.View(), 1, 2);
    EXPECT_EQ(At(d, 0, 0), At(src, 1, 2));
    EXPECT_EQ(At(d, 1, 1), At(src, 2, 3));
    // Past the source's edge nothing is copied.
    cDib e;
    e.Create(2, 2, RGBColor(9, 9, 9));
    e.LoadBlt(src.View(), 3, 3);
    EXPECT_EQ(At(e, 0, 0), At(src, 3, 3));
    EXPECT_EQ(At(e, 1, 1), Rgb(9, 9, 9));
}

TEST(cDib, LoadDIBBltStretchesTheOtherBufferOntoTheWholeOfThisOne) {
    const cDib small = Make(2, 1, [](int x, int) { return Grey(uint8_t(x + 1)); });
    cDib d;
    d.Create(4, 2, 0);
    d.LoadDIBBlt(small);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(At(d, x, y), Grey(x < 2 ? 1 : 2)) << x << "," << y;
}

TEST(cDib, PaintWithZoomRepeatsEachPixelAndChecksTheExtent) {
    cDib src = Numbered(2, 2);
    cDib target;
    target.Create(5, 5, RGBColor(7, 7, 7));
    src.Paint(target.hDC(), 1, 1, 2);
    EXPECT_EQ(At(target, 0, 0), Rgb(7, 7, 7));
    EXPECT_EQ(At(target, 1, 1), At(src, 0, 0));
    EXPECT_EQ(At(target, 2, 2), At(src, 0, 0));
    EXPECT_EQ(At(target, 3, 2), At(src, 1, 0));
    EXPECT_EQ(At(target, 4, 4), At(src, 1, 1));
    EXPECT_THROW(src.Paint(target.hDC(), 0, 0, 1 << 30), RuntimeError);
}

TEST(cDib, StretchUsesTheGivenModeAndPutsTheTargetsModeBack) {
    // A 2 x 1 picture black and white, drawn into one pixel: halftone averages, the two
    // monochrome modes keep the dark or the light one.
    cDib src;
    src.Create(2, 1, 0);
    Put(src, 1, 0, Rgb(50, 100, 200));
    cDib t;
    t.Create(1, 1, 0);
    t.hDC().stretchMode = StretchMode::ColorOnColor;
    src.Stretch(t.hDC(), 0, 0, 1, 1, 0, 0, 2, 1, StretchMode::Halftone);
    EXPECT_EQ(At(t, 0, 0), Rgb(25, 50, 100));
    EXPECT_EQ(t.hDC().stretchMode, StretchMode::ColorOnColor);
    src.Stretch(t.hDC(), 0, 0, 1, 1, 0, 0, 2, 1, StretchMode::BlackOnWhite);
    EXPECT_EQ(At(t, 0, 0), Rgb(0, 0, 0));
    src.Stretch(t.hDC(), 0, 0, 1, 1, 0, 0, 2, 1, StretchMode::WhiteOnBlack);
    EXPECT_EQ(At(t, 0, 0), Rgb(50, 100, 200));
}

TEST(cDib, GetBestFitInfoKeepsTheAspectAndCentres) {
    const struct {
        int w, h, boxW, boxH;
        bool enlarge;
        std::array<int32_t, 4> fit;  // left, top, width, height
    } cases[] = {
        {400, 300, 200, 200, false, {0, 25, 200, 150}},
        {100, 50, 200, 200, false, {0, 0, 100, 50}},
        {100, 50, 200, 200, true, {0, 50, 200, 100}},
        {300, 300, 200, 100, false, {50, 0, 100, 100}},
        // A square into a square box: equal ratios take the height branch, width = RY × W.
        {7, 7, 3, 3, false, {0, 0, 3, 3}},
        // Heights of 1.5 and 2.5 both round to 2 (halves to even), then centre in the box.
        {4, 3, 2, 10, true, {0, 4, 2, 2}},
        {4, 5, 2, 10, false, {0, 4, 2, 2}},
    };
    for (const auto& c : cases) {
        cDib d;
        d.Create(c.w, c.h, 0);
        std::array<int32_t, 4> fit{};
        d.GetBestFitInfo(c.boxW, c.boxH, c.enlarge, fit[0], fit[1], fit[2], fit[3]);
        EXPECT_EQ(fit, c.fit) << c.w << "x" << c.h << " in " << c.boxW << "x" << c.boxH;
    }
}

class FakePalette : public PaletteReceiver {
public:
    RgbQuad* SetEntryCount(int count) override {
        entries.assign(count, RgbQuad{9, 9, 9, 9});
        return entries.data();
    }
    std::vector<RgbQuad> entries;
};

class FakeIndices : public IndexReceiver {
public:
    uint8_t* Init(int w, int h, int bpp) override {
        width = w, height = h, bits = bpp;
        buffer.assign(PackedIndexBytes(w, h, bpp), 0xEE);
        return buffer.data();
    }
    int width = 0, height = 0, bits = 0;
    std::vector<uint8_t> buffer;
};

TEST(cDib, CreateFromStdPictureReportsTheSourceDepthAndHandsOverPaletteAndIndices) {
    DecodedPicture pic;
    pic.pixels.Create(3, 2, 0);
    Put(pic.pixels, 2, 0, Rgb(255, 255, 255));
    pic.bitsPerPixel = 1;
    pic.palette = {RgbQuad{0, 0, 0, 0}, RgbQuad{255, 255, 255, 0}};
    pic.indices = {0, 0, 1,   // top row
                   1, 0, 1};  // bottom row
    cDib d;
    FakePalette pal;
    FakeIndices idx;
    EXPECT_EQ(d.CreateFromStdPicture(&pic, &pal, &idx), 1);
    EXPECT_EQ(At(d, 2, 0), Rgb(255, 255, 255));
    ASSERT_EQ(pal.entries.size(), 2u);
    EXPECT_EQ(pal.entries[1], (RgbQuad{255, 255, 255, 0}));
    EXPECT_EQ(idx.bits, 1);
    ASSERT_EQ(idx.buffer.size(), 8u);  // two rows of 4 bytes
    // Bottom row first, high bit first: 1 0 1 -> 1010 0000; top row 0 0 1 -> 0010 0000.
    EXPECT_EQ(idx.buffer[0], 0xA0);
    EXPECT_EQ(idx.buffer[4], 0x20);

    // A 4-bit source with a short palette: the rest of the 16 entries are black.
    pic.bitsPerPixel = 4;
    pic.indices = {3, 15, 1, 0, 2, 7};
    EXPECT_EQ(d.CreateFromStdPicture(&pic, &pal, &idx), 4);
    ASSERT_EQ(pal.entries.size(), 16u);
    EXPECT_EQ(pal.entries[5], RgbQuad{});
    EXPECT_EQ(idx.buffer[0], 0x02);  // bottom row 0, 2, 7 -> 0x02, 0x70
    EXPECT_EQ(idx.buffer[1], 0x70);
    EXPECT_EQ(idx.buffer[4], 0x3F);  // top row 3, 15, 1 -> 0x3F, 0x10
    EXPECT_EQ(idx.buffer[5], 0x10);

    pic.bitsPerPixel = 8;
    EXPECT_EQ(d.CreateFromStdPicture(&pic, &pal, &idx), 8);
    EXPECT_EQ(pal.entries.size(), 256u);
    for (int bpp : {16, 24, 32}) {
        pic.bitsPerPixel = bpp;
        EXPECT_EQ(d.CreateFromStdPicture(&pic), 24);
    }
}

TEST(cDib, CreateFromStdPictureRefusesNoPictureIconsAndMetafilesLeavingTheBuffer) {
    cDib d;
    d.Create(1, 1, RGBColor(1, 2, 3));
    EXPECT_EQ(d.CreateFromStdPicture(nullptr), 0);
    DecodedPicture icon;
    icon.pixels.Create(16, 16, 0);
    for (PictureType t : {PictureType::Icon, PictureType::Metafile}) {
        icon.type = t;
        EXPECT_EQ(d.CreateFromStdPicture(&icon), 0);
    }
    EXPECT_EQ(d.Width(), 1);
    EXPECT_EQ(At(d, 0, 0), Rgb(1, 2, 3));
}

}  // namespace quorbel
