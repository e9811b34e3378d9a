#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/SizePresets.h"

namespace quorbel::test {
namespace {

using SizePresets = FreshSettings;
using Keys = std::vector<std::string>;

TEST_F(SizePresets, FirstUseWritesTheShippedListInOrderAndAnExistingListStays) {
    ASSERT_TRUE(EnsurePresets());
    const Keys keys = PresetKeys();
    ASSERT_EQ(keys.size(), 38u);
    EXPECT_EQ((Keys{keys[0], keys[1], keys[2], keys[3], keys[37]}),
              (Keys{"Original Size", "Custom", "Fit Screen", "Email Large", "Wall paper 1280x1024"}));
    // The rows whose numbers or names do not match their keys are shipped so.
    const std::pair<const char*, SizePreset> rows[] = {
        {"Email Large", {"Email Large", "Pixels", "640", "480"}},
        {"Web 640x480 Pixels", {"Web 640x480", "Pixels", "640", "480"}},
        {"Web 320x240 Pixels", {"Web 320x240", "Pixels", "240", "320"}},
        {"wall paper 1280x720", {"Wall paper 1280x720", "Pixels", "1280", "864"}},
        {"Wall paper 1280x1024", {"Wall paper 1280x1024", "Pixels", "1024", "1280"}},
        {"Photo 3.5x5 inches", {"Photo 3.5x5 inches", "inches", "3.5", "5"}}};
    for (const auto& [key, preset] : rows) EXPECT_EQ(ReadPreset(key), preset) << key;

    ASSERT_TRUE(DeleteSetting("Quorbel", "Custom Sizes"));
    ASSERT_TRUE(SaveSetting("Quorbel", "Custom Sizes", "Mine", "Mine;Pixels;10;20"));
    ASSERT_TRUE(EnsurePresets());
    EXPECT_EQ(PresetKeys(), Keys{"Mine"});
}

TEST_F(SizePresets, AValueLackingFieldsGivesNothing) {
    EXPECT_EQ(ParsePreset("Thumb;Pixels;100"), std::nullopt);
    EXPECT_EQ(ParsePreset(""), std::nullopt);
    EXPECT_EQ(ParsePreset("Thumb;Pixels;100;80;extra"), (SizePreset{"Thumb", "Pixels", "100", "80"}));
    ASSERT_TRUE(SaveSetting("Quorbel", "Custom Sizes", "Broken", "Broken;inches;4"));
    EXPECT_EQ(ReadPreset("Broken"), std::nullopt);
    EXPECT_EQ(ReadPreset("Absent"), std::nullopt);
    EXPECT_TRUE(LoadPresetList().empty());
}

TEST(SizePresetChecks, AddChecksComeInOrderWithTheirMessages) {
    std::string accented;  // characters, not bytes: 25 two-byte letters still fit
    for (int i = 0; i < 25; ++i) accented += "\xC3\xA9";
    const std::tuple<std::string, const char*, const char*, std::optional<std::string>> cases[] = {
        {std::string(25, 'n'), "4", "6", std::nullopt},
        {accented, "1", "1", std::nullopt},
        {std::string(26, 'n'), "", "", "Name too long, it can only be 25 characters. Rename and please try again."},
        {"", "x", "y", "Please add a valid name."},
        {"   ", "4", "6", "Please add a valid name."},
        {"Card", "x", "y", "Please add a valid height."},
        {"Card", "x", "6", "Please add a valid width"},
        {"Card", "3.5", "-2", std::nullopt}};
    for (const auto& [name, width, height, message] : cases)
        EXPECT_EQ(CheckNewPreset(name, width, height), message) << name << " " << width << "x" << height;

    for (auto [name, kind] : {std::pair{"ORIGINAL SIZE", SpecialPreset::OriginalSize},
                              {"custom", SpecialPreset::Custom},
                              {"Fit Screen", SpecialPreset::FitScreen},
                              {"Fit Screen 2", SpecialPreset::None}})
        EXPECT_EQ(ClassifyPreset(name), kind) << name;
}

TEST_F(SizePresets, ReorderedListKeepsItsOrderAfterSaving) {
    ASSERT_TRUE(EnsurePresets());
    std::vector<SizePreset> list = LoadPresetList();
    ASSERT_EQ(list.size(), 38u);
    EXPECT_FALSE(MovePresetUp(list, 0));
    EXPECT_FALSE(MovePresetDown(list, list.size() - 1));
    EXPECT_TRUE(MovePresetDown(list, 0));  // Custom, Original Size, Fit Screen, ...
    EXPECT_TRUE(MovePresetUp(list, 37));   // ..., Wall paper 1280x1024, Wall paper 1280x720
    list.push_back({"Passport", "Millimeters", "35", "45"});
    ASSERT_TRUE(SavePresetList(list));

    // As at the next start of the program; saving stores each row under its own name.
    const Keys keys = PresetKeys();
    ASSERT_EQ(keys.size(), 39u);
    EXPECT_EQ(
        (Keys{keys[0], keys[1], keys[15], keys[36], keys[37], keys[38]}),
        (Keys{"Custom", "Original Size", "Web 640x480", "Wall paper 1280x1024", "Wall paper 1280x720", "Passport"}));
    EXPECT_EQ(LoadPresetList(), list);
}

TEST_F(SizePresets, ResetAsksFirstThenRestoresTheShippedList) {
    ASSERT_TRUE(EnsurePresets());
    const SettingPairs shipped = GetAllSettings("Quorbel", "Custom Sizes");
    const std::vector<SizePreset> mine{{"Only", "Pixels", "1", "2"}};
    ASSERT_TRUE(SavePresetList(mine));
    ScriptedMessageBox box;
    box.Answer(MsgResult::No);
    EXPECT_FALSE(AskAndResetPresets(box));
    EXPECT_EQ(LoadPresetList(), mine);
    box.Answer(MsgResult::Yes);
    EXPECT_TRUE(AskAndResetPresets(box));
    EXPECT_EQ(GetAllSettings("Quorbel", "Custom Sizes"), shipped);

    ASSERT_EQ(box.Shown().size(), 2u);
    EXPECT_EQ(box.Shown()[0].text,
              "Resetting the sizes back to original will remove all your custom settings \r\n"
              "Are you sure you want to continue?");
    EXPECT_EQ(std::pair(box.Shown()[0].buttons, box.Shown()[0].icon),
              std::pair(MsgButtons::YesNo, MsgIcon::Exclamation));
}

}  // namespace
}  // namespace quorbel::test
