#include "platform/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cerrno>

extern char** environ;

namespace quorbel {

int SpawnProgram(const std::string& program, const std::vector<std::string>& args, int outputFd) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (outputFd >= 0) posix_spawn_file_actions_adddup2(&actions, outputFd, 1);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    pid_t pid = -1;
    const int spawned = ::posix_spawnp(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return spawned == 0 ? pid : -1;
}

ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& args, int timeoutMs) {
    ProcessResult result;
    int out[2];
    if (::pipe2(out, O_CLOEXEC) != 0) return result;
    const pid_t pid = SpawnProgram(program, args, out[1]);
    ::close(out[1]);
    if (pid < 0) {
        ::close(out[0]);
        return result;
    }
    result.started = true;

    // Reads until the program exits. A program that starts something in the background (a
    // browser) may leave our pipe open in that child, so the exit decides, not end of file.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    char buffer[4096];
    int status = 0;
    bool exited = false, open = true;
    auto drain = [&](int waitMs) {
        pollfd p{out[0], POLLIN, 0};
        while (open && ::poll(&p, 1, waitMs) > 0) {
            const ssize_t n = ::read(out[0], buffer, sizeof buffer);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                open = false;
                break;
            }
            result.output.append(buffer, static_cast<size_t>(n));
            waitMs = 0;
        }
    };
    while (!exited) {
        drain(20);
        const pid_t done = ::waitpid(pid, &status, WNOHANG);
        if (done == pid) {
            exited = true;
        } else if (std::chrono::steady_clock::now() >= deadline) {
            ::kill(pid, SIGKILL);
            while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
            exited = true;
        }
    }
    drain(0);
    ::close(out[0]);
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    // The program could not be executed at all (posix_spawnp reports that as exit 127).
    if (result.exitCode == 127) result.started = false;
    return result;
}

}  // namespace quorbel
