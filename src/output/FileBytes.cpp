#include "output/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quorbel {

namespace {
struct Fd {
    int fd;
    ~Fd() {
        if (fd >= 0) ::close(fd);
    }
};
std::error_code LastError() { return {errno, std::generic_category()}; }
}  // namespace

std::error_code ReadWholeFile(const std::filesystem::path& file, std::vector<uint8_t>& bytes) {
    bytes.clear();
    Fd f{::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)};
    if (f.fd < 0) return LastError();
    struct stat st{};
    if (::fstat(f.fd, &st) != 0) return LastError();
    if (!S_ISREG(st.st_mode)) return std::make_error_code(std::errc::invalid_argument);
    if (st.st_size > kMaxPictureFileBytes) return std::make_error_code(std::errc::file_too_large);
    bytes.resize(static_cast<size_t>(st.st_size));
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(f.fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return LastError();
        }
        if (n == 0) break;  // the file shrank while we read: keep what is there
        done += static_cast<size_t>(n);
    }
    bytes.resize(done);
    return {};
}

}  // namespace quorbel
