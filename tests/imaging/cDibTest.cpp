#include <gtest/gtest.h>

#include <array>

#include "core/RuntimeError.h"
#include "imaging/DecodedPicture.h"
#include "imaging/cDib.h"
#include "Pictures.h"

namespace quorbel {
using namespace quorbel::test;

cDib Blank(int w, int h, ColorRef background = 0) {
    cDib d;
    d.Create(w, h, background);
    return d;
}

TEST(cDib, CreateFillsEveryPixelWithTheBackgroundAndDescribesItself) {
    const cDib d = Blank(3, 2, RGBColor(10, 20, 30));
    ASSERT_TRUE(d.hDIB());
    EXPECT_EQ((std::array{d.Width(), d.Height(), d.BytesPerScanLine(), d.Size()}), (std::array{3, 2, 12, 24}));
    const auto& hdr = d.Header();
    EXPECT_EQ((std::array<uint32_t, 4>{hdr.biSize, uint32_t(hdr.biBitCount), uint32_t(hdr.biPlanes), hdr.biCompression}),
              (std::array<uint32_t, 4>{40, 32, 1, 0}));
    EXPECT_TRUE(Same(d, Flat(3, 2, Rgb(10, 20, 30))));  // fourth byte 0
    // Rows are top down while memory is bottom up: the first bytes are the bottom row's.
    const cDib n = Numbered(2, 3);
    EXPECT_EQ(n.lpBits()[1], 2);
    EXPECT_EQ(n.Row(0), n.lpBits() + 2 * 8);
}

TEST(cDib, ZeroOrNegativeSizeGivesAnEmptyBufferAndPaintingDoesNothing) {
    for (auto [w, h] : {std::pair{0, 5}, {5, 0}, {-2, 3}, {-4, -4}}) {
        cDib d;
        EXPECT_FALSE(d.Create(w, h, 0)) << w << "x" << h;
        EXPECT_FALSE(d.hDIB());
        EXPECT_EQ(d.lpBits(), nullptr);
    }
    cDib empty, target = Blank(2, 2, RGBColor(1, 2, 3));
    empty.Paint(target.hDC(), 0, 0, 1);
    empty.Stretch(target.hDC(), 0, 0, 2, 2, 0, 0, 1, 1, StretchMode::Halftone);
    empty.Orientation(true, true, true);
    empty.LoadBlt(target.View(), 0, 0);
    EXPECT_FALSE(empty.hDIB());
    EXPECT_TRUE(Same(target, Flat(2, 2, Rgb(1, 2, 3))));
}

TEST(cDib, AByteCountBeyondTheSignedRangeRaisesOverflowBeforeAllocating) {
    cDib d = Blank(4, 4);
    try {
        d.Create(40000, 40000, 0);  // 6.4e9 bytes
        FAIL() << "no overflow raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), kErrOverflow);
    }
    EXPECT_FALSE(d.hDIB());  // the old content was freed first, as Create always does
    // Fits in 32 bits but exceeds the pixel cap: refused like a failed allocation.
    EXPECT_FALSE(d.Create(65536, 2, 0));
}

TEST(cDib, LoadBltCopiesTheBuffersSizeFromTheSourceOffsetAndLoadDIBBltStretches) {
    const cDib src = Numbered(4, 4);
    cDib d = Blank(2, 2), e = Blank(2, 2, RGBColor(9, 9, 9));
    d.LoadBlt(src.View(), 1, 2);
    EXPECT_TRUE(Same(d, Make(2, 2, [&](int x, int y) { return At(src, x + 1, y + 2); })));
    e.LoadBlt(src.View(), 3, 3);  // past the source's edge nothing is copied
    EXPECT_TRUE(Same(e, Make(2, 2, [&](int x, int y) { return x + y ? Grey(9) : At(src, 3, 3); })));

    cDib wide = Blank(4, 2);
    wide.LoadDIBBlt(Make(2, 1, [](int x, int) { return Grey(uint8_t(x + 1)); }));
    EXPECT_TRUE(Same(wide, Make(4, 2, [](int x, int) { return Grey(x < 2 ? 1 : 2); })));
}

TEST(cDib, PaintWithZoomRepeatsEachPixelAndChecksTheExtent) {
    const cDib src = Numbered(2, 2);
    cDib target = Blank(5, 5, RGBColor(7, 7, 7));
    src.Paint(target.hDC(), 1, 1, 2);
    EXPECT_TRUE(Same(target, Make(5, 5, [&](int x, int y) { return x && y ? At(src, (x - 1) / 2, (y - 1) / 2) : Grey(7); })));
    EXPECT_THROW(src.Paint(target.hDC(), 0, 0, 1 << 30), RuntimeError);
}

TEST(cDib, StretchUsesTheGivenModeAndPutsTheTargetsModeBack) {
    // Black and a colour drawn into one pixel: halftone averages, the two monochrome modes
    // keep the dark or the light one.
    const cDib src = Make(2, 1, [](int x, int) { return x ? Rgb(50, 100, 200) : Px{}; });
    cDib t = Blank(1, 1);
    t.hDC().stretchMode = StretchMode::ColorOnColor;
    for (auto [mode, want] : {std::pair{StretchMode::Halftone, Rgb(25, 50, 100)}, {StretchMode::BlackOnWhite, Px{}},
                              {StretchMode::WhiteOnBlack, Rgb(50, 100, 200)}}) {
        src.Stretch(t.hDC(), 0, 0, 1, 1, 0, 0, 2, 1, mode);
        EXPECT_EQ(At(t, 0, 0), want);
        EXPECT_EQ(t.hDC().stretchMode, StretchMode::ColorOnColor);
    }
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
    cDib d = Blank(1, 1, RGBColor(1, 2, 3));
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
