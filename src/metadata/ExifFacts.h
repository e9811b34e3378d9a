#pragma once
// The EXIF facts the loader needs on every picture (its orientation, and whether the block
// can be trusted), found without the metadata library: a byte walk over the container and
// the block's directories, every offset checked against the end.
#include <cstdint>
#include <span>

namespace quorbel {

struct ExifFacts {
    bool present = false;
    bool malformed = false;  // offsets past the end, directory loops, an orientation outside 1..8
    int orientation = 1;     // 1..8 as EXIF numbers them; 1 when absent or malformed
};

// The EXIF block (starting "II*\0" or "MM\0*") inside a JPEG (APP1 "Exif"), PNG (eXIf),
// WebP (EXIF chunk) or TIFF (the file itself); empty when there is none.
std::span<const uint8_t> FindExifBlock(std::span<const uint8_t> file);

// Checks the block's directories (the first, the next, EXIF, GPS and interoperability)
// and reads the orientation of the first.
ExifFacts ParseExifBlock(std::span<const uint8_t> block);

inline ExifFacts ReadExifFacts(std::span<const uint8_t> file) {
    const auto block = FindExifBlock(file);
    return block.empty() ? ExifFacts{} : ParseExifBlock(block);
}

// Orientations 5 to 8 turn the picture a quarter: width and height change places.
constexpr bool SwapsSides(int orientation) { return orientation >= 5 && orientation <= 8; }

}  // namespace quorbel
