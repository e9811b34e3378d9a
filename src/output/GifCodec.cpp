// GIF through giflib. Reading walks the records itself (no slurping of every frame into
// memory) and stops at the first picture; writing reduces the colours first.
#include <gif_lib.h>

#include <algorithm>
#include <cstring>

#include "output/Codecs.h"
#include "output/DecodeLimits.h"
#include "output/Quantiser.h"

namespace quorbel {

namespace {

struct Source {
    const uint8_t* data;
    size_t size;
    size_t pos;
};

int ReadFromMemory(GifFileType* gif, GifByteType* out, int n) {
    auto* s = static_cast<Source*>(gif->UserData);
    const size_t take = std::min(static_cast<size_t>(std::max(n, 0)), s->size - s->pos);
    std::memcpy(out, s->data + s->pos, take);
    s->pos += take;
    return static_cast<int>(take);
}

struct Reader {
    GifFileType* gif = nullptr;
    ~Reader() {
        int err = 0;
        if (gif) DGifCloseFile(gif, &err);
    }
};

// Extension records before the first picture are bounded by the file size; the cap only
// stops a file of empty records from spinning.
constexpr int kMaxRecords = 100000;
// 16 megapixels: more than any screen a GIF was made for.
constexpr int64_t kGifMaxBareScreen = int64_t(1) << 24;

bool ReadFrame(GifFileType* gif, int transparent, DecodedPicture& pic) {
    if (DGifGetImageDesc(gif) == GIF_ERROR) return false;
    const GifImageDesc& d = gif->Image;
    const ColorMapObject* map = d.ColorMap ? d.ColorMap : gif->SColorMap;
    if (!map || map->ColorCount <= 0 || !map->Colors) return false;
    if (!PictureSizeAllowed(d.Width, d.Height, 1)) return false;
    // A screen of 0 × 0 takes the frame's extent; frames are clipped to the screen.
    int sw = gif->SWidth, sh = gif->SHeight;
    if (sw <= 0 || sh <= 0) sw = d.Left + d.Width, sh = d.Top + d.Height;
    if (!PictureSizeAllowed(sw, sh)) return false;
    // A few bytes may claim a screen of a quarter of a gigapixel around a one-pixel frame:
    // a large screen is believed only when the frame fills most of it.
    const int64_t screen = int64_t(sw) * sh;
    if (screen > kGifMaxBareScreen && screen > 2 * int64_t(d.Width) * d.Height) return false;

    pic.palette.clear();
    for (int i = 0; i < map->ColorCount; ++i)
        pic.palette.push_back({map->Colors[i].Blue, map->Colors[i].Green, map->Colors[i].Red, 0});
    const uint8_t background = gif->SColorMap ? static_cast<uint8_t>(gif->SBackGroundColor) : 0;
    pic.indices.assign(static_cast<size_t>(sw) * sh, background);

    std::vector<GifPixelType> line(static_cast<size_t>(d.Width));
    static constexpr int kStart[] = {0, 4, 2, 1}, kStep[] = {8, 8, 4, 2};
    const int passes = d.Interlace ? 4 : 1;
    for (int pass = 0; pass < passes; ++pass) {
        const int start = d.Interlace ? kStart[pass] : 0, step = d.Interlace ? kStep[pass] : 1;
        for (int row = start; row < d.Height; row += step) {
            if (DGifGetLine(gif, line.data(), d.Width) == GIF_ERROR) return false;
            const int y = d.Top + row;
            if (y < 0 || y >= sh) continue;
            for (int x = 0; x < d.Width; ++x) {
                const int sx = d.Left + x;
                if (sx < 0 || sx >= sw || line[x] == transparent) continue;
                pic.indices[static_cast<size_t>(y) * sw + sx] = line[x];
            }
        }
    }
    pic.bitsPerPixel = 8;
    return FillPixelsFromIndices(pic, sw, sh);
}

}  // namespace

bool DecodeGif(std::span<const uint8_t> bytes, DecodedPicture& out) {
    Source src{bytes.data(), bytes.size(), 0};
    int err = 0;
    Reader r{DGifOpen(&src, ReadFromMemory, &err)};
    if (!r.gif) return false;
    int transparent = -1;
    for (int records = 0; records < kMaxRecords; ++records) {
        GifRecordType type;
        if (DGifGetRecordType(r.gif, &type) == GIF_ERROR) return false;
        if (type == IMAGE_DESC_RECORD_TYPE) {
            DecodedPicture pic;
            if (!ReadFrame(r.gif, transparent, pic)) return false;
            out = std::move(pic);
            return true;
        }
        if (type == EXTENSION_RECORD_TYPE) {
            int code = 0;
            GifByteType* ext = nullptr;
            if (DGifGetExtension(r.gif, &code, &ext) == GIF_ERROR) return false;
            if (code == GRAPHICS_EXT_FUNC_CODE && ext && ext[0] >= 4 && (ext[1] & 1)) transparent = ext[4];
            while (ext) {
                if (DGifGetExtensionNext(r.gif, &ext) == GIF_ERROR) return false;
            }
        } else if (type == TERMINATE_RECORD_TYPE) {
            return false;  // no picture in the file
        }
    }
    return false;
}

namespace {

int WriteToVector(GifFileType* gif, const GifByteType* data, int n) {
    auto* v = static_cast<std::vector<uint8_t>*>(gif->UserData);
    try {
        v->insert(v->end(), data, data + n);
    } catch (...) {
        return 0;
    }
    return n;
}

struct Writer {
    GifFileType* gif = nullptr;
    ColorMapObject* map = nullptr;
    bool Close() {
        int err = 0;
        const bool ok = !gif || EGifCloseFile(gif, &err) == GIF_OK;
        gif = nullptr;
        return ok;
    }
    ~Writer() {
        Close();
        if (map) GifFreeMapObject(map);
    }
};

}  // namespace

bool EncodeGif(const cDib& picture, std::vector<uint8_t>& out) {
    out.clear();
    if (!picture.hDIB()) return false;
    const IndexedPicture indexed = ReduceTo256Colours(picture);
    // The colour table holds a power of two entries, at least two.
    int bits = 1;
    while ((1 << bits) < static_cast<int>(indexed.palette.size())) ++bits;
    Writer w;
    w.map = GifMakeMapObject(1 << bits, nullptr);
    if (!w.map) return false;
    std::memset(w.map->Colors, 0, sizeof(GifColorType) * (size_t(1) << bits));
    for (size_t i = 0; i < indexed.palette.size(); ++i)
        w.map->Colors[i] = {indexed.palette[i].red, indexed.palette[i].green, indexed.palette[i].blue};
    int err = 0;
    w.gif = EGifOpen(&out, WriteToVector, &err);
    if (!w.gif) return false;
    const int width = picture.Width(), height = picture.Height();
    bool ok = EGifPutScreenDesc(w.gif, width, height, bits, 0, w.map) == GIF_OK &&
              EGifPutImageDesc(w.gif, 0, 0, width, height, false, nullptr) == GIF_OK;
    for (int y = 0; y < height && ok; ++y)
        ok = EGifPutLine(w.gif, const_cast<GifPixelType*>(indexed.indices.data()) + static_cast<size_t>(y) * width,
                         width) == GIF_OK;
    ok = w.Close() && ok;
    if (!ok) out.clear();
    return ok;
}

}  // namespace quorbel
