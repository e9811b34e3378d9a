#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/Desktop.h"
#include "platform/Process.h"

namespace quorbel {
namespace fs = std::filesystem;

// Stand-in desktop programs, first on PATH, that write their arguments to a log.
class DesktopTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string t = (fs::temp_directory_path() / "quorbel-desktop-XXXXXX").string();
        dir_ = ::mkdtemp(t.data());
        log_ = dir_ / "calls.log";
        savedPath_ = std::getenv("PATH");
        savedDesktop_ = std::getenv("XDG_CURRENT_DESKTOP") ? std::getenv("XDG_CURRENT_DESKTOP") : "";
        ::setenv("PATH", (dir_.string() + ":" + savedPath_).c_str(), 1);
    }
    void TearDown() override {
        ::setenv("PATH", savedPath_.c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", savedDesktop_.c_str(), 1);
        fs::remove_all(dir_);
    }
    // A program that logs "name arg1 arg2 …", prints `output` and exits with `code`.
    void StandIn(const std::string& name, int code = 0, const std::string& output = "") {
        const fs::path p = dir_ / name;
        std::ofstream(p) << "#!/bin/sh\necho \"" << name << " $*\" >> '" << log_.string() << "'\n"
                         << "printf '%s' '" << output << "'\nexit " << code << "\n";
        ::chmod(p.c_str(), 0755);
    }
    std::string Calls() {
        std::ifstream in(log_);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    fs::path dir_, log_;
    std::string savedPath_, savedDesktop_;
    ScriptedMessageBox messages_;
    Desktop desktop_{messages_};
};

TEST_F(DesktopTest, WallpaperUsesEachDesktopsOwnTool) {
    StandIn("gsettings");
    StandIn("plasma-apply-wallpaperimage");
    StandIn("xfconf-query", 0,
            "/backdrop/screen0/monitor0/workspace0/last-image\n/backdrop/screen0/monitorHDMI-1/workspace0/last-image\n/backdrop/screen0/monitor0/image-style\n");

    ::setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
    EXPECT_TRUE(desktop_.SetWallpaper("/data/my pics/wall.bmp"));
    EXPECT_EQ(Calls(),
              "gsettings set org.gnome.desktop.background picture-uri file:///data/my%20pics/wall.bmp\n"
              "gsettings set org.gnome.desktop.background picture-uri-dark file:///data/my%20pics/wall.bmp\n");

    fs::remove(log_);
    ::setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    EXPECT_TRUE(desktop_.SetWallpaper("/w.bmp"));
    EXPECT_EQ(Calls(), "plasma-apply-wallpaperimage /w.bmp\n");

    fs::remove(log_);
    ::setenv("XDG_CURRENT_DESKTOP", "MATE", 1);
    EXPECT_TRUE(desktop_.SetWallpaper("/w.bmp"));
    EXPECT_EQ(Calls(), "gsettings set org.mate.background picture-filename /w.bmp\n");

    fs::remove(log_);
    ::setenv("XDG_CURRENT_DESKTOP", "X-Cinnamon", 1);
    EXPECT_TRUE(desktop_.SetWallpaper("/w.bmp"));
    EXPECT_NE(Calls().find("gsettings set org.cinnamon.desktop.background picture-uri file:///w.bmp\n"), std::string::npos);

    // XFCE: every monitor's last-image property, and nothing else.
    fs::remove(log_);
    ::setenv("XDG_CURRENT_DESKTOP", "XFCE", 1);
    EXPECT_TRUE(desktop_.SetWallpaper("/w.bmp"));
    EXPECT_EQ(Calls(),
              "xfconf-query -c xfce4-desktop -l\n"
              "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitor0/workspace0/last-image -s /w.bmp\n"
              "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitorHDMI-1/workspace0/last-image -s /w.bmp\n");
}

TEST_F(DesktopTest, WallpaperFailsWhenTheToolRefusesOrIsMissing) {
    ::setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    ::setenv("PATH", dir_.c_str(), 1);  // no plasma tool anywhere
    EXPECT_FALSE(desktop_.SetWallpaper("/w.bmp"));
    StandIn("plasma-apply-wallpaperimage", 1);
    EXPECT_FALSE(desktop_.SetWallpaper("/w.bmp"));
}

TEST_F(DesktopTest, WebPagesNeedADefaultBrowserAndSayWhyTheyFail) {
    StandIn("xdg-mime", 0, "");
    StandIn("xdg-open");
    EXPECT_FALSE(desktop_.OpenWebPage("https://example.org/"));
    ASSERT_EQ(messages_.Shown().size(), 1u);
    EXPECT_EQ(messages_.Shown()[0].text, "Could not find associated Browser");
    EXPECT_EQ(messages_.Shown()[0].title, "Browser Not Found");
    EXPECT_EQ(Calls().find("xdg-open"), std::string::npos);

    StandIn("xdg-mime", 0, "firefox-esr.desktop\n");
    EXPECT_EQ(desktop_.DefaultBrowser(), "firefox-esr.desktop");
    StandIn("xdg-open", 4);
    EXPECT_FALSE(desktop_.OpenWebPage("https://example.org/"));
    EXPECT_EQ(messages_.Shown().back().text, "Web Page not Opened");
    EXPECT_EQ(messages_.Shown().back().title, "URL Failed");

    StandIn("xdg-open", 0);
    EXPECT_TRUE(desktop_.OpenWebPage("https://example.org/"));
    EXPECT_EQ(messages_.Shown().size(), 2u);
}

TEST_F(DesktopTest, HelpOpensTheTopicPageOrTheContents) {
    StandIn("xdg-open");
    EXPECT_TRUE(desktop_.OpenHelp("/opt/q/help", "GettingStarted.html"));
    EXPECT_TRUE(desktop_.OpenHelp("/opt/q/help", ""));
    EXPECT_EQ(Calls(), "xdg-open file:///opt/q/help/GettingStarted.html\nxdg-open file:///opt/q/help/index.html\n");
}

TEST(Process, CapturesOutputReportsExitAndStopsRunawayPrograms) {
    ProcessResult r = RunProgram("sh", {"-c", "echo hello; exit 3"});
    EXPECT_TRUE(r.started);
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_EQ(r.output, "hello\n");

    EXPECT_FALSE(RunProgram("quorbel-no-such-program", {}).started);

    const auto t0 = std::chrono::steady_clock::now();
    r = RunProgram("sleep", {"30"}, 300);
    EXPECT_EQ(r.exitCode, -1);
    EXPECT_LT(std::chrono::steady_clock::now() - t0, std::chrono::seconds(5));

    // A program that leaves a child holding its output open still counts as done when it exits.
    const auto t1 = std::chrono::steady_clock::now();
    r = RunProgram("sh", {"-c", "sleep 4 & echo started"}, 10000);
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - t1, std::chrono::seconds(3));
}

}  // namespace quorbel
