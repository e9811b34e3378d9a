#pragma once
// Starting a desktop program that may keep running (a mail program, a disc burner): unlike
// RunProgram it is not killed after a time-out; we only wait briefly to learn whether it
// failed straight away.
#include <string>
#include <vector>

namespace quorbel {

struct LaunchResult {
    bool started = false;  // false: not found or could not be executed
    bool exited = false;   // it ended within the wait
    int exitCode = -1;     // when it exited normally
    // Started and did not report a failure: still running, or exited 0.
    bool Ok() const { return started && (!exited || exitCode == 0); }
};

LaunchResult LaunchProgram(const std::string& program, const std::vector<std::string>& args, int waitMs = 2000);

}  // namespace quorbel
