#pragma once
// A fresh temporary folder per test, and reading and writing whole files in it.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorbel::test {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

// Made on construction, removed with everything in it (read-only parts too) on destruction.
struct ScratchDir {
    fs::path path;
    explicit ScratchDir(const fs::path& base = fs::temp_directory_path()) {
        std::string t = (base / "quorbel-test-XXXXXX").string();
        if (::mkdtemp(t.data())) path = t;
    }
    ~ScratchDir() {
        std::error_code ec;
        for (auto it = fs::recursive_directory_iterator(path, ec); !ec && it != fs::recursive_directory_iterator();
             it.increment(ec))
            if (it->is_directory(ec) && !it->is_symlink(ec))
                fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(path, ec);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    fs::path operator/(const fs::path& name) const { return path / name; }
};

inline Bytes ReadBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

inline std::string ReadText(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Writes the whole file, making its folders first.
inline void WriteBytes(const fs::path& file, std::span<const uint8_t> bytes) {
    std::error_code ec;
    if (file.has_parent_path()) fs::create_directories(file.parent_path(), ec);
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline void WriteText(const fs::path& file, std::string_view text) {
    WriteBytes(file, std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

// The photographs of the shared corpus, or nullptr when this machine has none.
inline const char* Corpus() {
    const char* c = std::getenv("QUORBEL_CORPUS");
    return c && fs::is_directory(c) ? c : nullptr;
}

}  // namespace quorbel::test

namespace quorbel::test {

// A few bytes written in place: WriteBytes(file, {1, 2, 3}).
inline void WriteBytes(const fs::path& file, std::initializer_list<uint8_t> bytes) {
    WriteBytes(file, std::span(bytes.begin(), bytes.size()));
}

}  // namespace quorbel::test
