#include "editor/RawPicture.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace quorbel {
namespace {

constexpr char kMagic[8] = {'Q', 'R', 'B', 'R', 'A', 'W', '0', '1'};

struct RawHeader {
    char magic[8];
    int32_t width;
    int32_t height;
};

bool WriteAll(int fd, const uint8_t* data, size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        data += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

bool ReadAll(int fd, uint8_t* data, size_t size) {
    while (size > 0) {
        const ssize_t n = ::read(fd, data, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        data += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

}  // namespace

bool WriteRawPicture(const std::string& path, const cDib& picture) {
    if (!picture.hDIB()) return false;
    // Scratch files nobody keeps: no fsync, but a half-written one must not survive.
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0) return false;
    RawHeader header{};
    std::memcpy(header.magic, kMagic, sizeof kMagic);
    header.width = picture.Width();
    header.height = picture.Height();
    const size_t bytes = static_cast<size_t>(picture.Width()) * 4 * static_cast<size_t>(picture.Height());
    bool ok = WriteAll(fd, reinterpret_cast<const uint8_t*>(&header), sizeof header) &&
              WriteAll(fd, picture.lpBits(), bytes);
    ok = (::close(fd) == 0) && ok;
    if (!ok) ::unlink(path.c_str());
    return ok;
}

bool ReadRawPicture(const std::string& path, cDib& picture) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    RawHeader header{};
    cDib read;
    bool ok = ReadAll(fd, reinterpret_cast<uint8_t*>(&header), sizeof header) &&
              std::memcmp(header.magic, kMagic, sizeof kMagic) == 0 && header.width > 0 &&
              header.height > 0 && header.width <= kMaxSide && header.height <= kMaxSide &&
              int64_t(header.width) * header.height <= kMaxPixels && read.Create(header.width, header.height);
    if (ok) {
        const size_t bytes = static_cast<size_t>(header.width) * 4 * static_cast<size_t>(header.height);
        ok = ReadAll(fd, read.lpBits(), bytes);
        uint8_t extra;
        ok = ok && ::read(fd, &extra, 1) == 0;  // a longer file is not ours
    }
    ::close(fd);
    if (ok) picture.Swap(read);
    return ok;
}

}  // namespace quorbel
