#include "output/Quantiser.h"

#include <unordered_map>

#include "imaging/cDIBDither.h"
#include "imaging/cDIBPal.h"

namespace quorbel {

namespace {

uint32_t Key(const uint8_t* p) { return p[0] | (p[1] << 8) | (uint32_t(p[2]) << 16); }

// The picture's own colours when there are at most 256 of them.
bool ExactPalette(const cDib& picture, IndexedPicture& out) {
    std::unordered_map<uint32_t, uint8_t> seen;
    const int w = picture.Width(), h = picture.Height();
    out.indices.resize(static_cast<size_t>(w) * h);
    for (int y = 0; y < h; ++y) {
        const uint8_t* p = picture.Row(y);
        for (int x = 0; x < w; ++x, p += 4) {
            auto [it, added] = seen.try_emplace(Key(p), static_cast<uint8_t>(seen.size()));
            if (added) {
                if (seen.size() > 256) return false;
                out.palette.push_back({p[0], p[1], p[2], 0});
            }
            out.indices[static_cast<size_t>(y) * w + x] = it->second;
        }
    }
    return true;
}

}  // namespace

IndexedPicture ReduceTo256Colours(const cDib& picture) {
    IndexedPicture out;
    if (!picture.hDIB() || ExactPalette(picture, out)) return out;
    out.palette.clear();
    out.indices.clear();

    cDIBPal palette;
    if (!palette.CreateOptimal(picture, 256)) return out;
    cDIBDither dither;
    if (!dither.Dither(picture, palette)) return out;
    out.palette.assign(palette.Entries().begin(), palette.Entries().end());
    const int w = picture.Width(), h = picture.Height();
    out.indices.resize(static_cast<size_t>(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) out.indices[static_cast<size_t>(y) * w + x] = dither.IndexAt(x, y);
    return out;
}

}  // namespace quorbel
