#include "imaging/Blit.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "imaging/Colour.h"

namespace quorbel {
namespace {

// For one axis of a stretch: which target coordinate each step writes and which run of
// source coordinates it covers (already clipped to both views).
struct Step {
    int target;
    int srcFirst;  // first source coordinate of the run
    int srcCount;  // pixels in the run (at least 1)
    int nearest;   // the source coordinate nearest to the step's centre
};

std::vector<Step> MapAxis(int d0, int de, int dLimit, int s0, int se, int sLimit) {
    std::vector<Step> steps;
    const int64_t n = std::abs(static_cast<int64_t>(de));
    const int64_t m = std::abs(static_cast<int64_t>(se));
    if (n == 0 || m == 0) return steps;
    steps.reserve(static_cast<size_t>(std::min<int64_t>(n, dLimit)));
    const int dstDir = de > 0 ? 1 : -1;
    const int srcDir = se > 0 ? 1 : -1;
    for (int64_t i = 0; i < n; ++i) {
        const int64_t t = d0 + dstDir * i;
        if (t < 0 || t >= dLimit) continue;
        const int64_t lo = i * m / n;
        const int64_t hi = std::max(lo + 1, (i + 1) * m / n);
        const int64_t mid = (2 * i + 1) * m / (2 * n);
        // Source coordinates of the run, in increasing order, clipped to the source view.
        int64_t a = srcDir > 0 ? s0 + lo : s0 - (hi - 1);
        int64_t b = srcDir > 0 ? s0 + hi - 1 : s0 - lo;
        a = std::max<int64_t>(a, 0);
        b = std::min<int64_t>(b, sLimit - 1);
        if (a > b) continue;
        int64_t near = s0 + srcDir * mid;
        near = std::clamp<int64_t>(near, a, b);
        steps.push_back({static_cast<int>(t), static_cast<int>(a), static_cast<int>(b - a + 1),
                         static_cast<int>(near)});
    }
    return steps;
}

inline void Store(uint8_t* d, PixelFormat df, uint8_t b, uint8_t g, uint8_t r, uint8_t x) {
    d[0] = b;
    d[1] = g;
    d[2] = r;
    if (df == PixelFormat::Bgrx32) d[3] = x;
}

inline uint8_t Fourth(const uint8_t* s, PixelFormat sf) { return sf == PixelFormat::Bgrx32 ? s[3] : 0; }

}  // namespace

void BitBlt(const PixelView& dst, int dx, int dy, int w, int h,
            const PixelView& src, int sx, int sy) {
    if (dst.Empty() || src.Empty() || w <= 0 || h <= 0) return;
    // Clip against both views, moving the two origins together.
    int64_t x0 = 0, y0 = 0, x1 = w, y1 = h;
    x0 = std::max<int64_t>({x0, -int64_t(dx), -int64_t(sx)});
    y0 = std::max<int64_t>({y0, -int64_t(dy), -int64_t(sy)});
    x1 = std::min<int64_t>({x1, int64_t(dst.width) - dx, int64_t(src.width) - sx});
    y1 = std::min<int64_t>({y1, int64_t(dst.height) - dy, int64_t(src.height) - sy});
    if (x0 >= x1 || y0 >= y1) return;
    const int sb = BytesPerPixel(src.format), db = BytesPerPixel(dst.format);
    const int cols = static_cast<int>(x1 - x0);
    for (int64_t y = y0; y < y1; ++y) {
        const uint8_t* s = src.Row(static_cast<int>(sy + y)) + (sx + x0) * sb;
        uint8_t* d = dst.Row(static_cast<int>(dy + y)) + (dx + x0) * db;
        if (sb == db) {
            std::memmove(d, s, static_cast<size_t>(cols) * sb);
        } else {
            for (int x = 0; x < cols; ++x, s += sb, d += db) Store(d, dst.format, s[0], s[1], s[2], Fourth(s, src.format));
        }
    }
}

void StretchBlt(const PixelView& dst, int dx, int dy, int dw, int dh,
                const PixelView& src, int sx, int sy, int sw, int sh, StretchMode mode) {
    if (dst.Empty() || src.Empty()) return;
    const std::vector<Step> xs = MapAxis(dx, dw, dst.width, sx, sw, src.width);
    const std::vector<Step> ys = MapAxis(dy, dh, dst.height, sy, sh, src.height);
    if (xs.empty() || ys.empty()) return;
    const int sb = BytesPerPixel(src.format), db = BytesPerPixel(dst.format);

    // A pure mirror onto the same memory: swap pixel pairs so nothing is read after it
    // was overwritten.
    if (dst.top == src.top) {
        const bool mirrorX = (dw < 0) != (sw < 0);
        const bool mirrorY = (dh < 0) != (sh < 0);
        std::vector<uint8_t> pixel(static_cast<size_t>(sb));
        if (mirrorY) {
            std::vector<uint8_t> rowA(static_cast<size_t>(src.width) * sb);
            for (int y = 0, z = src.height - 1; y < z; ++y, --z) {
                std::memcpy(rowA.data(), src.Row(y), rowA.size());
                std::memcpy(src.Row(y), src.Row(z), rowA.size());
                std::memcpy(src.Row(z), rowA.data(), rowA.size());
            }
        }
        if (mirrorX) {
            for (int y = 0; y < src.height; ++y) {
                uint8_t* row = src.Row(y);
                for (int x = 0, z = src.width - 1; x < z; ++x, --z) {
                    std::memcpy(pixel.data(), row + x * sb, sb);
                    std::memcpy(row + x * sb, row + z * sb, sb);
                    std::memcpy(row + z * sb, pixel.data(), sb);
                }
            }
        }
        return;
    }

    for (const Step& ys1 : ys) {
        uint8_t* drow = dst.Row(ys1.target);
        for (const Step& xs1 : xs) {
            uint8_t* d = drow + static_cast<ptrdiff_t>(xs1.target) * db;
            const bool single = ys1.srcCount == 1 && xs1.srcCount == 1;
            if (mode == StretchMode::ColorOnColor || single) {
                const uint8_t* s = src.Row(ys1.nearest) + static_cast<ptrdiff_t>(xs1.nearest) * sb;
                Store(d, dst.format, s[0], s[1], s[2], Fourth(s, src.format));
                continue;
            }
            if (mode == StretchMode::Halftone) {
                uint32_t sum[4] = {0, 0, 0, 0};
                for (int y = ys1.srcFirst; y < ys1.srcFirst + ys1.srcCount; ++y) {
                    const uint8_t* s = src.Row(y) + static_cast<ptrdiff_t>(xs1.srcFirst) * sb;
                    for (int x = 0; x < xs1.srcCount; ++x, s += sb) {
                        sum[0] += s[0];
                        sum[1] += s[1];
                        sum[2] += s[2];
                    }
                }
                const uint32_t n = static_cast<uint32_t>(ys1.srcCount) * static_cast<uint32_t>(xs1.srcCount);
                Store(d, dst.format, uint8_t((sum[0] + n / 2) / n), uint8_t((sum[1] + n / 2) / n),
                      uint8_t((sum[2] + n / 2) / n), 0);
                continue;
            }
            // The two monochrome modes combine every dropped pixel: AND keeps dark, OR light.
            const bool keepDark = mode == StretchMode::BlackOnWhite;
            uint8_t acc[4];
            std::memset(acc, keepDark ? 0xFF : 0x00, 4);
            for (int y = ys1.srcFirst; y < ys1.srcFirst + ys1.srcCount; ++y) {
                const uint8_t* s = src.Row(y) + static_cast<ptrdiff_t>(xs1.srcFirst) * sb;
                for (int x = 0; x < xs1.srcCount; ++x, s += sb) {
                    for (int c = 0; c < 3; ++c) acc[c] = keepDark ? (acc[c] & s[c]) : (acc[c] | s[c]);
                }
            }
            Store(d, dst.format, acc[0], acc[1], acc[2], 0);
        }
    }
}

void FillRect(const PixelView& dst, int x, int y, int w, int h, uint32_t colorRef) {
    if (dst.Empty()) return;
    const int x0 = std::max(0, x), y0 = std::max(0, y);
    const int x1 = static_cast<int>(std::min<int64_t>(dst.width, int64_t(x) + w));
    const int y1 = static_cast<int>(std::min<int64_t>(dst.height, int64_t(y) + h));
    if (x0 >= x1 || y0 >= y1) return;
    const uint8_t b = BlueOf(colorRef), g = GreenOf(colorRef), r = RedOf(colorRef);
    const int db = BytesPerPixel(dst.format);
    if (dst.format == PixelFormat::Bgrx32) {
        const uint32_t px = PixelFromColorRef(colorRef);
        for (int yy = y0; yy < y1; ++yy) {
            uint32_t* row = reinterpret_cast<uint32_t*>(dst.Row(yy)) + x0;
            std::fill(row, row + (x1 - x0), px);
        }
        return;
    }
    for (int yy = y0; yy < y1; ++yy) {
        uint8_t* d = dst.Row(yy) + x0 * db;
        for (int xx = x0; xx < x1; ++xx, d += db) Store(d, dst.format, b, g, r, 0);
    }
}

}  // namespace quorbel
