// PNG through libpng. libpng reports errors by long-jumping: every call that may jump runs
// in a small function below that holds no C++ objects, and the jump ends there as a false
// result; nothing above this file knows libpng's error style.
#include <png.h>

#include <cstring>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"

namespace quorbel {

namespace {

struct Source {
    const uint8_t* data;
    size_t size;
    size_t pos;
};

void ReadFromMemory(png_structp png, png_bytep out, size_t n) {
    auto* s = static_cast<Source*>(png_get_io_ptr(png));
    if (n > s->size - s->pos) png_error(png, "truncated");
    std::memcpy(out, s->data + s->pos, n);
    s->pos += n;
}

[[noreturn]] void OnError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void OnWarning(png_structp, png_const_charp) {}

// How the rows arrive: one palette index a byte, or blue, green, red, fourth byte.
enum class RowMode { Indexed, Grey, Colour, ColourAlpha };

struct Header {
    png_uint_32 width = 0, height = 0;
    int bitDepth = 0, colorType = 0;
    RowMode mode = RowMode::Colour;
};

bool ReadHeader(png_structp png, png_infop info, Header* h) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_info(png, info);
    int interlace = 0;
    png_get_IHDR(png, info, &h->width, &h->height, &h->bitDepth, &h->colorType, &interlace, nullptr, nullptr);
    const bool hasTrns = png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    if (h->colorType == PNG_COLOR_TYPE_PALETTE) {
        h->mode = RowMode::Indexed;
        png_set_packing(png);
    } else if (h->colorType == PNG_COLOR_TYPE_GRAY && h->bitDepth <= 8 && !hasTrns) {
        h->mode = RowMode::Grey;
        png_set_packing(png);
    } else {
        png_set_scale_16(png);  // rounds 16-bit samples instead of truncating them
        png_set_expand(png);
        png_set_gray_to_rgb(png);
        png_set_bgr(png);
        if ((h->colorType & PNG_COLOR_MASK_ALPHA) || hasTrns) {
            h->mode = RowMode::ColourAlpha;
        } else {
            h->mode = RowMode::Colour;
            png_set_filler(png, 0, PNG_FILLER_AFTER);
        }
    }
    if (interlace != PNG_INTERLACE_NONE) png_set_interlace_handling(png);
    png_read_update_info(png, info);
    return true;
}

bool ReadRows(png_structp png, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_image(png, rows);
    return true;
}

struct ReadStruct {
    png_structp png = nullptr;
    png_infop info = nullptr;
    ~ReadStruct() { png_destroy_read_struct(&png, info ? &info : nullptr, nullptr); }
};

// libpng allocates a chunk's declared length before reading it, so a 200-byte file that
// claims a gigabyte of eXIf costs a gigabyte. Every chunk up to the first IDAT (all that
// the header read touches) must fit in the file; one that does not could never be read.
bool ChunksBeforeImageDataFit(std::span<const uint8_t> bytes) {
    size_t pos = 8;
    while (bytes.size() - pos >= 8) {
        const uint8_t* c = bytes.data() + pos;
        const uint64_t length = uint64_t(c[0]) << 24 | uint64_t(c[1]) << 16 | uint64_t(c[2]) << 8 | c[3];
        if (std::memcmp(c + 4, "IDAT", 4) == 0) return true;
        if (length + 12 > bytes.size() - pos) return false;
        pos += static_cast<size_t>(length) + 12;
    }
    return false;  // no image data at all
}

}  // namespace

