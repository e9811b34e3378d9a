#include "metadata/ExifFacts.h"

#include <cstring>

namespace quorbel {
namespace {

bool StartsWith(std::span<const uint8_t> b, const char* magic, size_t n) {
    return b.size() >= n && std::memcmp(b.data(), magic, n) == 0;
}
uint32_t Be32(const uint8_t* p) { return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3]; }
uint32_t Le32(const uint8_t* p) { return uint32_t(p[3]) << 24 | uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | p[0]; }

// Some writers put the JPEG's "Exif\0\0" prefix before the block in PNG and WebP too.
std::span<const uint8_t> WithoutExifPrefix(std::span<const uint8_t> b) {
    return StartsWith(b, "Exif\0\0", 6) ? b.subspan(6) : b;
}

std::span<const uint8_t> InJpeg(std::span<const uint8_t> f) {
    size_t pos = 2;
    while (pos + 4 <= f.size()) {
        if (f[pos] != 0xFF) return {};
        const uint8_t marker = f[pos + 1];
        if (marker == 0xFF) {  // fill byte
            ++pos;
            continue;
        }
        if (marker == 0xDA || marker == 0xD9) return {};  // scan data or end: no more headers
        const size_t length = size_t(f[pos + 2]) << 8 | f[pos + 3];
        if (length < 2 || pos + 2 + length > f.size()) return {};
        const auto body = f.subspan(pos + 4, length - 2);
        if (marker == 0xE1 && StartsWith(body, "Exif\0\0", 6)) return body.subspan(6);
        pos += 2 + length;
    }
    return {};
}

std::span<const uint8_t> InPng(std::span<const uint8_t> f) {
    size_t pos = 8;
    while (pos + 12 <= f.size()) {
        const size_t length = Be32(&f[pos]);
        if (length > f.size() - pos - 12) return {};
        if (std::memcmp(&f[pos + 4], "eXIf", 4) == 0) return WithoutExifPrefix(f.subspan(pos + 8, length));
        if (std::memcmp(&f[pos + 4], "IEND", 4) == 0) return {};
        pos += 12 + length;
    }
    return {};
}

std::span<const uint8_t> InWebp(std::span<const uint8_t> f) {
    size_t pos = 12;
    while (pos + 8 <= f.size()) {
        const size_t length = Le32(&f[pos + 4]);
        if (length > f.size() - pos - 8) return {};
        if (std::memcmp(&f[pos], "EXIF", 4) == 0) return WithoutExifPrefix(f.subspan(pos + 8, length));
        pos += 8 + length + (length & 1);
    }
    return {};
}

class Block {
public:
    explicit Block(std::span<const uint8_t> b) : b_(b), little_(b[0] == 'I') {}
    size_t size() const { return b_.size(); }
    uint16_t U16(size_t at) const {
        return little_ ? uint16_t(b_[at] | b_[at + 1] << 8) : uint16_t(b_[at] << 8 | b_[at + 1]);
    }
    uint32_t U32(size_t at) const { return little_ ? Le32(&b_[at]) : Be32(&b_[at]); }

private:
    std::span<const uint8_t> b_;
    bool little_;
};

// Bytes of one value of each TIFF field type (0 for types this walk does not know).
size_t TypeSize(uint16_t type) {
    static constexpr uint8_t kSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < sizeof kSizes ? kSizes[type] : 0;
}

constexpr uint16_t kOrientationTag = 0x0112;
constexpr uint16_t kSubDirectoryTags[] = {0x8769, 0x8825, 0xA005};  // EXIF, GPS, interoperability
constexpr int kMaxDirectories = 8;

}  // namespace

std::span<const uint8_t> FindExifBlock(std::span<const uint8_t> file) {
    std::span<const uint8_t> block;
    if (StartsWith(file, "\xFF\xD8\xFF", 3)) block = InJpeg(file);
    else if (StartsWith(file, "\x89PNG\r\n\x1A\n", 8)) block = InPng(file);
    else if (StartsWith(file, "RIFF", 4) && file.size() >= 12 && std::memcmp(&file[8], "WEBP", 4) == 0)
        block = InWebp(file);
    else block = file;
    if (StartsWith(block, "II*\0", 4) || StartsWith(block, "MM\0*", 4)) return block;
    return {};
}

ExifFacts ParseExifBlock(std::span<const uint8_t> bytes) {
    ExifFacts facts;
    if (bytes.size() < 8) return facts;
    facts.present = true;
    const Block b(bytes);
    size_t pending[kMaxDirectories];
    size_t visited[kMaxDirectories];
    int pendingCount = 0, visitedCount = 0;
    pending[pendingCount++] = b.U32(4);
    bool first = true;
    auto bad = [&facts] {
        facts.malformed = true;
        facts.orientation = 1;
        return facts;
    };
    while (pendingCount > 0) {
        const size_t at = pending[--pendingCount];
        for (int i = 0; i < visitedCount; ++i)
            if (visited[i] == at) return bad();  // a directory reached twice: a loop
        if (visitedCount == kMaxDirectories) return bad();
        visited[visitedCount++] = at;
        if (at < 8 || at > b.size() - 2) return bad();
        const size_t count = b.U16(at);
        if (count * 12 + 6 > b.size() - at) return bad();
        for (size_t e = 0; e < count; ++e) {
            const size_t entry = at + 2 + e * 12;
            const uint16_t tag = b.U16(entry), type = b.U16(entry + 2);
            const uint64_t values = b.U32(entry + 4);
            const uint64_t length = values * TypeSize(type);
            if (length > 4 && (b.U32(entry + 8) < 8 || b.U32(entry + 8) + length > b.size())) return bad();
            if (first && tag == kOrientationTag) {
                const int o = type == 3 && values == 1 ? b.U16(entry + 8) : 0;
                if (o < 1 || o > 8) return bad();
                facts.orientation = o;
            }
            for (uint16_t sub : kSubDirectoryTags)
                if (tag == sub && (type == 4 || type == 13) && values == 1) {
                    if (pendingCount == kMaxDirectories) return bad();
                    pending[pendingCount++] = b.U32(entry + 8);
                }
        }
        if (first) {
            const size_t next = b.U32(at + 2 + count * 12);
            if (next != 0 && pendingCount < kMaxDirectories) pending[pendingCount++] = next;
        }
        first = false;
    }
    return facts;
}

}  // namespace quorbel
