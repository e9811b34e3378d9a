#include "platform/Launch.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/Process.h"

namespace quorbel {

LaunchResult LaunchProgram(const std::string& program, const std::vector<std::string>& args, int waitMs) {
    LaunchResult result;
    const pid_t pid = SpawnProgram(program, args);
    if (pid < 0) return result;
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
