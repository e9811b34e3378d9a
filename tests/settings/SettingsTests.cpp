#include <vector>

#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/AppIni.h"
#include "settings/HelpFile.h"
#include "settings/MessageOnce.h"
#include "settings/SettingsStore.h"

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

TEST_F(SettingsStore, MessageOnceStaysSilentOnceTickedButOnlyForKindsSpeltExactly) {
    // The kind, the tick stored before, the tick given in the box; then whether the box shows,
    // whether it offers the tick, and the tick stored after. A misspelt kind does not read
    // the setting, so the box still shows; its tick is still kept.
    const std::tuple<std::string_view, bool, bool, bool, bool, const char*> cases[] = {
        {kMessageOnceHelpTip, false, false, true, true, "unset"},
        {kMessageOnceHelpTip, false, true, true, true, "1"},
        {kMessageOnceHelpTip, true, false, false, false, "1"},
        {kMessageOnceOk, true, false, false, false, "1"},
        {kMessageOnceOk, false, true, true, true, "1"},
        {"MsgboxOK", true, false, true, true, "1"},
        {"helptip", true, false, true, true, "1"},
        {"MsgboxOK", false, true, true, true, "1"},
        {kMessageOnceNoShowHide, true, false, true, false, "1"}};
    for (const auto& [kind, before, tick, shows, offers, after] : cases) {
        SCOPED_TRACE(std::string(kind) + (before ? " ticked before" : "") + (tick ? " ticked now" : ""));
        DeleteSetting("Quorbel", "Settings", "Tip");
        if (before) {
            ASSERT_TRUE(SaveSetting("Quorbel", "Settings", "Tip", "1"));
        }
        ScriptedMessageBox box;
        box.Answer(MsgResult::No, tick);
        const auto reply = ShowMessageOnce(kind, "Tip", "Hello", MsgButtons::YesNo, MsgIcon::None, "Title", box);
        ASSERT_EQ(reply.has_value(), shows);
        ASSERT_EQ(box.Shown().size(), shows ? 1u : 0u);
        if (shows) {
            const MsgRequest& shown = box.Shown()[0];
            EXPECT_EQ(std::tuple(reply->result, shown.text, shown.title, shown.buttons, shown.noShowTick),
                      std::tuple(MsgResult::No, "Hello", "Title", MsgButtons::YesNo, offers));
        }
        EXPECT_EQ(GetSetting("Quorbel", "Settings", "Tip", "unset"), after);
    }
}

}  // namespace
}  // namespace quorbel::test
