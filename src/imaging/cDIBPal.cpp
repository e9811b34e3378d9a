#include "imaging/cDIBPal.h"

#include <algorithm>
#include <cstdlib>
#include <array>
#include <limits>

namespace quorbel {
namespace {

constexpr int kCellBits = 4;  // 16 × 16 × 16 cells of 16 values a side
constexpr int kCellSide = 1 << (8 - kCellBits);

inline int32_t Distance(const RgbQuad& e, int r, int g, int b) {
    const int32_t dr = e.red - r, dg = e.green - g, db = e.blue - b;
    return dr * dr + dg * dg + db * db;
}

// Nearest and farthest distance along one axis from value v to the interval [lo, hi].
inline int32_t Near(int v, int lo, int hi) { return v < lo ? lo - v : v > hi ? v - hi : 0; }
inline int32_t Far(int v, int lo, int hi) { return std::max(std::abs(v - lo), std::abs(v - hi)); }

}  // namespace

RgbQuad* cDIBPal::SetEntryCount(int count) {
    entries_.assign(static_cast<size_t>(std::clamp(count, 0, 256)), RgbQuad{});
    cellStart_.clear();
    candidates_.clear();
    return entries_.data();
}

void cDIBPal::CreateMonochrome() {
    SetEntryCount(2);
    entries_[1] = {255, 255, 255, 0};
    RebuildPalette();
}

void cDIBPal::CreateHalftone() {
    SetEntryCount(256);
    auto level = [](int i) { return static_cast<uint8_t>(std::min(i * 64, 255)); };
    int n = 0;
    for (int b = 0; b < 5; ++b)
        for (int g = 0; g < 5; ++g)
            for (int r = 0; r < 5; ++r) entries_[n++] = {level(b), level(g), level(r), 0};
    RebuildPalette();
}

void cDIBPal::CreateWebSafe() {
    SetEntryCount(256);
    int n = 0;
    for (int b = 0; b <= 255; b += 51)
        for (int g = 0; g <= 255; g += 51)
            for (int r = 0; r <= 255; r += 51) {
                const int sum = r + g + b;
                const bool inner = std::min({r, g, b}) > 0 && std::max({r, g, b}) < 255;
                if (inner && (sum == 255 || sum == 510)) continue;
                entries_[n++] = {uint8_t(b), uint8_t(g), uint8_t(r), 0};
            }
    for (int grey = 8; grey < 256 && n < 256; grey += 8) entries_[n++] = {uint8_t(grey), uint8_t(grey), uint8_t(grey), 0};
    RebuildPalette();
}

void cDIBPal::CreateGrey16() {
    SetEntryCount(16);
    for (int i = 0; i < 16; ++i) entries_[i] = {uint8_t(17 * i), uint8_t(17 * i), uint8_t(17 * i), 0};
    RebuildPalette();
}

void cDIBPal::CreateGrey256() {
    SetEntryCount(256);
    for (int i = 0; i < 256; ++i) entries_[i] = {uint8_t(i), uint8_t(i), uint8_t(i), 0};
    RebuildPalette();
}

void cDIBPal::RebuildPalette() {
    cellStart_.assign(4097, 0);
    candidates_.clear();
    const int n = EntryCount();
    if (n == 0) return;
    std::vector<int32_t> nearest(static_cast<size_t>(n));
    for (int cell = 0; cell < 4096; ++cell) {
        const int rlo = (cell >> 8) * kCellSide, glo = ((cell >> 4) & 15) * kCellSide, blo = (cell & 15) * kCellSide;
        const int rhi = rlo + kCellSide - 1, ghi = glo + kCellSide - 1, bhi = blo + kCellSide - 1;
        // Every colour of the cell lies within `bound` of some entry, so an entry farther
        // than that from the whole cell can never be the nearest.
        int32_t bound = std::numeric_limits<int32_t>::max();
        for (int i = 0; i < n; ++i) {
            const RgbQuad& e = entries_[i];
            const int32_t fr = Far(e.red, rlo, rhi), fg = Far(e.green, glo, ghi), fb = Far(e.blue, blo, bhi);
            bound = std::min(bound, fr * fr + fg * fg + fb * fb);
            const int32_t nr = Near(e.red, rlo, rhi), ng = Near(e.green, glo, ghi), nb = Near(e.blue, blo, bhi);
            nearest[i] = nr * nr + ng * ng + nb * nb;
        }
        for (int i = 0; i < n; ++i)
            if (nearest[i] <= bound) candidates_.push_back(static_cast<uint8_t>(i));
        cellStart_[cell + 1] = static_cast<uint32_t>(candidates_.size());
    }
}

uint8_t cDIBPal::ClosestIndex(uint8_t red, uint8_t green, uint8_t blue) const {
    if (entries_.empty()) return 0;
    if (cellStart_.empty()) {
        uint8_t best = 0;
        for (int i = 1; i < EntryCount(); ++i)
            if (Distance(entries_[i], red, green, blue) < Distance(entries_[best], red, green, blue))
                best = static_cast<uint8_t>(i);
        return best;
    }
    const int cell = ((red >> (8 - kCellBits)) << 8) | ((green >> (8 - kCellBits)) << 4) | (blue >> (8 - kCellBits));
    uint8_t best = 0;
    int32_t bestDistance = std::numeric_limits<int32_t>::max();
    for (uint32_t k = cellStart_[cell]; k < cellStart_[cell + 1]; ++k) {
        const uint8_t i = candidates_[k];
        const int32_t d = Distance(entries_[i], red, green, blue);
        if (d < bestDistance) {  // strict: the lower index keeps a tie
            bestDistance = d;
            best = i;
        }
    }
    return best;
}

uint8_t cDIBPal::ClosestIndex(uint8_t red, uint8_t green, uint8_t blue, uint8_t& outRed, uint8_t& outGreen,
                              uint8_t& outBlue) const {
    const uint8_t i = ClosestIndex(red, green, blue);
    const RgbQuad e = entries_.empty() ? RgbQuad{} : entries_[i];
    outRed = e.red;
    outGreen = e.green;
    outBlue = e.blue;
    return i;
}

bool cDIBPal::IsGrey() const {
    if (entries_.empty()) return false;
    return std::all_of(entries_.begin(), entries_.end(),
                       [](const RgbQuad& e) { return e.red == e.green && e.green == e.blue; });
}

}  // namespace quorbel
