#include "imaging/cDIBDither.h"

#include <algorithm>
#include <array>

#include "core/CheckedMath.h"

namespace quorbel {
namespace {

struct Tables {
    std::array<std::array<int16_t, 12>, 511> share{};  // row e + 255
    std::array<uint8_t, 766> mean{};
    Tables() {
        for (int e = -255; e <= 255; ++e)
            for (int t = 0; t < 12; ++t)
                share[e + 255][t] = static_cast<int16_t>(CheckedMul(e, kStucki[t].weight, "cDIBDither") / 42);
        for (int s = 0; s <= 765; ++s) mean[s] = static_cast<uint8_t>(s / 3);
    }
};

const Tables& LookUp() {
    static const Tables tables;
    return tables;
}

}  // namespace

int cDIBDither::ErrorShare(int error, int tap) {
    return LookUp().share[std::clamp(error, -255, 255) + 255][std::clamp(tap, 0, 11)];
}

int cDIBDither::MeanGrey(int channelSum) { return LookUp().mean[std::clamp(channelSum, 0, 765)]; }

uint8_t* cDIBDither::Init(int width, int height, int bitsPerPixel) {
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
    bitsPerPixel_ = bitsPerPixel;
    rowBytes_ = PackedIndexRowBytes(width_, bitsPerPixel_);
    bits_.assign(static_cast<size_t>(PackedIndexBytes(width_, height_, bitsPerPixel_)), 0);
    return bits_.data();
}

void cDIBDither::SetIndex(int x, int y, uint8_t index) {
    uint8_t* row = bits_.data() + static_cast<ptrdiff_t>(height_ - 1 - y) * rowBytes_;
    const int bit = x * bitsPerPixel_;
    const int shift = 8 - bitsPerPixel_ - bit % 8;  // high bits first
    const uint8_t mask = static_cast<uint8_t>(((1 << bitsPerPixel_) - 1) << shift);
    row[bit / 8] = static_cast<uint8_t>((row[bit / 8] & ~mask) | ((index << shift) & mask));
}

uint8_t cDIBDither::IndexAt(int x, int y) const {
    const uint8_t* row = bits_.data() + static_cast<ptrdiff_t>(height_ - 1 - y) * rowBytes_;
    const int bit = x * bitsPerPixel_;
    const int shift = 8 - bitsPerPixel_ - bit % 8;
    return static_cast<uint8_t>((row[bit / 8] >> shift) & ((1 << bitsPerPixel_) - 1));
}

bool cDIBDither::Dither(const cDib& source, const cDIBPal& palette, cDib* result) {
    if (!source.hDIB() || palette.EntryCount() == 0) return false;
    const int w = source.Width(), h = source.Height();
    const int n = palette.EntryCount();
    cDib shown;
    if (result && !shown.Create(w, h)) return false;
    Init(w, h, n <= 2 ? 1 : n <= 16 ? 4 : 8);
    const Tables& t = LookUp();
    const bool grey = palette.IsGrey();
    const int channels = grey ? 1 : 3;

    // Three rows of pending error per channel, two columns of margin on each side: shares
    // that fall there, or below the last row, are dropped.
    const int span = w + 4;
    std::array<std::vector<int32_t>, 3> pending;
    for (auto& row : pending) row.assign(static_cast<size_t>(span) * 3, 0);

    if (Progress) Progress(0);
    for (int y = 0; y < h; ++y) {
        const bool backward = Serpentine && (y & 1);
        const int step = backward ? -1 : 1;
        int32_t* here = pending[y % 3].data();
        const uint8_t* src = source.Row(y);
        uint8_t* out = result ? shown.Row(y) : nullptr;
        for (int i = 0; i < w; ++i) {
            const int x = backward ? w - 1 - i : i;
            const uint8_t* p = src + 4 * x;
            std::array<int32_t, 3> want;  // red, green, blue, clamped before the look-up
            if (grey) {
                want[0] = std::clamp(t.mean[p[0] + p[1] + p[2]] + here[(x + 2) * 3], 0, 255);
                want[1] = want[2] = want[0];
            } else {
                for (int c = 0; c < 3; ++c) want[c] = std::clamp(p[2 - c] + here[(x + 2) * 3 + c], 0, 255);
            }
            uint8_t r, g, b;
            const uint8_t index = palette.ClosestIndex(uint8_t(want[0]), uint8_t(want[1]), uint8_t(want[2]), r, g, b);
            SetIndex(x, y, index);
            if (out) {
                out[4 * x] = b;
                out[4 * x + 1] = g;
                out[4 * x + 2] = r;
            }
            const int32_t got[3] = {r, g, b};
            for (int c = 0; c < channels; ++c) {
                const auto& shares = t.share[want[c] - got[c] + 255];
                for (int k = 0; k < 12; ++k) {
                    const int tx = x + step * kStucki[k].dx;
                    if (tx < -2 || tx >= w + 2) continue;
                    pending[(y + kStucki[k].dy) % 3][static_cast<size_t>((tx + 2) * 3 + c)] += shares[k];
                }
            }
        }
        std::fill(pending[y % 3].begin(), pending[y % 3].end(), 0);  // becomes row y + 3
        if (Progress && (y + 1) % 64 == 0) Progress(static_cast<int>(int64_t(100) * (y + 1) / h));
    }
    if (result) result->Swap(shown);
    if (Progress) Progress(100);
    return true;
}

}  // namespace quorbel
