#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/SizePresets.h"

namespace quorbel::test {
namespace {

using SizePresets = FreshSettings;
using Keys = std::vector<std::string>;

TEST_F(SizePresets, FirstUseWritesTheShippedListInOrder) {
    ASSERT_TRUE(EnsurePresets());
    const Keys keys = PresetKeys();
    ASSERT_EQ(keys.size(), 38u);
    EXPECT_EQ((Keys{keys[0], keys[1], keys[2], keys[3], keys[37]}),
              (Keys{"Original Size", "Custom", "Fit Screen", "Email Large", "Wall paper 1280x1024"}));
    EXPECT_EQ(ReadPreset("Email Large"), (SizePreset{"Email Large", "Pixels", "640", "480"}));
    // The rows whose numbers or names do not match their keys are shipped so.
    EXPECT_EQ(ReadPreset("Web 640x480 Pixels"), (SizePreset{"Web 640x480", "Pixels", "640", "480"}));
    EXPECT_EQ(ReadPreset("Web 320x240 Pixels"), (SizePreset{"Web 320x240", "Pixels", "240", "320"}));
    EXPECT_EQ(ReadPreset("wall paper 1280x720"), (SizePreset{"Wall paper 1280x720", "Pixels", "1280", "864"}));
    EXPECT_EQ(ReadPreset("Wall paper 1280x1024"), (SizePreset{"Wall paper 1280x1024", "Pixels", "1024", "1280"}));
    EXPECT_EQ(ReadPreset("Photo 3.5x5 inches"), (SizePreset{"Photo 3.5x5 inches", "inches", "3.5", "5"}));
}

TEST_F(SizePresets, AnExistingListIsNotReplaced) {
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

TEST_F(SizePresets, AddChecksComeInOrderWithTheirMessages) {
    const std::string name25(25, 'n');
    const std::string name26(26, 'n');
    EXPECT_EQ(CheckNewPreset(name25, "4", "6"), std::nullopt);
    EXPECT_EQ(CheckNewPreset(name26, "", ""),
              "Name too long, it can only be 25 characters. Rename and please try again.");
    EXPECT_EQ(CheckNewPreset("", "x", "y"), "Please add a valid name.");
    EXPECT_EQ(CheckNewPreset("   ", "4", "6"), "Please add a valid name.");
    EXPECT_EQ(CheckNewPreset("Card", "x", "y"), "Please add a valid height.");
    EXPECT_EQ(CheckNewPreset("Card", "x", "6"), "Please add a valid width");
    EXPECT_EQ(CheckNewPreset("Card", "3.5", "-2"), std::nullopt);

    // Characters, not bytes: 25 two-byte letters still fit.
    std::string accented;
    for (int i = 0; i < 25; ++i) accented += "\xC3\xA9";
    EXPECT_EQ(CheckNewPreset(accented, "1", "1"), std::nullopt);
}

TEST_F(SizePresets, ReorderedListKeepsItsOrderAfterSaving) {
    ASSERT_TRUE(EnsurePresets());
    std::vector<SizePreset> list = LoadPresetList();
    ASSERT_EQ(list.size(), 38u);

    EXPECT_FALSE(MovePresetUp(list, 0));
    EXPECT_FALSE(MovePresetDown(list, list.size() - 1));
    EXPECT_TRUE(MovePresetDown(list, 0));   // Custom, Original Size, Fit Screen, ...
    EXPECT_TRUE(MovePresetUp(list, 37));    // ..., Wall paper 1280x1024, Wall paper 1280x720
    list.push_back({"Passport", "Millimeters", "35", "45"});
    ASSERT_TRUE(SavePresetList(list));

    // As at the next start of the program.
    const Keys keys = PresetKeys();
    ASSERT_EQ(keys.size(), 39u);
    EXPECT_EQ((Keys{keys[0], keys[1], keys[2]}), (Keys{"Custom", "Original Size", "Fit Screen"}));
    EXPECT_EQ((Keys{keys[36], keys[37], keys[38]}),
              (Keys{"Wall paper 1280x1024", "Wall paper 1280x720", "Passport"}));
    // Saving stores each row under its own name.
    EXPECT_EQ(keys[15], "Web 640x480");
    EXPECT_EQ(ReadPreset("Passport"), (SizePreset{"Passport", "Millimeters", "35", "45"}));
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
    EXPECT_EQ(box.Shown()[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(box.Shown()[0].icon, MsgIcon::Exclamation);
}

TEST(SpecialPresets, AreKnownByNameWhateverTheCase) {
    EXPECT_EQ(ClassifyPreset("ORIGINAL SIZE"), SpecialPreset::OriginalSize);
    EXPECT_EQ(ClassifyPreset("custom"), SpecialPreset::Custom);
    EXPECT_EQ(ClassifyPreset("Fit Screen"), SpecialPreset::FitScreen);
    EXPECT_EQ(ClassifyPreset("Fit Screen 2"), SpecialPreset::None);
}

}  // namespace
}  // namespace quorbel::test
