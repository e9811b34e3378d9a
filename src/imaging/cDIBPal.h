#pragma once
// A palette of up to 256 colours with a nearest-colour search. The search is exact (the
// smallest squared distance in RGB, ties to the lower index) and fast: for each of 4096
// cells of the colour cube it keeps only the entries that can be nearest to some colour of
// that cell.
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/DecodedPicture.h"
#include "imaging/cDib.h"

namespace quorbel {

class cDIBPal : public PaletteReceiver {
public:
    // Resizes to count entries (clamped to 0..256, new ones black) and returns the first
    // so the caller can fill them; call RebuildPalette() after filling.
    RgbQuad* SetEntryCount(int count) override;
    int EntryCount() const { return static_cast<int>(entries_.size()); }
    std::span<const RgbQuad> Entries() const { return entries_; }

    // The fixed palettes; each rebuilds the search itself.
    void CreateMonochrome();
    // Levels 0, 64, 128, 192, 255 per channel, blue slowest and red fastest: 125 colours,
    // white at 124, slots 125..255 black.
    void CreateHalftone();
    // The 6 × 6 × 6 web colours without the twelve muddy mid-tones whose channels all lie
    // strictly inside 0..255 and sum to 255 or 510 (the greys stand in for them), then greys
    // 8, 16, ... 248; the slots left over are black.
    void CreateWebSafe();
    void CreateGrey16();
    void CreateGrey256();
    // An optimal palette of up to count colours (2..256) for a picture, by median cut over
    // a histogram of 5 bits per channel. False on an empty picture.
    bool CreateOptimal(const cDib& picture, int count);

    // Rebuilds the nearest-colour search from the entries.
    void RebuildPalette();

    // The index of the nearest entry; 0 on an empty palette. Before RebuildPalette() the
    // entries are searched one by one, with the same answer.
    uint8_t ClosestIndex(uint8_t red, uint8_t green, uint8_t blue) const;
    // The same, handing back the entry's colour too (black on an empty palette).
    uint8_t ClosestIndex(uint8_t red, uint8_t green, uint8_t blue, uint8_t& outRed, uint8_t& outGreen,
                         uint8_t& outBlue) const;

    // True when every entry has red = green = blue; an empty palette is not grey.
    bool IsGrey() const;

private:
    std::vector<RgbQuad> entries_;
    std::vector<uint32_t> cellStart_;  // 4097 offsets into candidates_
    std::vector<uint8_t> candidates_;
};

}  // namespace quorbel
