// The rank and nudge filters over the 3 × 3 block: Despeckle, Dilate, Erode and the
// salt-and-pepper median.
#include <emmintrin.h>

#include <algorithm>
#include <cstdlib>

#include "effects/cDIBFilter.h"

namespace quorbel {
namespace {

// The eight neighbours in reading order, as (row, byte offset) against the centre.
constexpr int kRing[8][2] = {{0, -4}, {0, 0}, {0, 4}, {1, -4}, {1, 4}, {2, -4}, {2, 0}, {2, 4}};

void DespeckleRows(cDib& picture, const ProgressFn& progress, int rounds) {
    ForInnerRows(picture, progress, [rounds](const uint8_t* up, const uint8_t* mid, const uint8_t* down,
                                             uint8_t* out, int first, int end) {
        const uint8_t* rows[3] = {up, mid, down};
        // Sixteen bytes at a time. "Below v - 1" is v - c >= 2 in saturating arithmetic, which
        // also means v > 0; "above v + 1" is c - v >= 2, which means v < 255. The two exclude
        // each other, so each nudge is one subtraction and one addition of a 0/1 mask.
        const __m128i one = _mm_set1_epi8(1), zero = _mm_setzero_si128();
        int i = first;
        for (; i + 16 <= end; i += 16) {
            __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mid + i));
            for (int r = 0; r < rounds; ++r)
                for (const auto& n : kRing) {
                    const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[n[0]] + i + n[1]));
                    const __m128i notFarBelow = _mm_cmpeq_epi8(_mm_subs_epu8(_mm_subs_epu8(v, c), one), zero);
                    const __m128i notFarAbove = _mm_cmpeq_epi8(_mm_subs_epu8(_mm_subs_epu8(c, v), one), zero);
                    v = _mm_sub_epi8(v, _mm_andnot_si128(notFarBelow, one));
                    v = _mm_add_epi8(v, _mm_andnot_si128(notFarAbove, one));
                }
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), v);
        }
        for (; i < end; ++i) {
            int v = mid[i];
            for (int r = 0; r < rounds; ++r)
                for (const auto& n : kRing) {
                    const int c = rows[n[0]][i + n[1]];
                    if (c < v - 1 && v > 0)
                        --v;
                    else if (c > v + 1 && v < 255)
                        ++v;
                }
            out[i] = static_cast<uint8_t>(v);
        }
    });
}

template <class Pick>
void RankRows(cDib& picture, const ProgressFn& progress, Pick pick) {
    ForInnerRows(picture, progress, [pick](const uint8_t* up, const uint8_t* mid, const uint8_t* down,
                                           uint8_t* out, int first, int end) {
        for (int i = first; i < end; ++i) {
            uint8_t v = mid[i];
            v = pick(v, pick(pick(up[i - 4], up[i]), up[i + 4]));
            v = pick(v, pick(mid[i - 4], mid[i + 4]));
            v = pick(v, pick(pick(down[i - 4], down[i]), down[i + 4]));
            out[i] = v;
        }
    });
}

inline void Order(uint8_t& a, uint8_t& b) {
    const uint8_t lo = std::min(a, b);
    b = std::max(a, b);
    a = lo;
}

// The median of nine by a fixed exchange network (19 exchanges), branch-free.
inline uint8_t Median9(uint8_t* p) {
    Order(p[1], p[2]); Order(p[4], p[5]); Order(p[7], p[8]);
    Order(p[0], p[1]); Order(p[3], p[4]); Order(p[6], p[7]);
    Order(p[1], p[2]); Order(p[4], p[5]); Order(p[7], p[8]);
    Order(p[0], p[3]); Order(p[5], p[8]); Order(p[4], p[7]);
    Order(p[3], p[6]); Order(p[1], p[4]); Order(p[2], p[5]);
    Order(p[4], p[7]); Order(p[4], p[2]); Order(p[6], p[4]);
    Order(p[4], p[2]);
    return p[4];
}

}  // namespace

bool cDIBFilter::Despeckle(cDib& picture) {
    if (!picture.hDIB()) return false;
    DespeckleRows(picture, Progress, 1);
    return true;
}

bool cDIBFilter::DespeckleMore(cDib& picture) {
    if (!picture.hDIB()) return false;
    DespeckleRows(picture, Progress, 2);
    return true;
}

bool cDIBFilter::Dilate(cDib& picture) {
    if (!picture.hDIB()) return false;
    RankRows(picture, Progress, [](uint8_t a, uint8_t b) { return std::max(a, b); });
    return true;
}

bool cDIBFilter::Erode(cDib& picture) {
    if (!picture.hDIB()) return false;
    RankRows(picture, Progress, [](uint8_t a, uint8_t b) { return std::min(a, b); });
    return true;
}

bool cDIBFilter::SaltPepper(cDib& picture, int level) {
    if (!picture.hDIB()) return false;
    const int threshold = 255 - std::clamp(level, 0, 255);
    ForInnerRows(picture, Progress, [threshold](const uint8_t* up, const uint8_t* mid, const uint8_t* down,
                                                uint8_t* out, int first, int end) {
        for (int i = first; i < end; ++i) {
            uint8_t p[9] = {up[i - 4],  up[i],  up[i + 4],  mid[i - 4], mid[i],
                            mid[i + 4], down[i - 4], down[i], down[i + 4]};
            const uint8_t median = Median9(p);
            out[i] = std::abs(mid[i] - median) > threshold ? median : mid[i];
        }
    });
    return true;
}

}  // namespace quorbel
