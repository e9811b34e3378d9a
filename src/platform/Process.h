#pragma once
// Running a desktop helper program (xdg-open, gsettings, …) and reading what it printed.
#include <string>
#include <vector>

namespace quorbel {

struct ProcessResult {
    bool started = false;  // false: the program was not found or could not run
    int exitCode = -1;     // -1 when it did not exit normally (killed, timed out)
    std::string output;    // what it wrote to standard output
};

// Starts the program found on PATH with the arguments (no shell in between), its standard
// input empty and, when outputFd >= 0, its standard output that descriptor. The process id,
// or -1 when it could not be started.
int SpawnProgram(const std::string& program, const std::vector<std::string>& args, int outputFd = -1);

// Looks the program up on PATH and runs it with the arguments (no shell in between), its
// standard input empty. Kills it after timeoutMs.
ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         int timeoutMs = 15000);

}  // namespace quorbel
