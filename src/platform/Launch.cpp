#include "platform/Launch.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

extern char** environ;

namespace quorbel {

LaunchResult LaunchProgram(const std::string& program, const std::vector<std::string>& args, int waitMs) {
    LaunchResult result;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    pid_t pid = -1;
    const int spawned = ::posix_spawnp(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) return result;
    result.started = true;

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitMs);
    int status = 0;
    for (;;) {
        const pid_t done = ::waitpid(pid, &status, WNOHANG);
        if (done == pid) {
            result.exited = true;
            if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
            if (result.exitCode == 127) result.started = false;  // the exec itself failed
            return result;
        }
        if (done < 0 && errno != EINTR) return result;
        if (std::chrono::steady_clock::now() >= deadline) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    // Still running: someone must collect it when it ends, or it lingers as a zombie.
    std::thread([pid] {
        int s = 0;
        while (::waitpid(pid, &s, 0) < 0 && errno == EINTR) {
        }
    }).detach();
    return result;
}

}  // namespace quorbel
