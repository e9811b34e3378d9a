#pragma once
// Each test starts as a new run of the program: the config and data folders point into a
// fresh scratch folder and the process-wide paths are forgotten.
#include <gtest/gtest.h>

#include <cstdlib>

#include "Scratch.h"
#include "settings/DataFolder.h"

namespace quorbel::test {

class FreshSettings : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(scratch_.path.empty());
        root_ = scratch_.path;
        ::setenv("XDG_CONFIG_HOME", (root_ / "config").c_str(), 1);
        ::setenv("XDG_DATA_HOME", (root_ / "data").c_str(), 1);
        ForgetDataFolder();
    }
    void TearDown() override { ForgetDataFolder(); }

    fs::path SettingsFile() const { return root_ / "config" / "Tessarin Svcs" / "Quorbel" / "Quorbel.settings.ini"; }

    ScratchDir scratch_;
    fs::path root_;
};

}  // namespace quorbel::test
