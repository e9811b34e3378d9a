#pragma once
// A temporary folder with stand-in desktop programs, alone on PATH, that log their arguments;
// a desktop whose browser and opening are scripted.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "core/MessageBox.h"
#include "platform/Desktop.h"

namespace quorbel {

inline std::string Slurp(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class ScriptedDesktop : public Desktop {
public:
    using Desktop::Desktop;
    std::string DefaultBrowser() override { return probeSeen = Slurp(probe), browser; }
    bool Open(const std::string& pathOrUrl) override { return opened.push_back(pathOrUrl), opens; }

    std::string browser = "firefox-esr.desktop", probeSeen;
    std::filesystem::path probe;  // its content is recorded when the browser is asked for
    bool opens = true;
    std::vector<std::string> opened;
};

class ShareTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string t = (std::filesystem::temp_directory_path() / "quorbel-share-XXXXXX").string();
        dir_ = ::mkdtemp(t.data());
        std::filesystem::create_directory(dir_ / "bin");
        ::setenv("PATH", (dir_ / "bin").c_str(), 1);  // no real mail program or burner starts
    }
    void TearDown() override {
        ::setenv("PATH", savedPath_.c_str(), 1);
        std::filesystem::remove_all(dir_);
    }
    // A program that logs "name arg1 arg2 …", prints output and exits with code.
    void StandIn(const std::string& name, int code = 0, const std::string& output = "") {
        const std::filesystem::path p = dir_ / "bin" / name;
        std::ofstream(p) << "#!/bin/sh\necho \"" << name << " $*\" >> '" << (dir_ / "calls.log").string() << "'\n"
                         << "printf '%s' '" << output << "'\nexit " << code << "\n";
        ::chmod(p.c_str(), 0755);
    }
    std::string Calls() { return Slurp(dir_ / "calls.log"); }
    void Write(const std::filesystem::path& p, const std::string& text) {
        std::filesystem::create_directories(p.parent_path());
        std::ofstream(p, std::ios::binary) << text;
    }

    std::filesystem::path dir_;
    std::string savedPath_ = std::getenv("PATH");
    ScriptedMessageBox messages_;
    ScriptedDesktop desktop_{messages_};
};

}  // namespace quorbel
