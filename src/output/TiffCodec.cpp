// TIFF through libtiff, from and to memory. Each handle gets its own error handler (the
// messages go nowhere: a failing file simply gives no picture) and a cap on any single
// allocation, so a header that promises gigabytes is refused instead of believed.
#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"

namespace quorbel {

namespace {

struct Stream {
    const uint8_t* data = nullptr;  // reading
    size_t size = 0;
    std::vector<uint8_t>* out = nullptr;  // writing
    uint64_t pos = 0;

    size_t Size() const { return out ? out->size() : size; }
    const uint8_t* Data() const { return out ? out->data() : data; }
};

Stream* S(thandle_t h) { return static_cast<Stream*>(h); }

tmsize_t ReadProc(thandle_t h, void* buf, tmsize_t n) {
    Stream* s = S(h);
    if (n < 0 || s->pos >= s->Size()) return 0;
    const size_t take = std::min<uint64_t>(static_cast<uint64_t>(n), s->Size() - s->pos);
    std::memcpy(buf, s->Data() + s->pos, take);
    s->pos += take;
    return static_cast<tmsize_t>(take);
}

tmsize_t WriteProc(thandle_t h, void* buf, tmsize_t n) {
    Stream* s = S(h);
    if (!s->out || n < 0) return -1;
    try {
        const uint64_t end = s->pos + static_cast<uint64_t>(n);
        if (end > s->out->size()) s->out->resize(end);
        std::memcpy(s->out->data() + s->pos, buf, static_cast<size_t>(n));
        s->pos = end;
    } catch (...) {
        return -1;
    }
    return n;
}

toff_t SeekProc(thandle_t h, toff_t off, int whence) {
    Stream* s = S(h);
    int64_t base = whence == SEEK_CUR ? static_cast<int64_t>(s->pos)
                   : whence == SEEK_END ? static_cast<int64_t>(s->Size())
                                        : 0;
    const int64_t target = base + static_cast<int64_t>(off);
    if (target < 0) return static_cast<toff_t>(-1);
    s->pos = static_cast<uint64_t>(target);
    return s->pos;
}

int CloseProc(thandle_t) { return 0; }
toff_t SizeProc(thandle_t h) { return S(h)->Size(); }
int MapProc(thandle_t, void**, toff_t*) { return 0; }
void UnmapProc(thandle_t, void*, toff_t) {}

int Quietly(TIFF*, void*, const char*, const char*, va_list) { return 1; }

struct Handle {
    TIFF* tif = nullptr;
    ~Handle() {
        if (tif) TIFFClose(tif);
    }
};

TIFF* Open(Stream& stream, const char* mode) {
    TIFFOpenOptions* opts = TIFFOpenOptionsAlloc();
    if (!opts) return nullptr;
    TIFFOpenOptionsSetMaxSingleMemAlloc(opts, tmsize_t(256) << 20);
    TIFFOpenOptionsSetErrorHandlerExtR(opts, Quietly, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(opts, Quietly, nullptr);
    TIFF* tif = TIFFClientOpenExt("picture", mode, &stream, ReadProc, WriteProc, SeekProc, CloseProc, SizeProc,
                                  MapProc, UnmapProc, opts);
    TIFFOpenOptionsFree(opts);
    return tif;
}

// Palette pictures of up to 8 bits keep their palette and indices.
bool ReadIndexed(TIFF* tif, int w, int h, int bps, DecodedPicture& pic) {
    uint16_t *r = nullptr, *g = nullptr, *b = nullptr;
    if (!TIFFGetField(tif, TIFFTAG_COLORMAP, &r, &g, &b)) return false;
    const int count = 1 << bps;
    // Some writers store 8-bit values in the 16-bit colour map.
    bool eightBit = true;
    for (int i = 0; i < count; ++i) eightBit = eightBit && r[i] < 256 && g[i] < 256 && b[i] < 256;
    auto to8 = [eightBit](uint16_t v) { return static_cast<uint8_t>(eightBit ? v : (v * 255u + 32767u) / 65535u); };
    for (int i = 0; i < count; ++i) pic.palette.push_back({to8(b[i]), to8(g[i]), to8(r[i]), 0});

    const tmsize_t lineBytes = TIFFScanlineSize(tif);
    if (lineBytes < (int64_t(w) * bps + 7) / 8) return false;
    std::vector<uint8_t> line(static_cast<size_t>(lineBytes));
    pic.indices.resize(static_cast<size_t>(w) * h);
    const int perByte = 8 / bps;
    const unsigned mask = (1u << bps) - 1;
    for (int y = 0; y < h; ++y) {
        if (TIFFReadScanline(tif, line.data(), static_cast<uint32_t>(y), 0) < 0) return false;
        uint8_t* o = pic.indices.data() + static_cast<size_t>(y) * w;
        for (int x = 0; x < w; ++x)
            o[x] = static_cast<uint8_t>((line[x / perByte] >> (bps * (perByte - 1 - x % perByte))) & mask);
    }
    pic.bitsPerPixel = bps == 2 ? 4 : bps;
    return FillPixelsFromIndices(pic, w, h);
}

}  // namespace

bool DecodeTiff(std::span<const uint8_t> bytes, DecodedPicture& out) {
    Stream stream{bytes.data(), bytes.size()};
    Handle h{Open(stream, "rm")};
    if (!h.tif) return false;
    uint32_t w = 0, ht = 0;
    uint16_t bps = 1, spp = 1, photometric = 0, planar = PLANARCONFIG_CONTIG;
    if (!TIFFGetField(h.tif, TIFFTAG_IMAGEWIDTH, &w) || !TIFFGetField(h.tif, TIFFTAG_IMAGELENGTH, &ht)) return false;
    if (!PictureSizeAllowed(w, ht)) return false;
    TIFFGetFieldDefaulted(h.tif, TIFFTAG_BITSPERSAMPLE, &bps);
    TIFFGetFieldDefaulted(h.tif, TIFFTAG_SAMPLESPERPIXEL, &spp);
    TIFFGetFieldDefaulted(h.tif, TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetField(h.tif, TIFFTAG_PHOTOMETRIC, &photometric);

    DecodedPicture pic;
    if (photometric == PHOTOMETRIC_PALETTE && spp == 1 && (bps == 1 || bps == 2 || bps == 4 || bps == 8) &&
        !TIFFIsTiled(h.tif) && planar == PLANARCONFIG_CONTIG) {
        if (!ReadIndexed(h.tif, static_cast<int>(w), static_cast<int>(ht), bps, pic)) return false;
    } else {
        char why[1024];
        if (!TIFFRGBAImageOK(h.tif, why)) return false;
        if (!pic.pixels.Create(static_cast<int32_t>(w), static_cast<int32_t>(ht))) return false;
        // Rows as stored: the loader turns the picture upright by its orientation afterwards.
        TIFFSetField(h.tif, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
        // The library's ABGR words, bottom row first, land straight in the buffer's memory
        // (which is bottom-up too); only red and blue change places afterwards.
        if (!TIFFReadRGBAImageOriented(h.tif, w, ht, reinterpret_cast<uint32_t*>(pic.pixels.lpBits()),
                                       ORIENTATION_BOTLEFT, 1))
            return false;
        uint8_t* p = pic.pixels.lpBits();
        for (int64_t i = 0, n = int64_t(w) * ht; i < n; ++i, p += 4) {
            std::swap(p[0], p[2]);
            p[3] = 0;  // alpha came premultiplied: transparent parts are black already
        }
        pic.bitsPerPixel = spp >= 4 ? 32 : 24;
    }
    out = std::move(pic);
    return true;
}

bool EncodeTiff(const cDib& picture, int compression, int colorDepth, std::vector<uint8_t>& out) {
    out.clear();
    if (!picture.hDIB()) return false;
    Stream stream;
    stream.out = &out;
    bool ok = false;
    {
        Handle h{Open(stream, "w")};
        if (!h.tif) return false;
        const int w = picture.Width(), ht = picture.Height();
        const uint16_t spp = colorDepth == 32 ? 4 : 3;
        TIFFSetField(h.tif, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(w));
        TIFFSetField(h.tif, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(ht));
        TIFFSetField(h.tif, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(h.tif, TIFFTAG_SAMPLESPERPIXEL, spp);
        if (spp == 4) {
            const uint16_t extra[] = {EXTRASAMPLE_UNSPECIFIED};
            TIFFSetField(h.tif, TIFFTAG_EXTRASAMPLES, 1, extra);
        }
        TIFFSetField(h.tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(h.tif, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(h.tif, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
        // 2 and 6 are the encoder parameter values for LZW and for no compression.
        TIFFSetField(h.tif, TIFFTAG_COMPRESSION, compression == 2 ? COMPRESSION_LZW : COMPRESSION_NONE);
        TIFFSetField(h.tif, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(h.tif, 0));
        std::vector<uint8_t> line(static_cast<size_t>(w) * spp);
        ok = true;
        for (int y = 0; y < ht && ok; ++y) {
            const uint8_t* in = picture.Row(y);
            for (int x = 0; x < w; ++x) {
                uint8_t* o = line.data() + static_cast<size_t>(x) * spp;
                o[0] = in[x * 4 + 2];
                o[1] = in[x * 4 + 1];
                o[2] = in[x * 4];
                if (spp == 4) o[3] = in[x * 4 + 3];
            }
            ok = TIFFWriteScanline(h.tif, line.data(), static_cast<uint32_t>(y), 0) >= 0;
        }
        ok = ok && TIFFFlush(h.tif) == 1;
    }  // closing writes the last directory
    if (!ok) out.clear();
    return ok;
}

}  // namespace quorbel
