// BMP and ICO/CUR with the program's own code. Every size and offset in a header is checked
// against the file before it is used; the sums are done in 64 bits.
#include <algorithm>
#include <climits>
#include <cstring>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"

namespace quorbel {

namespace {

uint16_t U16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
uint32_t U32(const uint8_t* p) { return p[0] | (p[1] << 8) | (p[2] << 16) | (uint32_t(p[3]) << 24); }
int32_t I32(const uint8_t* p) { return static_cast<int32_t>(U32(p)); }

constexpr uint32_t kRgb = 0, kRle8 = 1, kRle4 = 2, kBitfields = 3, kAlphaBitfields = 6;

struct DibHeader {
    uint32_t size = 0;
    int32_t width = 0, height = 0;  // height as stored (negative: top-down)
    uint16_t bpp = 0;
    uint32_t compression = kRgb;
    uint32_t colours = 0;
    uint32_t masks[4] = {0, 0, 0, 0};  // red, green, blue, alpha
};

bool ReadHeader(std::span<const uint8_t> f, size_t at, DibHeader& h, size_t& afterHeader) {
    if (at + 4 > f.size()) return false;
    h.size = U32(f.data() + at);
    const bool core = h.size == 12;
    if (!core && h.size != 40 && h.size != 52 && h.size != 56 && h.size != 64 && h.size != 108 && h.size != 124)
        return false;
    if (at + h.size > f.size()) return false;
    const uint8_t* p = f.data() + at;
    if (core) {
        h.width = U16(p + 4);
        h.height = U16(p + 6);
        h.bpp = U16(p + 10);
    } else {
        h.width = I32(p + 4);
        h.height = I32(p + 8);
        h.bpp = U16(p + 14);
        h.compression = U32(p + 16);
        h.colours = U32(p + 32);
    }
    afterHeader = at + h.size;
    if (h.compression == kBitfields || h.compression == kAlphaBitfields) {
        const unsigned count = h.compression == kAlphaBitfields ? 4 : 3;
        const uint8_t* m = p + 40;
        if (h.size == 40) {  // the masks follow the short header
            if (afterHeader + 4 * count > f.size()) return false;
            m = f.data() + afterHeader;
            afterHeader += 4 * count;
        } else if (h.size < 40 + 4 * count) {
            return false;
        }
        for (unsigned i = 0; i < count; ++i) h.masks[i] = U32(m + 4 * i);
    }
    return true;
}

// A channel through its bit mask, scaled to 0..255 with rounding.
struct Mask {
    uint32_t mask = 0;
    int shift = 0;
    uint32_t max = 0;
    explicit Mask(uint32_t m) : mask(m) {
        if (!m) return;
        while (!((m >> shift) & 1)) ++shift;
        max = m >> shift;
    }
    uint8_t operator()(uint32_t v) const {
        return max ? static_cast<uint8_t>((((v & mask) >> shift) * 255 + max / 2) / max) : 0;
    }
};

// Run-length data into one index a byte, top row first; runs and deltas that leave the
// picture are clipped, and the data ends cleanly at the end of the buffer.
void DecodeRle(const uint8_t* p, const uint8_t* end, bool four, int w, int h, std::vector<uint8_t>& idx) {
    int x = 0, row = 0;  // row 0 is the bottom one
    auto put = [&](uint8_t v) {
        if (x < w && row < h) idx[static_cast<size_t>(h - 1 - row) * w + x] = v;
        ++x;
    };
    while (end - p >= 2 && row < h) {
        const int count = p[0], value = p[1];
        p += 2;
        if (count > 0) {
            for (int i = 0; i < count && x < w; ++i)
                put(four ? static_cast<uint8_t>(i % 2 ? value & 15 : value >> 4) : static_cast<uint8_t>(value));
        } else if (value == 0) {
            x = 0, ++row;
        } else if (value == 1) {
            return;
        } else if (value == 2) {
            if (end - p < 2) return;
            x += p[0], row += p[1];
            p += 2;
        } else {
            const int bytes = four ? (value + 1) / 2 : value;
            const int padded = (bytes + 1) & ~1;
            if (end - p < padded) return;
            for (int i = 0; i < value; ++i)
                put(four ? static_cast<uint8_t>(i % 2 ? p[i / 2] & 15 : p[i / 2] >> 4) : p[i]);
            p += padded;
        }
    }
}

// The bitmap of a BMP file (bitsOffset given) or of an icon entry (bitsOffset 0: the bits
// follow the palette, the stored height counts the AND mask too).
bool ParseDib(std::span<const uint8_t> f, size_t headerAt, size_t bitsOffset, bool icon, DecodedPicture& out) {
    DibHeader h;
    size_t at = 0;
    if (!ReadHeader(f, headerAt, h, at)) return false;
    if (h.height == INT_MIN) return false;
    const bool rle = h.compression == kRle8 || h.compression == kRle4;
    const bool topDown = h.height < 0 && !icon;
    if ((rle || icon) && h.height < 0) return false;
    const int64_t width = h.width, height = icon ? h.height / 2 : (h.height < 0 ? -int64_t(h.height) : h.height);
    if (!PictureSizeAllowed(width, height)) return false;
    const int bpp = h.bpp;
    if (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 16 && bpp != 24 && bpp != 32) return false;
    switch (h.compression) {
        case kRgb: break;
        case kRle8: if (bpp != 8) return false; break;
        case kRle4: if (bpp != 4) return false; break;
        case kBitfields:
        case kAlphaBitfields:
            if ((bpp != 16 && bpp != 32) || !h.masks[0] || !h.masks[1] || !h.masks[2]) return false;
            break;
        default: return false;
    }
    const int w = static_cast<int>(width), ht = static_cast<int>(height);

    DecodedPicture pic;
    pic.bitsPerPixel = bpp;
    if (bpp <= 8) {
        const uint32_t most = 1u << bpp;
        if (h.colours > most) return false;
        const uint32_t entries = h.colours ? h.colours : most;
        const size_t entrySize = h.size == 12 ? 3 : 4;
        if (at + uint64_t(entries) * entrySize > f.size()) return false;
        for (uint32_t i = 0; i < entries; ++i) {
            const uint8_t* e = f.data() + at + i * entrySize;
            pic.palette.push_back({e[0], e[1], e[2], 0});
        }
        at += entries * entrySize;
    }
    const size_t bits = icon ? at : bitsOffset;
    if (bits >= f.size()) return false;
    const int64_t stride = ((width * bpp + 31) / 32) * 4;
    const int64_t available = int64_t(f.size() - bits);
    if (!rle && stride * height > available) return false;
    const uint8_t* base = f.data() + bits;
    auto rowData = [&](int y) {  // y counted from the top
        return base + (topDown ? y : ht - 1 - y) * stride;
    };

    if (bpp <= 8) {
        pic.indices.assign(static_cast<size_t>(w) * ht, 0);
        if (rle) {
            DecodeRle(base, f.data() + f.size(), h.compression == kRle4, w, ht, pic.indices);
        } else {
            const int perByte = 8 / bpp;
            const unsigned mask = (1u << bpp) - 1;
            for (int y = 0; y < ht; ++y) {
                const uint8_t* r = rowData(y);
                uint8_t* o = pic.indices.data() + static_cast<size_t>(y) * w;
                for (int x = 0; x < w; ++x)
                    o[x] = static_cast<uint8_t>((r[x / perByte] >> (bpp * (perByte - 1 - x % perByte))) & mask);
            }
        }
        if (!FillPixelsFromIndices(pic, w, ht)) return false;
    } else {
        if (!pic.pixels.Create(w, ht)) return false;
        const bool masked = h.compression == kBitfields || h.compression == kAlphaBitfields;
        const uint32_t defaults16[3] = {0x7C00, 0x03E0, 0x001F}, defaults32[3] = {0xFF0000, 0xFF00, 0xFF};
        const uint32_t* m = masked ? h.masks : bpp == 16 ? defaults16 : defaults32;
        const Mask red(m[0]), green(m[1]), blue(m[2]);
        const bool iconAlpha = icon && bpp == 32;
        for (int y = 0; y < ht; ++y) {
            const uint8_t* r = rowData(y);
            uint8_t* o = pic.pixels.Row(y);
            for (int x = 0; x < w; ++x, o += 4) {
                if (bpp == 24) {
                    std::memcpy(o, r + x * 3, 3);
                    continue;
                }
                const uint32_t v = bpp == 16 ? U16(r + x * 2) : U32(r + x * 4);
                o[0] = blue(v), o[1] = green(v), o[2] = red(v);
                if (iconAlpha) {  // transparent parts show on black
                    const unsigned a = v >> 24;
                    for (int c = 0; c < 3; ++c) o[c] = static_cast<uint8_t>((o[c] * a + 127) / 255);
                }
            }
        }
    }
    // An icon's AND mask: set bits are transparent, shown black.
    if (icon && bpp < 32) {
        const int64_t maskStride = ((width + 31) / 32) * 4;
        const int64_t maskAt = stride * height;
        if (maskAt + maskStride * height <= available) {
            for (int y = 0; y < ht; ++y) {
                const uint8_t* r = base + maskAt + (ht - 1 - y) * maskStride;
                uint8_t* o = pic.pixels.Row(y);
                for (int x = 0; x < w; ++x)
                    if ((r[x / 8] >> (7 - x % 8)) & 1) std::memset(o + x * 4, 0, 3);
            }
        }
    }
    out = std::move(pic);
    return true;
}

}  // namespace

bool DecodeBmp(std::span<const uint8_t> bytes, DecodedPicture& out) {
    if (bytes.size() < 14 + 12 || bytes[0] != 'B' || bytes[1] != 'M') return false;
    return ParseDib(bytes, 14, U32(bytes.data() + 10), false, out);
}

bool DecodeIco(std::span<const uint8_t> bytes, DecodedPicture& out) {
    if (bytes.size() < 6 || U16(bytes.data()) != 0) return false;
    const uint16_t type = U16(bytes.data() + 2), count = U16(bytes.data() + 4);
    if ((type != 1 && type != 2) || count == 0 || 6 + size_t(count) * 16 > bytes.size()) return false;
    // The largest picture; among equals the one with most colours (cursors store their
    // hot spot where icons keep the colour depth, so for them the first one wins).
    int best = -1;
    int64_t bestArea = -1, bestDepth = -1;
    for (int i = 0; i < count; ++i) {
        const uint8_t* e = bytes.data() + 6 + i * 16;
        const int64_t area = int64_t(e[0] ? e[0] : 256) * (e[1] ? e[1] : 256);
        const int64_t depth = type == 1 ? U16(e + 6) : 0;
        if (area > bestArea || (area == bestArea && depth > bestDepth)) best = i, bestArea = area, bestDepth = depth;
    }
    const uint8_t* e = bytes.data() + 6 + best * 16;
    const uint64_t size = U32(e + 8), offset = U32(e + 12);
    if (offset >= bytes.size() || size > bytes.size() - offset) return false;
    const auto entry = bytes.subspan(static_cast<size_t>(offset), static_cast<size_t>(size));
    static constexpr uint8_t kPng[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    DecodedPicture pic;
    const bool ok = entry.size() >= 8 && std::memcmp(entry.data(), kPng, 8) == 0 ? DecodePng(entry, pic)
                                                                                : ParseDib(entry, 0, 0, true, pic);
    if (!ok) return false;
    pic.type = PictureType::Bitmap;
    out = std::move(pic);
    return true;
}

bool EncodeBmp(const cDib& picture, std::vector<uint8_t>& out) {
    out.clear();
    if (!picture.hDIB()) return false;
    const int w = picture.Width(), h = picture.Height();
    const int64_t stride = ((int64_t(w) * 24 + 31) / 32) * 4;
    const int64_t image = stride * h, total = 54 + image;
    if (total > UINT32_MAX) return false;
    out.assign(static_cast<size_t>(total), 0);
    uint8_t* p = out.data();
    auto put16 = [](uint8_t* d, uint32_t v) { d[0] = uint8_t(v), d[1] = uint8_t(v >> 8); };
    auto put32 = [](uint8_t* d, uint32_t v) {
        for (int i = 0; i < 4; ++i) d[i] = uint8_t(v >> (8 * i));
    };
    p[0] = 'B', p[1] = 'M';
    put32(p + 2, static_cast<uint32_t>(total));
    put32(p + 10, 54);
    put32(p + 14, 40);
    put32(p + 18, static_cast<uint32_t>(w));
    put32(p + 22, static_cast<uint32_t>(h));
    put16(p + 26, 1);
    put16(p + 28, 24);
    put32(p + 34, static_cast<uint32_t>(image));
    put32(p + 38, 2835);  // 72 dots per inch
    put32(p + 42, 2835);
    for (int y = 0; y < h; ++y) {
        const uint8_t* in = picture.Row(y);
        uint8_t* o = p + 54 + (h - 1 - y) * stride;
        for (int x = 0; x < w; ++x) std::memcpy(o + x * 3, in + x * 4, 3);
    }
    return true;
}

}  // namespace quorbel
