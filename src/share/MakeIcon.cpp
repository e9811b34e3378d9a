// quorbel-make-icon OUT.ico: draws the disc's 32 x 32 slide show icon (a film frame with a
// landscape and a play mark) and writes it as a 32-bit icon with its transparency mask.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <vector>

namespace {

constexpr int kSize = 32;

struct Rgba {
    uint8_t r = 0, g = 0, b = 0, a = 0;
};

Rgba Draw(int x, int y) {
    const Rgba film{38, 40, 52, 255}, hole{232, 232, 236, 255};
    // The film strip, its corners rounded off.
    const bool corner = (x == 2 || x == 29) && (y == 5 || y == 26);
    if (x < 2 || x > 29 || y < 5 || y > 26 || corner) return {};
    if (y <= 8 || y >= 23 || x <= 3 || x >= 28) {
        const bool sprocket = (y == 6 || y == 7 || y == 24 || y == 25) && x % 4 >= 1 && x % 4 <= 2 && x > 3 && x < 28;
        return sprocket ? hole : film;
    }
    // The frame: a sky, a sun, a hill, and the play mark over them.
    const int px = x - 4, py = y - 9;  // 0..23, 0..13
    if (px >= 9 && px <= 14 && std::abs(2 * py - 13) <= 2 * (14 - px) + 1)
        return {255, 255, 255, 255};
    if (py > 9 - std::lround(3 * std::sin(px * 0.25))) return {76, 160, 80, 255};
    if ((px - 18) * (px - 18) + (py - 3) * (py - 3) <= 5) return {255, 204, 64, 255};
    return {static_cast<uint8_t>(90 + py * 8), static_cast<uint8_t>(150 + py * 6), 235, 255};
}

void Put16(std::vector<uint8_t>& b, int v) {
    b.push_back(static_cast<uint8_t>(v));
    b.push_back(static_cast<uint8_t>(v >> 8));
}
void Put32(std::vector<uint8_t>& b, int v) {
    Put16(b, v & 0xffff);
    Put16(b, (v >> 16) & 0xffff);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: quorbel-make-icon OUT.ico\n", stderr);
        return 2;
    }
    constexpr int maskRow = 4;  // 32 one-bit pixels
    constexpr int imageBytes = 40 + kSize * kSize * 4 + kSize * maskRow;
    std::vector<uint8_t> ico;
    Put16(ico, 0), Put16(ico, 1), Put16(ico, 1);                   // icon file, one picture
    ico.push_back(kSize), ico.push_back(kSize), ico.push_back(0), ico.push_back(0);
    Put16(ico, 1), Put16(ico, 32), Put32(ico, imageBytes), Put32(ico, 6 + 16);
    Put32(ico, 40), Put32(ico, kSize), Put32(ico, kSize * 2);        // height counts the mask too
    Put16(ico, 1), Put16(ico, 32);
    for (int i = 0; i < 6; ++i) Put32(ico, 0);
    for (int y = kSize - 1; y >= 0; --y)                             // bottom-up
        for (int x = 0; x < kSize; ++x) {
            const Rgba c = Draw(x, y);
            ico.insert(ico.end(), {c.b, c.g, c.r, c.a});
        }
    for (int y = kSize - 1; y >= 0; --y)
        for (int byte = 0; byte < maskRow; ++byte) {
            uint8_t bits = 0;
            for (int bit = 0; bit < 8; ++bit)
                if (Draw(byte * 8 + bit, y).a == 0) bits |= static_cast<uint8_t>(0x80 >> bit);
            ico.push_back(bits);
        }
    std::ofstream out(argv[1], std::ios::binary);
    out.write(reinterpret_cast<const char*>(ico.data()), static_cast<std::streamsize>(ico.size()));
    return out ? 0 : 1;
}
