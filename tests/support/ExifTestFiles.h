#pragma once
// EXIF blocks written by hand (little-endian, one directory) and put into picture files.
#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace quorbel::test {

struct ExifEntry {
    uint16_t tag, type;
    uint32_t count, value;  // the value itself when it fits in four bytes, else its offset
};

// "II*\0", the directory at 8, its entries, no next directory.
// count: the directory's entry count when it should differ from the entries given.
inline std::vector<uint8_t> ExifBlock(const std::vector<ExifEntry>& entries, int count = -1) {
    std::vector<uint8_t> b = {'I', 'I', 42, 0, 8, 0, 0, 0};
    // Byte by byte: GCC 12 at -O3 mistakes an inserted list here for an out-of-bounds copy.
    auto put16 = [&b](uint32_t v) { b.push_back(uint8_t(v)); b.push_back(uint8_t(v >> 8)); };
    auto put32 = [&](uint32_t v) { put16(v & 0xFFFF); put16(v >> 16); };
    put16(count < 0 ? entries.size() : uint32_t(count));
    for (const ExifEntry& e : entries) {
        put16(e.tag);
        put16(e.type);
        put32(e.count);
        put32(e.value);
    }
    put32(0);
    return b;
}

inline std::vector<uint8_t> OrientationBlock(int orientation) { return ExifBlock({{0x0112, 3, 1, uint32_t(orientation)}}); }

// The block as an APP1 segment right after the JPEG's start marker.
inline std::vector<uint8_t> WithJpegExif(std::vector<uint8_t> jpeg, const std::vector<uint8_t>& block) {
    const size_t n = block.size() + 8;
    std::vector<uint8_t> seg = {0xFF, 0xE1, uint8_t(n >> 8), uint8_t(n), 'E', 'x', 'i', 'f', 0, 0};
    seg.insert(seg.end(), block.begin(), block.end());
    jpeg.insert(jpeg.begin() + 2, seg.begin(), seg.end());
    return jpeg;
}

// The block as an eXIf chunk right after the PNG's header chunk.
inline std::vector<uint8_t> WithPngExif(std::vector<uint8_t> png, const std::vector<uint8_t>& block) {
    const uint32_t n = static_cast<uint32_t>(block.size());
    std::vector<uint8_t> chunk = {uint8_t(n >> 24), uint8_t(n >> 16), uint8_t(n >> 8), uint8_t(n), 'e', 'X', 'I', 'f'};
    chunk.insert(chunk.end(), block.begin(), block.end());
    const uint32_t crc = static_cast<uint32_t>(crc32(0, chunk.data() + 4, static_cast<uInt>(chunk.size() - 4)));
    chunk.insert(chunk.end(), {uint8_t(crc >> 24), uint8_t(crc >> 16), uint8_t(crc >> 8), uint8_t(crc)});
    png.insert(png.begin() + 33, chunk.begin(), chunk.end());
    return png;
}

}  // namespace quorbel::test
