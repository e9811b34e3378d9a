#pragma once
// Pictures and files made by the tests themselves.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "imaging/cDib.h"
#include "core/MessageBox.h"

namespace quorbel::test {

// A smooth colour ramp with a hard edge: something JPEG keeps close and a wrong row order,
// channel order or offset breaks visibly.
inline cDib Gradient(int w, int h) {
    cDib d;
    d.Create(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            uint8_t* p = d.Row(y) + x * 4;
            p[0] = static_cast<uint8_t>(x * 255 / std::max(w - 1, 1));
            p[1] = static_cast<uint8_t>(y * 255 / std::max(h - 1, 1));
            p[2] = static_cast<uint8_t>(x < w / 2 ? 40 : 220);
        }
    return d;
}

// Slowly varying colours, as photos are: what JPEG keeps close at any size.
inline cDib Smooth(int w, int h) {
    cDib d;
    d.Create(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            uint8_t* p = d.Row(y) + x * 4;
            p[0] = static_cast<uint8_t>(std::min(x * 3, 255));
            p[1] = static_cast<uint8_t>(std::min(y * 8, 255));
            p[2] = static_cast<uint8_t>(100 + (x + y) % 50);
        }
    return d;
}

// Largest difference of any colour byte between two same-sized pictures; 256 when sizes differ.
inline int MaxDiff(const cDib& a, const cDib& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height()) return 256;
    int m = 0;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            for (int c = 0; c < 3; ++c) m = std::max(m, std::abs(a.Row(y)[x * 4 + c] - b.Row(y)[x * 4 + c]));
    return m;
}

inline double MeanDiff(const cDib& a, const cDib& b) {
    double s = 0;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            for (int c = 0; c < 3; ++c) s += std::abs(a.Row(y)[x * 4 + c] - b.Row(y)[x * 4 + c]);
    return s / (3.0 * a.Width() * a.Height());
}

struct TempDir {
    std::filesystem::path path;
    TempDir() {
        std::string t = (std::filesystem::temp_directory_path() / "quorbel-output-XXXXXX").string();
        path = mkdtemp(t.data());
    }
    ~TempDir() { std::filesystem::remove_all(path); }
    std::filesystem::path operator/(const std::string& name) const { return path / name; }
};

inline std::vector<uint8_t> ReadBytes(const std::filesystem::path& p) {
    std::ifstream f(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
}

inline void WriteBytes(const std::filesystem::path& p, const std::vector<uint8_t>& b) {
    std::ofstream f(p, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(b.data()), static_cast<std::streamsize>(b.size()));
}

// Writes v little-endian at b[at..at+3].
inline void Put32(std::vector<uint8_t>& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = uint8_t(v >> (8 * i));
}

// A BMP file of `tableBytes` of palette or masks after a 40-byte header, then `dataBytes` of pixels.
inline std::vector<uint8_t> BmpFile(int32_t w, int32_t h, uint8_t bits, uint32_t compression,
                                    uint32_t paletteCount, size_t tableBytes, size_t dataBytes) {
    std::vector<uint8_t> b(14 + 40 + tableBytes + dataBytes, 0);
    b[0] = 'B', b[1] = 'M';
    Put32(b, 10, static_cast<uint32_t>(14 + 40 + tableBytes));
    Put32(b, 14, 40), Put32(b, 18, static_cast<uint32_t>(w)), Put32(b, 22, static_cast<uint32_t>(h));
    b[26] = 1, b[28] = bits;
    Put32(b, 30, compression), Put32(b, 46, paletteCount);
    return b;
}

// Records every message shown; the tests read the exact texts and icons.
class RecordingMessages : public ScriptedMessageBox {
public:
    const std::vector<MsgRequest>& shown() const { return Shown(); }
};

inline const char* Corpus() {
    const char* c = std::getenv("QUORBEL_CORPUS");
    return c && std::filesystem::is_directory(c) ? c : nullptr;
}

}  // namespace quorbel::test
