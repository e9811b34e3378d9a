#include <vector>

#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/AppIni.h"
#include "settings/HelpFile.h"
#include "settings/MessageOnce.h"
#include "settings/SettingsStore.h"
#include "settings/Version.h"

namespace quorbel::test {
namespace {

using SettingsStore = FreshSettings;

TEST_F(SettingsStore, LivesInTheConfigFolderAndKeepsKeyOrder) {
    EXPECT_EQ(GetSetting("Quorbel", "Options", "Scale", "Inches"), "Inches");
    EXPECT_FALSE(fs::exists(SettingsFile()));

    for (auto [section, key, value] : {std::tuple{"Options", "Width", "6"}, {"Options", "Height", "4"},
                                       {"Options", "Scale", "Pixels"}, {"OPTIONS", "width", "7"}})
        ASSERT_TRUE(SaveSetting("Quorbel", section, key, value));
    EXPECT_EQ(ReadText(SettingsFile()), "[Options]\nWidth=7\nHeight=4\nScale=Pixels\n");
    EXPECT_EQ(GetAllSettings("Quorbel", "options"),
              (SettingPairs{{"Width", "7"}, {"Height", "4"}, {"Scale", "Pixels"}}));

    ASSERT_TRUE(DeleteSetting("Quorbel", "Options", "Height"));
    EXPECT_EQ(GetSetting("Quorbel", "Options", "Height", "4"), "4");
    ASSERT_TRUE(DeleteSetting("Quorbel", "Options"));
    EXPECT_TRUE(GetAllSettings("Quorbel", "Options").empty());
}

TEST_F(SettingsStore, ValuesComeBackExactlyAsSaved) {
    for (const std::string& value : {std::string("  padded  "), std::string("\"quoted\""), std::string("'single'"),
                                     std::string(), std::string(3000, 'v')}) {
        ASSERT_TRUE(SaveSetting("Quorbel", "Settings", "Rename Name", value));
        EXPECT_EQ(GetSetting("Quorbel", "Settings", "Rename Name", "dflt"), value);
    }
}

TEST_F(SettingsStore, FallsBackToTheHomeFolderWithoutXdgConfigHome) {
    ::unsetenv("XDG_CONFIG_HOME");
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "/";
    ::setenv("HOME", (root_ / "home").c_str(), 1);
    const bool saved = SaveSetting("Quorbel", "Update", "FirstRun", "1");
    ::setenv("HOME", home.c_str(), 1);
    ASSERT_TRUE(saved);
    EXPECT_TRUE(fs::exists(root_ / "home/.config/Tessarin Svcs/Quorbel/Quorbel.settings.ini"));
}

TEST_F(SettingsStore, DataFolderAndApplicationIni) {
    const std::string expected = (root_ / "data" / "Tessarin Svcs" / "Quorbel").string();
    EXPECT_EQ(DataFolder(), "");
    EXPECT_EQ(GetAppDataFolder(), expected);
    EXPECT_TRUE(fs::is_directory(expected));

    InitialiseDataFolder();
    for (auto [path, name] : {std::pair{DataFolder(), "/"}, {WorkingFolder(), "/"}, {AppIniPath(), "/Quorbel.ini"},
                              {AppearanceIniPath(), "/Local.Ini"}, {HelpFileName(1), "/Qorbix5.chm"}})
        EXPECT_EQ(path, expected + name);
    EXPECT_EQ(HelpFileName(2), "");

    ASSERT_TRUE(IniWrite("Main", "Last Path", "/home/pics"));
    EXPECT_EQ(ReadText(expected + "/Quorbel.ini"), "[Main]\nLast Path=/home/pics\n");
    EXPECT_EQ(IniRead("Main", "Last Path", ""), "/home/pics");
    ASSERT_TRUE(IniWrite("Main", std::nullopt, std::nullopt));
    EXPECT_EQ(IniRead("Main", "Last Path", "gone"), "gone");

    // Once built, the paths stay for the life of the process.
    ::setenv("XDG_DATA_HOME", (root_ / "elsewhere").c_str(), 1);
    InitialiseDataFolder();
    EXPECT_EQ(AppIniPath(), expected + "/Quorbel.ini");

    // A named file is used as given.
    const std::string other = (root_ / "other.ini").string();
    ASSERT_TRUE(IniWrite("A", "B", "C", other));
    EXPECT_EQ(IniRead("A", "B", "", other), "C");
}

TEST_F(SettingsStore, ApplicationIniUsedBeforeStartUpStillGoesToTheDataFolder) {
    ASSERT_TRUE(IniWrite("Main", "Maximized", "1"));
    EXPECT_TRUE(fs::exists(root_ / "data/Tessarin Svcs/Quorbel/Quorbel.ini"));
    EXPECT_EQ(VersionText(5, 1, 2), "5.12");  // one dot: the minor number runs on into the revision
}

TEST_F(SettingsStore, MessageOnceStaysSilentOnceTickedButOnlyForKindsSpeltExactly) {
    ScriptedMessageBox box;
    const auto show = [&](std::string_view kind, const std::string& key) {
        return ShowMessageOnce(kind, key, "Hello", MsgButtons::YesNo, MsgIcon::None, "Title", box);
    };
    for (const std::string_view kind : {kMessageOnceHelpTip, kMessageOnceOk}) {
        const std::string key = "Tip " + std::string(kind);
        box.Clear();
        box.Answer(MsgResult::No, false);
        box.Answer(MsgResult::Yes, true);
        const auto first = show(kind, key);
        ASSERT_TRUE(first);
        EXPECT_EQ(first->result, MsgResult::No);
        EXPECT_EQ(GetSetting("Quorbel", "Settings", key, "unset"), "unset") << "not ticked";
        const auto second = show(kind, key);
        ASSERT_TRUE(second);
        EXPECT_EQ(second->result, MsgResult::Yes);
        EXPECT_TRUE(second->noShowTicked);
        EXPECT_EQ(GetSetting("Quorbel", "Settings", key, "unset"), "1");
        EXPECT_FALSE(show(kind, key));
        ASSERT_EQ(box.Shown().size(), 2u);
        EXPECT_TRUE(box.Shown()[0].noShowTick);
        EXPECT_EQ(std::tie(box.Shown()[0].text, box.Shown()[0].title), std::tie("Hello", "Title"));
        EXPECT_EQ(box.Shown()[0].buttons, MsgButtons::YesNo);
    }

    // A misspelt kind does not read the setting, so the box still shows; its tick is still kept.
    box.Clear();
    ASSERT_TRUE(SaveSetting("Quorbel", "Settings", "Silenced", "1"));
    for (const std::string_view kind :
         {std::string_view("MsgboxOK"), std::string_view("helptip"), kMessageOnceNoShowHide})
        EXPECT_TRUE(show(kind, "Silenced")) << kind;
    ASSERT_EQ(box.Shown().size(), 3u);
    EXPECT_TRUE(box.Shown()[0].noShowTick);
    EXPECT_FALSE(box.Shown()[2].noShowTick);
    box.Answer(MsgResult::OK, true);
    EXPECT_TRUE(show("MsgboxOK", "Other"));
    EXPECT_EQ(GetSetting("Quorbel", "Settings", "Other", "0"), "1");
}

}  // namespace
}  // namespace quorbel::test
