#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "Scratch.h"
#include "StandIns.h"
#include "platform/Desktop.h"
#include "platform/Process.h"

namespace quorbel {
using namespace quorbel::test;

// Stand-in desktop programs, first on PATH, that write their arguments to a log.
class DesktopTest : public ::testing::Test {
protected:
    void SetUp() override {
        const char* d = std::getenv("XDG_CURRENT_DESKTOP");
        savedDesktop_ = d ? d : "";
    }
    void TearDown() override { ::setenv("XDG_CURRENT_DESKTOP", savedDesktop_.c_str(), 1); }
    void StandIn(const std::string& name, int code = 0, const std::string& output = "") { bin_.Add(name, code, output); }
    // The calls since the last look.
    std::string Calls() {
        std::string calls = bin_.Calls();
        fs::remove(bin_.Folder() / "calls.log");
        return calls;
    }

    ScratchDir dir_;
    StandIns bin_{dir_ / "bin"};
    std::string savedDesktop_;
    ScriptedMessageBox messages_;
    Desktop desktop_{messages_};
};

TEST_F(DesktopTest, WallpaperUsesEachDesktopsOwnTool) {
    StandIn("gsettings");
    StandIn("plasma-apply-wallpaperimage");
    StandIn("xfconf-query", 0,
            "/backdrop/screen0/monitor0/workspace0/last-image\n/backdrop/screen0/monitorHDMI-1/workspace0/last-image\n/backdrop/screen0/monitor0/image-style\n");
    const struct {
        const char* desktop;
        const char* picture;
        std::string calls;
    } cases[] = {
        {"ubuntu:GNOME", "/data/my pics/wall.bmp",
         "gsettings set org.gnome.desktop.background picture-uri file:///data/my%20pics/wall.bmp\n"
         "gsettings set org.gnome.desktop.background picture-uri-dark file:///data/my%20pics/wall.bmp\n"},
        {"KDE", "/w.bmp", "plasma-apply-wallpaperimage /w.bmp\n"},
        {"MATE", "/w.bmp", "gsettings set org.mate.background picture-filename /w.bmp\n"},
        {"X-Cinnamon", "/w.bmp",
         "gsettings set org.cinnamon.desktop.background picture-uri file:///w.bmp\n"
         "gsettings set org.cinnamon.desktop.background picture-uri-dark file:///w.bmp\n"},
        // XFCE: every monitor's last-image property, and nothing else.
        {"XFCE", "/w.bmp",
         "xfconf-query -c xfce4-desktop -l\n"
         "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitor0/workspace0/last-image -s /w.bmp\n"
         "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitorHDMI-1/workspace0/last-image -s /w.bmp\n"},
    };
    for (const auto& c : cases) {
        ::setenv("XDG_CURRENT_DESKTOP", c.desktop, 1);
        EXPECT_TRUE(desktop_.SetWallpaper(c.picture)) << c.desktop;
        EXPECT_EQ(Calls(), c.calls) << c.desktop;
    }
}

TEST_F(DesktopTest, WallpaperFailsWhenTheToolRefusesOrIsMissing) {
    ::setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    StandIns alone(dir_ / "alone", true);  // no plasma tool anywhere
    EXPECT_FALSE(desktop_.SetWallpaper("/w.bmp"));
    alone.Add("plasma-apply-wallpaperimage", 1);
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