bool DecodePng(std::span<const uint8_t> bytes, DecodedPicture& out) {
    if (bytes.size() < 8 || png_sig_cmp(bytes.data(), 0, 8) != 0 || !ChunksBeforeImageDataFit(bytes))
        return false;
    ReadStruct rs;
    rs.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    if (!rs.png) return false;
    rs.info = png_create_info_struct(rs.png);
    if (!rs.info) return false;
    png_set_user_limits(rs.png, 65535, 65535);
    png_set_chunk_cache_max(rs.png, 128);
    png_set_chunk_malloc_max(rs.png, 4u << 20);
    Source src{bytes.data(), bytes.size(), 0};
    png_set_read_fn(rs.png, &src, ReadFromMemory);

    Header h;
    if (!ReadHeader(rs.png, rs.info, &h) || !PictureSizeAllowed(h.width, h.height)) return false;
    const int w = static_cast<int>(h.width), ht = static_cast<int>(h.height);

    DecodedPicture pic;
    std::vector<png_bytep> rows(static_cast<size_t>(ht));
    if (h.mode == RowMode::Indexed || h.mode == RowMode::Grey) {
        pic.indices.resize(static_cast<size_t>(w) * ht);
        for (int y = 0; y < ht; ++y) rows[y] = pic.indices.data() + static_cast<size_t>(y) * w;
        // Two-bit sources are shown as four-bit ones: the depths a bitmap can have.
        pic.bitsPerPixel = h.bitDepth == 2 ? 4 : h.bitDepth;
        if (h.mode == RowMode::Indexed) {
            png_colorp entries = nullptr;
            int count = 0;
            if (png_get_PLTE(rs.png, rs.info, &entries, &count) == 0) return false;
            for (int i = 0; i < count; ++i)
                pic.palette.push_back({entries[i].blue, entries[i].green, entries[i].red, 0});
        } else {
            const int levels = 1 << h.bitDepth;
            for (int i = 0; i < levels; ++i) {
                const auto v = static_cast<uint8_t>(i * 255 / (levels - 1));
                pic.palette.push_back({v, v, v, 0});
            }
        }
        if (!ReadRows(rs.png, rows.data())) return false;
        if (!FillPixelsFromIndices(pic, w, ht)) return false;
    } else {
        if (!pic.pixels.Create(w, ht)) return false;
        for (int y = 0; y < ht; ++y) rows[y] = pic.pixels.Row(y);
        if (!ReadRows(rs.png, rows.data())) return false;
        pic.bitsPerPixel = 24;
        if (h.mode == RowMode::ColourAlpha) {
            // Transparent parts show on black, as on a bitmap made with a black background.
            pic.bitsPerPixel = 32;
            for (int y = 0; y < ht; ++y) {
                uint8_t* p = pic.pixels.Row(y);
                for (int x = 0; x < w; ++x, p += 4) {
                    const unsigned a = p[3];
                    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>((p[c] * a + 127) / 255);
                    p[3] = 0;
                }
            }
        }
    }
    out = std::move(pic);
    return true;
}

namespace {

void WriteToVector(png_structp png, png_bytep data, size_t n) {
    auto* v = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    try {
        v->insert(v->end(), data, data + n);
    } catch (...) {
        png_error(png, "out of memory");
    }
}
void FlushNothing(png_structp) {}

bool WriteAll(png_structp png, png_infop info, const cDib* picture) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture->Width()), static_cast<png_uint_32>(picture->Height()),
                 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // zlib dominates PNG time: on a 13-megapixel photo level 3 wrote in 1.1 s a file 10 %
    // larger than level 6 did in 3.6 s.
    png_set_compression_level(png, 3);
    png_write_info(png, info);
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < picture->Height(); ++y) png_write_row(png, picture->Row(y));
    png_write_end(png, nullptr);
    return true;
}

struct WriteStruct {
    png_structp png = nullptr;
    png_infop info = nullptr;
    ~WriteStruct() { png_destroy_write_struct(&png, info ? &info : nullptr); }
};

}  // namespace

bool EncodePng(const cDib& picture, std::vector<uint8_t>& out) {
    out.clear();
    if (!picture.hDIB()) return false;
    WriteStruct ws;
    ws.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    if (!ws.png) return false;
    ws.info = png_create_info_struct(ws.png);
    if (!ws.info) return false;
    png_set_write_fn(ws.png, &out, WriteToVector, FlushNothing);
    if (WriteAll(ws.png, ws.info, &picture)) return true;
    out.clear();
    return false;
}

}  // namespace quorbel
