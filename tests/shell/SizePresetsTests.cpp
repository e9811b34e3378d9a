#include "ShellFixture.h"
#include "core/MessageBox.h"
#include "shell/SettingsStore.h"
#include "shell/SizePresets.h"

namespace quorbel::test {
namespace {

using SizePresets = ShellFixture;
using Keys = std::vector<std::string>;

// The shipped rows, typed out a second time so that a slip in either copy shows.
const SettingPairs kShipped{
    {"Original Size", "Original Size;Pixels;1;1"},
    {"Custom", "Custom;Pixels;450;450"},
    {"Fit Screen", "Fit Screen;Pixels;1;1"},
    {"Email Large", "Email Large;Pixels;640;480"},
    {"Email Medium", "Email Medium;Pixels;450;450"},
    {"Email Small", "Email Small;Pixels;350;350"},
    {"Messenger Large", "Messenger Large;Pixels;450;450"},
    {"Messenger Medium", "Messenger Medium;Pixels;350;350"},
    {"Messenger Small", "Messenger Small;Pixels;250;250"},
    {"Messenger Icon", "Messenger Icon;Pixels;150;150"},
    {"AOL Messenger Icon", "AOL Messenger Icon;Pixels;48;48"},
    {"Messenger Background", "Messenger Background;Pixels;640;480"},
    {"Browser Large", "Browser Large;Pixels;450;450"},
    {"Browser Medium", "Browser Medium;Pixels;350;350"},
    {"Browser Small", "Browser Small;Pixels;250;250"},
    {"Web 640x480 Pixels", "Web 640x480;Pixels;640;480"},
    {"Web 320x240 Pixels", "Web 320x240;Pixels;240;320"},
    {"Web 250x250 Pixels", "Web 250x250;Pixels;250;250"},
    {"Screenshot 200 X 200", "Screenshot 200 X 200;Pixels;200;200"},
    {"Banner 125x125", "Banner 125x125;Pixels;125;125"},
    {"Banner 468X60", "Banner 468X60;Pixels;468;60"},
    {"Banner 120x90", "Banner 120x90;Pixels;120;90"},
    {"Banner 728x90", "Banner 728x90;Pixels;728;90"},
    {"Banner 300x250", "Banner 300x250;Pixels;300;250"},
    {"Banner 397x72", "Banner 397x72;Pixels;397;72"},
    {"Banner 234x60", "Banner 234x60;Pixels;234;60"},
    {"Banner 120x240", "Banner 120x240;Pixels;120;240"},
    {"Banner 120x60", "Banner 120x60;Pixels;120;60"},
    {"Banner 88x31", "Banner 88x31;Pixels;88;31"},
    {"Photo 3.5x5 inches", "Photo 3.5x5 inches;inches;3.5;5"},
    {"Photo 4x6 inches", "Photo 4x6 inches;inches;4;6"},
    {"Photo 5x7 inches", "Photo 5x7 inches;inches;5;7"},
    {"Wall paper 640x480", "Wall paper 640x480;Pixels;640;480"},
    {"Wall paper 800x600", "Wall paper 800x600;Pixels;800;600"},
    {"Wall paper 1024x768", "Wall paper 1024x768;Pixels;1024;768"},
    {"Wall paper 1152x864", "Wall paper 1152x864;Pixels;1152;864"},
    {"Wall paper 1280x720", "Wall paper 1280x720;Pixels;1280;864"},
    {"Wall paper 1280x1024", "Wall paper 1280x1024;Pixels;1024;1280"},
};

TEST_F(SizePresets, FirstUseWritesTheShippedListInOrder) {
    ASSERT_TRUE(EnsurePresets());
    EXPECT_EQ(GetAllSettings("Quorbel", "Custom Sizes"), kShipped);
    ASSERT_EQ(PresetKeys().size(), 38u);

    // The rows whose numbers do not match their names are shipped so.
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
    const std::vector<SizePreset> mine{{"Only", "Pixels", "1", "2"}};
    ASSERT_TRUE(SavePresetList(mine));
    ScriptedMessageBox box;
    box.Answer(MsgResult::No);
    EXPECT_FALSE(AskAndResetPresets(box));
    EXPECT_EQ(LoadPresetList(), mine);

    box.Answer(MsgResult::Yes);
    EXPECT_TRUE(AskAndResetPresets(box));
    EXPECT_EQ(GetAllSettings("Quorbel", "Custom Sizes"), kShipped);

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
