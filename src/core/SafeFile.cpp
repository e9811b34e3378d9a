#include "core/SafeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string>

namespace quorbel {
namespace fs = std::filesystem;
namespace {

constexpr const char* kTempPrefix = ".quorbel-";
constexpr size_t kTempSuffixLength = 7;  // "-XXXXXX"
constexpr size_t kMaxEmbeddedName = 200;  // keeps the temporary name under NAME_MAX

std::error_code LastError() { return {errno, std::system_category()}; }

// Follows a chain of symbolic links so that the rename replaces the file, not the link.
fs::path ResolveTarget(const fs::path& target) {
    fs::path p = target;
    for (int hops = 0; hops < 40; ++hops) {
        std::error_code ec;
        if (!fs::is_symlink(fs::symlink_status(p, ec))) return p;
        fs::path next = fs::read_symlink(p, ec);
        if (ec) return p;
        p = next.is_absolute() ? next : p.parent_path() / next;
    }
    return p;
}

bool WriteAll(int fd, std::span<const uint8_t> bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return true;
}

void SyncFolder(const fs::path& folder) {
    const int dfd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dfd >= 0) {
        ::fsync(dfd);
        ::close(dfd);
    }
}

}  // namespace

bool IsOurTemporaryName(const std::string& name) {
    const size_t prefix = std::char_traits<char>::length(kTempPrefix);
    if (name.size() < prefix + kTempSuffixLength || name.compare(0, prefix, kTempPrefix) != 0)
        return false;
    const size_t dash = name.size() - kTempSuffixLength;
    if (name[dash] != '-') return false;
    for (size_t i = dash + 1; i < name.size(); ++i)
        if (!std::isalnum(static_cast<unsigned char>(name[i]))) return false;
    return true;
}

std::error_code ReplaceFileContents(const fs::path& target, std::span<const uint8_t> bytes,
                                    const ReplaceOptions& options) {
    const fs::path finalPath = ResolveTarget(target);
    fs::path folder = finalPath.parent_path();
    if (folder.empty()) folder = ".";

    struct stat old {};
    const bool existed = ::stat(finalPath.c_str(), &old) == 0;
    if (existed && options.mustNotExist) return std::make_error_code(std::errc::file_exists);
    if (existed && !S_ISREG(old.st_mode)) return std::make_error_code(std::errc::invalid_argument);

    std::string name = finalPath.filename().string();
    if (name.size() > kMaxEmbeddedName) name.resize(kMaxEmbeddedName);
    std::string temp = (folder / (kTempPrefix + name + "-XXXXXX")).string();
    const int fd = ::mkostemp(temp.data(), O_CLOEXEC);
    if (fd < 0) return LastError();

    auto fail = [&](std::error_code ec) {
        ::close(fd);
        ::unlink(temp.c_str());
        return ec;
    };
    if (!WriteAll(fd, bytes)) return fail(LastError());
    if (options.durable && ::fsync(fd) != 0) return fail(LastError());

    if (existed) {
        ::fchmod(fd, old.st_mode & 07777);
        if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
            // Only root may give a file away; an ordinary user keeps ownership, which is right.
        }
        if (options.keepOldTimes) {
            const timespec times[2] = {old.st_atim, old.st_mtim};
            ::futimens(fd, times);
        }
    } else {
        // mkstemp makes 0600; a new picture gets the usual permissions under the umask.
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }
    if (::close(fd) != 0) {
        const std::error_code ec = LastError();
        ::unlink(temp.c_str());
        return ec;
    }

    int renamed;
    if (options.mustNotExist) {
        renamed = ::renameat2(AT_FDCWD, temp.c_str(), AT_FDCWD, finalPath.c_str(), RENAME_NOREPLACE);
    } else {
        renamed = ::rename(temp.c_str(), finalPath.c_str());
    }
    if (renamed != 0) {
        const std::error_code ec = LastError();
        ::unlink(temp.c_str());
        return ec;
    }
    if (options.durable) SyncFolder(folder);
    return {};
}

int RemoveStaleTemporaries(const fs::path& folder) {
    int removed = 0;
    std::error_code ec;
    fs::directory_iterator it(folder, ec), end;
    const time_t now = ::time(nullptr);
    for (; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (!IsOurTemporaryName(name)) continue;
        struct stat st {};
        if (::lstat(it->path().c_str(), &st) != 0 || !S_ISREG(st.st_mode)) continue;
        if (now - st.st_mtime < 60) continue;  // may belong to a save still running
        if (::unlink(it->path().c_str()) == 0) ++removed;
    }
    return removed;
}

}  // namespace quorbel
