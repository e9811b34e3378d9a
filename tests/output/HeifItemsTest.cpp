// Grid and overlay canvases are read from hand-built HEIF boxes and held to the caps before
// libheif sees the file.
#include "output/HeifItems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorbel {
namespace {

using Bytes = std::vector<uint8_t>;

void Put(Bytes& b, uint64_t v, int n) {
    for (int i = n - 1; i >= 0; --i) b.push_back(uint8_t(v >> 8 * i));
}
Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}
Bytes Box(const char* type, const Bytes& body) {
    Bytes b(8);
    const size_t size = 8 + body.size();
    for (int i = 0; i < 4; ++i) b[i] = uint8_t(size >> (24 - 8 * i));
    std::copy(type, type + 4, b.begin() + 4);
    return b + body;
}

// A grid description: one row, two columns, and the canvas size in 16 or 32 bits.
Bytes Grid(uint32_t w, uint32_t h, bool wide = false) {
    Bytes g = {0, uint8_t(wide ? 1 : 0), 0, 1};
    Put(g, w, wide ? 4 : 2);
    Put(g, h, wide ? 4 : 2);
    return g;
}

// ftyp, then meta holding one item of `type` (id 1) whose data sits in idat (method 1) or,
// with inFile, after the meta box (method 0, absolute offset).
Bytes HeifWith(const char* type, const Bytes& data, bool inFile = false) {
    const Bytes ftyp = Box("ftyp", {'h', 'e', 'i', 'c', 0, 0, 0, 0, 'm', 'i', 'f', '1'});
    Bytes infe = {2, 0, 0, 0, 0, 1, 0, 0};  // version 2, item 1, no protection
    infe.insert(infe.end(), type, type + 4);
    const Bytes iinf = Box("iinf", Bytes{0, 0, 0, 0, 0, 1} + Box("infe", infe));
    auto meta = [&](uint32_t offset) {
        Bytes iloc = {1, 0, 0, 0, 0x44, 0x00, 0, 1, 0, 1};  // version 1; 4-byte offsets and lengths
        Put(iloc, inFile ? 0 : 1, 2);                      // construction method
        Put(iloc, 0, 2);                                   // data reference
        Put(iloc, 1, 2);                                   // one extent
        Put(iloc, offset, 4);
        Put(iloc, data.size(), 4);
        Bytes body = Bytes{0, 0, 0, 0} + iinf + Box("iloc", iloc);
        if (!inFile) body = body + Box("idat", data);
        return Box("meta", body);
    };
    if (!inFile) return ftyp + meta(0);
    const size_t dataAt = ftyp.size() + meta(0).size();
    return ftyp + meta(static_cast<uint32_t>(dataAt)) + data;
}

TEST(HeifItems, GridAndOverlayCanvasesAreHeldToTheCaps) {
    Bytes pastIdat = HeifWith("grid", Grid(24, 16));
    const Bytes extent = {0, 0, 0, 0, 0, 0, 0, 8};  // offset 0, length 8 as HeifWith writes them
    pastIdat.at(std::search(pastIdat.begin(), pastIdat.end(), extent.begin(), extent.end()) - pastIdat.begin() + 3) = 100;
    struct Case {
        std::string what;
        Bytes file;
        bool allowed;
    } cases[] = {
        {"honest grid in idat", HeifWith("grid", Grid(24, 16)), true},
        {"honest grid in the file", HeifWith("grid", Grid(4000, 3000), true), true},
        {"grid of 63848 x 65520", HeifWith("grid", Grid(63848, 65520)), false},
        {"grid 70000 wide (32-bit sizes)", HeifWith("grid", Grid(70000, 2, true)), false},
        {"grid 20000 square, over 2^28 pixels", HeifWith("grid", Grid(20000, 20000), true), false},
        {"grid of width 0", HeifWith("grid", Grid(0, 16)), false},
        {"grid cut short", HeifWith("grid", Bytes{0, 0, 0, 1, 0}), false},
        {"grid whose extent lies past the end of idat", pastIdat, false},
        // Overlay: version, flags, four 16-bit fill values, then the canvas.
        {"honest overlay", HeifWith("iovl", Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x01, 0x00, 0x00, 0x80}), true},
        {"overlay of 65535 square",
         HeifWith("iovl", Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff, 0xff, 0xff}), false},
        {"coded picture only", HeifWith("hvc1", Bytes(40, 0xff)), true},
        {"not a box structure at all", Bytes(100, 0xff), true},
    };
    for (const Case& c : cases) EXPECT_EQ(HeifCanvasesAllowed(c.file), c.allowed) << c.what;
}

}  // namespace
}  // namespace quorbel
