#include "output/Quantiser.h"

#include <algorithm>
#include <array>
#include <unordered_map>

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

// A histogram cell: 5 bits per channel; sums keep the full 8-bit colours for the means.
constexpr int kCells = 1 << 15;
int Cell(int b, int g, int r) { return (b >> 3) | ((g >> 3) << 5) | ((r >> 3) << 10); }
int Channel(int cell, int c) { return (cell >> (5 * c)) & 31; }

struct Histogram {
    std::vector<uint32_t> count = std::vector<uint32_t>(kCells);
    std::vector<std::array<uint64_t, 3>> sum = std::vector<std::array<uint64_t, 3>>(kCells);
};

struct Box {
    size_t begin, end;  // range of cells
    int longest = 0;    // channel of the widest extent
    int extent = 0;
};

void Measure(Box& box, const std::vector<int>& cells) {
    int lo[3] = {31, 31, 31}, hi[3] = {0, 0, 0};
    for (size_t i = box.begin; i < box.end; ++i)
        for (int c = 0; c < 3; ++c) {
            lo[c] = std::min(lo[c], Channel(cells[i], c));
            hi[c] = std::max(hi[c], Channel(cells[i], c));
        }
    box.extent = -1;
    for (int c = 0; c < 3; ++c)
        if (hi[c] - lo[c] > box.extent) box.extent = hi[c] - lo[c], box.longest = c;
}

std::vector<RgbQuad> MedianCut(const Histogram& hist) {
    std::vector<int> cells;
    for (int i = 0; i < kCells; ++i)
        if (hist.count[i]) cells.push_back(i);
    std::vector<Box> boxes{{0, cells.size()}};
    Measure(boxes[0], cells);
    while (boxes.size() < 256) {
        // Split the widest box that still holds more than one cell.
        auto it = std::max_element(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) {
            return (a.end - a.begin > 1 ? a.extent : -1) < (b.end - b.begin > 1 ? b.extent : -1);
        });
        if (it->end - it->begin < 2) break;
        Box box = *it;
        const int c = box.longest;
        std::sort(cells.begin() + box.begin, cells.begin() + box.end,
                  [c](int a, int b) { return Channel(a, c) < Channel(b, c); });
        uint64_t total = 0, running = 0;
        for (size_t i = box.begin; i < box.end; ++i) total += hist.count[cells[i]];
        size_t split = box.begin + 1;
        for (size_t i = box.begin; i + 1 < box.end; ++i) {
            running += hist.count[cells[i]];
            split = i + 1;
            if (running * 2 >= total) break;
        }
        Box a{box.begin, split}, b{split, box.end};
        Measure(a, cells);
        Measure(b, cells);
        *it = a;
        boxes.push_back(b);
    }
    std::vector<RgbQuad> palette;
    for (const Box& box : boxes) {
        uint64_t n = 0, s[3] = {0, 0, 0};
        for (size_t i = box.begin; i < box.end; ++i) {
            n += hist.count[cells[i]];
            for (int c = 0; c < 3; ++c) s[c] += hist.sum[cells[i]][c];
        }
        auto mean = [n](uint64_t v) { return static_cast<uint8_t>((v + n / 2) / n); };
        palette.push_back({mean(s[0]), mean(s[1]), mean(s[2]), 0});
    }
    return palette;
}

}  // namespace

IndexedPicture ReduceTo256Colours(const cDib& picture) {
    IndexedPicture out;
    if (!picture.hDIB() || ExactPalette(picture, out)) return out;
    out.palette.clear();

    const int w = picture.Width(), h = picture.Height();
    Histogram hist;
    for (int y = 0; y < h; ++y) {
        const uint8_t* p = picture.Row(y);
        for (int x = 0; x < w; ++x, p += 4) {
            const int cell = Cell(p[0], p[1], p[2]);
            ++hist.count[cell];
            for (int c = 0; c < 3; ++c) hist.sum[cell][c] += p[c];
        }
    }
    out.palette = MedianCut(hist);

    // Nearest palette entry per cell, worked out the first time a cell is met.
    std::vector<int16_t> nearest(kCells, -1);
    auto lookup = [&](int b, int g, int r) {
        int16_t& slot = nearest[Cell(b, g, r)];
        if (slot < 0) {
            const int cb = (b & ~7) + 4, cg = (g & ~7) + 4, cr = (r & ~7) + 4;
            int best = 0, bestD = INT32_MAX;
            for (size_t i = 0; i < out.palette.size(); ++i) {
                const RgbQuad& q = out.palette[i];
                const int d = (q.blue - cb) * (q.blue - cb) + (q.green - cg) * (q.green - cg) +
                              (q.red - cr) * (q.red - cr);
                if (d < bestD) bestD = d, best = static_cast<int>(i);
            }
            slot = static_cast<int16_t>(best);
        }
        return slot;
    };

    // Floyd–Steinberg: errors in sixteenths carried to the right and to the row below.
    std::vector<int> errThis(static_cast<size_t>(w + 2) * 3), errNext(errThis.size());
    out.indices.resize(static_cast<size_t>(w) * h);
    for (int y = 0; y < h; ++y) {
        std::fill(errNext.begin(), errNext.end(), 0);
        const uint8_t* p = picture.Row(y);
        for (int x = 0; x < w; ++x, p += 4) {
            int v[3];
            for (int c = 0; c < 3; ++c) v[c] = std::clamp(p[c] + (errThis[(x + 1) * 3 + c] + 8) / 16, 0, 255);
            const int idx = lookup(v[0], v[1], v[2]);
            out.indices[static_cast<size_t>(y) * w + x] = static_cast<uint8_t>(idx);
            const RgbQuad& q = out.palette[idx];
            const int e[3] = {v[0] - q.blue, v[1] - q.green, v[2] - q.red};
            for (int c = 0; c < 3; ++c) {
                errThis[(x + 2) * 3 + c] += e[c] * 7;
                errNext[x * 3 + c] += e[c] * 3;
                errNext[(x + 1) * 3 + c] += e[c] * 5;
                errNext[(x + 2) * 3 + c] += e[c];
            }
        }
        std::swap(errThis, errNext);
    }
    return out;
}

}  // namespace quorbel
