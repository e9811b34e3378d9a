#pragma once
// Helpers of the hardening tests: scratch folders, files, child processes, peak memory.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

namespace quorbel::test {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

struct ScratchDir {
    fs::path path;
    explicit ScratchDir(const fs::path& base = fs::temp_directory_path()) {
        std::string t = (base / "quorbel-hardening-XXXXXX").string();
        path = ::mkdtemp(t.data());
    }
    ~ScratchDir() {
        std::error_code ec;
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(path, ec);
    }
};

inline void WriteBytes(const fs::path& file, std::span<const uint8_t> bytes) {
    std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

inline Bytes ReadBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

// Runs argv in a child with optional extra set-up (limits, users) just before exec; returns
// the exit status as waitpid gives it and the child's standard output.
template <typename Setup>
int RunChild(const std::vector<std::string>& argv, std::string* output, Setup setup) {
    int pipeFds[2];
    if (::pipe(pipeFds) != 0) return -1;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(pipeFds[1], 1);
        ::close(pipeFds[0]);
        setup();
        std::vector<char*> args;
        for (const auto& a : argv) args.push_back(const_cast<char*>(a.c_str()));
        args.push_back(nullptr);
        ::execv(args[0], args.data());
        ::_exit(127);
    }
    ::close(pipeFds[1]);
    char buffer[4096];
    for (ssize_t n; (n = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;)
        if (output) output->append(buffer, static_cast<size_t>(n));
    ::close(pipeFds[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    return status;
}
inline int RunChild(const std::vector<std::string>& argv, std::string* output = nullptr) {
    return RunChild(argv, output, [] {});
}

}  // namespace quorbel::test
