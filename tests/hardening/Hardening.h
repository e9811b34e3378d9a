#pragma once
// Helpers of the hardening tests: child processes (scratch folders and files come from Scratch.h).
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "Scratch.h"

namespace quorbel::test {

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
