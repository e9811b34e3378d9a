// cDIBPal's optimal palette: median cut over a histogram of 5 bits per channel.
#include <algorithm>
#include <array>
#include <vector>

#include "imaging/cDIBPal.h"

namespace quorbel {
namespace {

struct Bin {
    std::array<uint8_t, 3> key;  // red, green, blue, 5 bits each
    uint32_t count;
    std::array<uint64_t, 3> sum;  // of the true 8-bit values, for an exact mean
};

struct Box {
    size_t begin, end;  // range of bins
    int axis;           // the widest channel
    int extent;         // its width in 5-bit steps
    uint64_t population;
};

Box Measure(const std::vector<Bin>& bins, size_t begin, size_t end) {
    std::array<int, 3> lo{31, 31, 31}, hi{0, 0, 0};
    uint64_t population = 0;
    for (size_t i = begin; i < end; ++i) {
        for (int c = 0; c < 3; ++c) {
            lo[c] = std::min<int>(lo[c], bins[i].key[c]);
            hi[c] = std::max<int>(hi[c], bins[i].key[c]);
        }
        population += bins[i].count;
    }
    Box box{begin, end, 0, hi[0] - lo[0], population};
    for (int c = 1; c < 3; ++c)
        if (hi[c] - lo[c] > box.extent) box = {begin, end, c, hi[c] - lo[c], population};
    return box;
}

}  // namespace

bool cDIBPal::CreateOptimal(const cDib& picture, int count) {
    if (!picture.hDIB()) return false;
    count = std::clamp(count, 2, 256);
    std::vector<Bin> table(32768);
    for (int y = 0; y < picture.Height(); ++y) {
        const uint8_t* p = picture.Row(y);
        for (int x = 0; x < picture.Width(); ++x, p += 4) {
            Bin& b = table[((p[2] >> 3) << 10) | ((p[1] >> 3) << 5) | (p[0] >> 3)];
            ++b.count;
            b.sum[0] += p[2];
            b.sum[1] += p[1];
            b.sum[2] += p[0];
        }
    }
    std::vector<Bin> bins;
    for (int i = 0; i < 32768; ++i)
        if (table[i].count) {
            table[i].key = {uint8_t(i >> 10), uint8_t((i >> 5) & 31), uint8_t(i & 31)};
            bins.push_back(table[i]);
        }

    // Split the widest box (ties: the more populous) at the population median of its
    // widest channel until there are enough boxes or none can be split.
    std::vector<Box> boxes{Measure(bins, 0, bins.size())};
    while (static_cast<int>(boxes.size()) < count) {
        auto widest = std::max_element(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) {
            return a.extent != b.extent ? a.extent < b.extent : a.population < b.population;
        });
        if (widest->extent == 0) break;
        const Box box = *widest;
        std::sort(bins.begin() + box.begin, bins.begin() + box.end,
                  [axis = box.axis](const Bin& a, const Bin& b) { return a.key[axis] < b.key[axis]; });
        uint64_t running = 0;
        size_t cut = box.begin + 1;
        for (size_t i = box.begin; i + 1 < box.end; ++i) {
            running += bins[i].count;
            cut = i + 1;
            if (running * 2 >= box.population) break;
        }
        *widest = Measure(bins, box.begin, cut);
        boxes.push_back(Measure(bins, cut, box.end));
    }

    SetEntryCount(static_cast<int>(boxes.size()));
    for (size_t k = 0; k < boxes.size(); ++k) {
        std::array<uint64_t, 3> sum{};
        for (size_t i = boxes[k].begin; i < boxes[k].end; ++i)
            for (int c = 0; c < 3; ++c) sum[c] += bins[i].sum[c];
        const uint64_t n = std::max<uint64_t>(boxes[k].population, 1);
        auto mean = [n](uint64_t s) { return static_cast<uint8_t>((s + n / 2) / n); };
        entries_[k] = {mean(sum[2]), mean(sum[1]), mean(sum[0]), 0};
    }
    RebuildPalette();
    return true;
}

}  // namespace quorbel
