#pragma once
// Points the config and data folders at a fresh temporary folder for each test, and forgets
// the process-wide paths so every test starts as a new run of the program.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/DataFolder.h"

namespace quorbel::test {

class ShellFixture : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "quorbel-shell-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        root_ = pattern;
        ::setenv("XDG_CONFIG_HOME", (root_ / "config").c_str(), 1);
        ::setenv("XDG_DATA_HOME", (root_ / "data").c_str(), 1);
        ForgetDataFolder();
    }

    void TearDown() override {
        ForgetDataFolder();
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::filesystem::path SettingsFile() const {
        return root_ / "config" / "Tessarin Svcs" / "Quorbel" / "Quorbel.settings.ini";
    }

    static std::string ReadFile(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    static void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }

    std::filesystem::path root_;
};

}  // namespace quorbel::test
