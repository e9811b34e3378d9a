#include "output/HeifItems.h"

#include <map>
#include <vector>

#include "output/DecodeLimits.h"

namespace quorbel {
namespace {

constexpr uint32_t FourCc(const char (&s)[5]) {
    return uint32_t(uint8_t(s[0])) << 24 | uint32_t(uint8_t(s[1])) << 16 | uint32_t(uint8_t(s[2])) << 8 |
           uint8_t(s[3]);
}

// Big-endian fields read in order; a read past the end leaves ok false and yields zeros.
struct Reader {
    std::span<const uint8_t> data;
    size_t pos = 0;
    bool ok = true;

    uint64_t U(int bytes) {
        if (!ok || bytes < 0 || bytes > 8 || data.size() - pos < size_t(bytes)) {
            ok = false;
            return 0;
        }
        uint64_t v = 0;
        for (int i = 0; i < bytes; ++i) v = v << 8 | data[pos++];
        return v;
    }
    std::span<const uint8_t> Rest() const { return ok ? data.subspan(pos) : std::span<const uint8_t>(); }
};

// Calls f(type, body) for each box laid end to end in data; stops at a box that does not fit.
template <typename F>
void ForEachBox(std::span<const uint8_t> data, F f) {
    Reader r{data};
    while (r.pos < data.size()) {
        const size_t start = r.pos;
        uint64_t size = r.U(4);
        const uint32_t type = static_cast<uint32_t>(r.U(4));
        if (size == 1) size = r.U(8);
        else if (size == 0) size = data.size() - start;
        const size_t header = r.pos - start;
        if (!r.ok || size < header || size > data.size() - start) return;
        if (!f(type, data.subspan(r.pos, static_cast<size_t>(size - header)))) return;
        r.pos = start + static_cast<size_t>(size);
    }
}

struct Extent {
    uint64_t offset, length;
};
struct Location {
    int method = 0;
    uint64_t base = 0;
    std::vector<Extent> extents;
};

// The item location box: where each item's bytes lie, in the file or in the item data box.
std::map<uint32_t, Location> ReadLocations(std::span<const uint8_t> body) {
    std::map<uint32_t, Location> items;
    Reader r{body};
    const int version = static_cast<int>(r.U(1));
    r.U(3);
    const int sizes = static_cast<int>(r.U(2));
    const int offsetSize = sizes >> 12, lengthSize = (sizes >> 8) & 15, baseSize = (sizes >> 4) & 15;
    const int indexSize = version >= 1 ? sizes & 15 : 0;
    const uint64_t count = r.U(version < 2 ? 2 : 4);
    for (uint64_t i = 0; i < count && r.ok; ++i) {
        const uint32_t id = static_cast<uint32_t>(r.U(version < 2 ? 2 : 4));
        Location loc;
        if (version >= 1) loc.method = static_cast<int>(r.U(2) & 15);
        r.U(2);  // data reference index
        loc.base = r.U(baseSize);
        const uint64_t extents = r.U(2);
        for (uint64_t e = 0; e < extents && r.ok; ++e) {
            r.U(indexSize);
            const uint64_t offset = r.U(offsetSize);
            loc.extents.push_back({offset, r.U(lengthSize)});
        }
        if (r.ok) items.emplace(id, std::move(loc));
    }
    return items;
}

// The first n bytes of an item, gathered across its extents; shorter when it has fewer.
std::vector<uint8_t> ItemHead(const Location& loc, std::span<const uint8_t> file, std::span<const uint8_t> idat,
                              size_t n) {
    std::vector<uint8_t> head;
    const std::span<const uint8_t> space = loc.method == 0 ? file : loc.method == 1 ? idat : std::span<const uint8_t>();
    for (const Extent& e : loc.extents) {
        if (head.size() >= n) break;
        const uint64_t start = loc.base + e.offset;
        if (start < loc.base || start > space.size()) break;
        const uint64_t available = space.size() - start;
        const uint64_t length = e.length == 0 ? available : std::min(e.length, available);
        const size_t take = static_cast<size_t>(std::min<uint64_t>(length, n - head.size()));
        head.insert(head.end(), space.begin() + static_cast<ptrdiff_t>(start),
                    space.begin() + static_cast<ptrdiff_t>(start + take));
        if (length < e.length) break;  // the file ends inside this extent
    }
    return head;
}

// The output size a grid or overlay description declares; false when it is cut short.
bool CanvasAllowed(uint32_t type, std::span<const uint8_t> head) {
    Reader r{head};
    r.U(1);  // version
    const bool wide = (r.U(1) & 1) != 0;
    if (type == FourCc("grid")) r.U(2);  // rows and columns, each minus one
    else r.U(8);                          // the overlay's fill colour
    const uint64_t w = r.U(wide ? 4 : 2), h = r.U(wide ? 4 : 2);
    return r.ok && PictureSizeAllowed(static_cast<int64_t>(w), static_cast<int64_t>(h));
}

}  // namespace

bool HeifCanvasesAllowed(std::span<const uint8_t> file) {
    std::span<const uint8_t> meta;
    ForEachBox(file, [&](uint32_t type, std::span<const uint8_t> body) {
        if (type != FourCc("meta")) return true;
        meta = body.size() >= 4 ? body.subspan(4) : body.subspan(0, 0);  // after version and flags
        return false;
    });
    std::map<uint32_t, uint32_t> derived;  // item → grid or overlay
    std::map<uint32_t, Location> locations;
    std::span<const uint8_t> idat;
    bool sawLocations = false, sawData = false;
    ForEachBox(meta, [&](uint32_t type, std::span<const uint8_t> body) {
        if (type == FourCc("iinf")) {
            Reader r{body};
            const int version = static_cast<int>(r.U(1));
            r.U(3);
            r.U(version == 0 ? 2 : 4);
            ForEachBox(r.Rest(), [&](uint32_t entryType, std::span<const uint8_t> entry) {
                Reader e{entry};
                const int v = static_cast<int>(e.U(1));
                e.U(3);
                if (entryType != FourCc("infe") || v < 2) return true;  // older entries name no type
                const uint32_t id = static_cast<uint32_t>(e.U(v == 2 ? 2 : 4));
                e.U(2);  // protection index
                const uint32_t itemType = static_cast<uint32_t>(e.U(4));
                if (e.ok && (itemType == FourCc("grid") || itemType == FourCc("iovl"))) derived[id] = itemType;
                return true;
            });
        } else if (type == FourCc("iloc") && !sawLocations) {
            locations = ReadLocations(body);
            sawLocations = true;
        } else if (type == FourCc("idat") && !sawData) {
            idat = body;
            sawData = true;
        }
        return true;
    });
    for (const auto& [id, type] : derived) {
        const auto loc = locations.find(id);
        if (loc == locations.end() || !CanvasAllowed(type, ItemHead(loc->second, file, idat, 20))) return false;
    }
    return true;
}

}  // namespace quorbel
