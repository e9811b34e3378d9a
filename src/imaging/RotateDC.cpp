#include "imaging/RotateDC.h"

#include <cmath>
#include <cstring>

#include "core/CheckedMath.h"
#include "core/Rounding.h"
#include "core/ThreadPool.h"

namespace quorbel {
namespace {
constexpr const char* kSource = "RotateDC";
}

int32_t DegreesToWholeRadians(int32_t degrees) {
    return RoundToInt32(degrees * 3.14159265359 / 180.0, kSource);
}

TurnedBox TurnedBounds(int32_t w, int32_t h, int32_t s, int32_t c) {
    const int32_t x1 = CheckedSub(0, CheckedMul(h, s, kSource), kSource), y1 = CheckedMul(h, c, kSource);
    const int32_t x2 = CheckedSub(CheckedMul(w, c, kSource), CheckedMul(h, s, kSource), kSource);
    const int32_t y2 = CheckedAdd(CheckedMul(w, s, kSource), CheckedMul(h, c, kSource), kSource);
    const int32_t x3 = CheckedMul(w, c, kSource), y3 = CheckedMul(w, s, kSource);
    const int32_t minX = Min2(0, Min2(x1, Min2(x2, x3))), maxX = Max2(0, Max2(x1, Max2(x2, x3)));
    const int32_t minY = Min2(0, Min2(y1, Min2(y2, y3))), maxY = Max2(0, Max2(y1, Max2(y2, y3)));
    return {minX, minY, CheckedSub(maxX, minX, kSource), CheckedSub(maxY, minY, kSource)};
}

bool RotateDC(cDib& picture, int32_t angle) {
    if (!picture.hDIB()) return false;
    const int32_t w = picture.Width(), h = picture.Height();
    const int32_t s = RoundToInt32(std::sin(static_cast<double>(angle)), kSource);
    const int32_t c = RoundToInt32(std::cos(static_cast<double>(angle)), kSource);
    const TurnedBox box = TurnedBounds(w, h, s, c);

    // The source coordinates are linear in (x, y), so checking the four corners of the
    // inclusive loop range checks every value the loop can reach.
    for (int32_t x : {int32_t(0), box.width}) {
        for (int32_t y : {int32_t(0), box.height}) {
            const int32_t X = CheckedAdd(x, box.minX, kSource), Y = CheckedAdd(y, box.minY, kSource);
            CheckedAdd(CheckedMul(X, c, kSource), CheckedMul(Y, s, kSource), kSource);
            CheckedSub(CheckedMul(Y, c, kSource), CheckedMul(X, s, kSource), kSource);
        }
    }

    cDib turned;
    if (!turned.Create(box.width, box.height, 0)) return false;
    const PixelView& src = picture.View();
    const PixelView& dst = turned.View();
    // Inclusive loops, as the routine always ran; positions past either picture copy nothing.
    ParallelFor(box.height + 1, 16, [&](int y0, int y1) {
        for (int32_t y = y0; y < y1; ++y) {
            if (y >= dst.height) continue;
            const int32_t Y = y + box.minY;
            uint32_t* out = reinterpret_cast<uint32_t*>(dst.Row(y));
            for (int32_t x = 0; x <= box.width; ++x) {
                const int32_t X = x + box.minX;
                const int32_t col = X * c + Y * s;
                const int32_t row = Y * c - X * s;
                if (col < 0 || col > w || row < 0 || row > h) continue;
                if (col == w || row == h || x == dst.width) continue;  // one past the edge
                std::memcpy(out + x, src.At(col, row), 4);
            }
        }
    });
    picture.Swap(turned);
    return true;
}

bool RotateByDegrees(cDib& picture, int32_t degrees) {
    return RotateDC(picture, DegreesToWholeRadians(degrees));
}

}  // namespace quorbel
