#pragma once
// Stand-in desktop programs (xdg-open, a mail program, a disc burner…) in a folder put on
// PATH, each logging "name arg1 arg2 …" to one file and exiting as told; PATH is restored
// when the stand-ins go.
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "Scratch.h"

namespace quorbel::test {

class StandIns {
public:
    // alone: only the stand-ins are on PATH, so no real program can start.
    explicit StandIns(const fs::path& folder, bool alone = false) : bin_(folder) {
        fs::create_directories(bin_);
        const char* path = std::getenv("PATH");
        savedPath_ = path ? path : "";
        ::setenv("PATH", (alone ? bin_.string() : bin_.string() + ":" + savedPath_).c_str(), 1);
    }
    ~StandIns() { ::setenv("PATH", savedPath_.c_str(), 1); }
    StandIns(const StandIns&) = delete;
    StandIns& operator=(const StandIns&) = delete;

    // A program that logs its arguments, prints output and exits with code.
    void Add(const std::string& name, int code = 0, const std::string& output = "") const {
        const fs::path p = bin_ / name;
        std::ofstream(p) << "#!/bin/sh\necho \"" << name << " $*\" >> '" << (bin_ / "calls.log").string()
                         << "'\nprintf '%s' '" << output << "'\nexit " << code << "\n";
        ::chmod(p.c_str(), 0755);
    }
    // Every call so far, one line each.
    std::string Calls() const { return ReadText(bin_ / "calls.log"); }
    const fs::path& Folder() const { return bin_; }

private:
    fs::path bin_;
    std::string savedPath_;
};

}  // namespace quorbel::test
