// Resizes a raw picture (32-bit blue-green-red-unused, top row first) with ResizeDib, for
// the quality and speed comparison of scripts/bench:
//   resize_raw IN.bgra W H OUT.bgra NEW_W NEW_H [fast]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "imaging/ResizeDib.h"

int main(int argc, char** argv) {
    if (argc < 7) {
        std::fprintf(stderr, "usage: resize_raw IN.bgra W H OUT.bgra NEW_W NEW_H [fast]\n");
        return 2;
    }
    const int w = std::atoi(argv[2]), h = std::atoi(argv[3]);
    const int nw = std::atoi(argv[5]), nh = std::atoi(argv[6]);
    const bool fast = argc > 7 && std::strcmp(argv[7], "fast") == 0;
    quorbel::cDib d;
    if (!d.Create(w, h, 0)) return 1;
    std::ifstream in(argv[1], std::ios::binary);
    for (int y = 0; y < h; ++y) in.read(reinterpret_cast<char*>(d.Row(y)), static_cast<std::streamsize>(w) * 4);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    const auto t0 = std::chrono::steady_clock::now();
    if (!quorbel::ResizeDib(d, nw, nh, !fast)) return 1;
    const auto t1 = std::chrono::steady_clock::now();
    std::fprintf(stderr, "resize %.1f ms\n", std::chrono::duration<double, std::milli>(t1 - t0).count());
    std::ofstream out(argv[4], std::ios::binary);
    for (int y = 0; y < nh; ++y) out.write(reinterpret_cast<const char*>(d.Row(y)), static_cast<std::streamsize>(nw) * 4);
    return out ? 0 : 1;
}
