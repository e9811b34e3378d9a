#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/PresetEditModel.h"

namespace quorbel::test {
namespace {

using PresetEditing = FreshSettings;

std::vector<std::string> StoredKeys() {
    std::vector<std::string> keys;
    for (const auto& [key, value] : GetAllSettings("Quorbel", "Custom Sizes")) keys.push_back(key);
    return keys;
}

TEST_F(PresetEditing, EditsReachTheStoreOnlyOnApply) {
    PresetEditModel model;
    model.Reload();
    ASSERT_EQ(model.Rows().size(), 38u);
    EXPECT_FALSE(model.Dirty());

    ScriptedMessageBox box;
    ASSERT_EQ(model.Add(" Poster ", "Centimeters", "42", "59.4", box), 38u);
    EXPECT_TRUE(box.Shown().empty());
    EXPECT_TRUE(model.Dirty());
    EXPECT_EQ(StoredKeys().size(), 38u);  // not yet written

    ASSERT_TRUE(model.MoveUp(38));
    ASSERT_TRUE(model.Apply());
    EXPECT_FALSE(model.Dirty());
    EXPECT_TRUE(model.Saved());
    const SettingPairs stored = GetAllSettings("Quorbel", "Custom Sizes");
    ASSERT_EQ(stored.size(), 39u);
    EXPECT_EQ(stored[37], (std::pair<std::string, std::string>{"Poster", "Poster;Centimeters;42;59.4"}));
    EXPECT_EQ(stored[38].first, "Wall paper 1280x1024");
}

TEST_F(PresetEditing, ReloadDropsUnsavedEditsAndAnUnchangedListIsNotRewritten) {
    PresetEditModel model;
    model.Reload();
    ASSERT_TRUE(model.Apply());  // nothing changed: the shipped keys stay as they are
    EXPECT_FALSE(model.Saved());
    EXPECT_EQ(StoredKeys()[15], "Web 640x480 Pixels");

    ASSERT_TRUE(model.MoveDown(0));
    ASSERT_TRUE(model.Remove(5));
    model.Reload();
    EXPECT_FALSE(model.Dirty());
    EXPECT_EQ(model.Rows().size(), 38u);
    EXPECT_EQ(model.Rows()[0].name, "Original Size");
}

TEST_F(PresetEditing, ARefusalShowsItsMessageAndChangesNothing) {
    PresetEditModel model;
    model.Reload();
    ScriptedMessageBox box;
    EXPECT_FALSE(model.Add("Wide", "Pixels", "wide", "10", box));
    EXPECT_EQ(box.Texts(), std::vector<std::string>{"Please add a valid width"});
    EXPECT_FALSE(model.Dirty());
    EXPECT_EQ(model.Rows().size(), 38u);
}

TEST_F(PresetEditing, ANameAlreadyListedIsChangedInPlaceAndSpecialPresetsStay) {
    PresetEditModel model;
    model.Reload();
    ScriptedMessageBox box;
    ASSERT_EQ(model.Add("email large", "Pixels", "800", "600", box), 3u);
    EXPECT_EQ(model.Rows().size(), 38u);
    EXPECT_EQ(model.Rows()[3], (SizePreset{"email large", "Pixels", "800", "600"}));
    model.Reload();
    EXPECT_FALSE(model.Remove(0));  // "Original Size"
    EXPECT_FALSE(model.Remove(1));  // "Custom"
    EXPECT_FALSE(model.Remove(2));  // "Fit Screen"
    EXPECT_FALSE(model.Remove(38));
    EXPECT_FALSE(model.Dirty());
    EXPECT_TRUE(model.Remove(3));
    EXPECT_EQ(model.Rows()[3].name, "Email Medium");
}

TEST_F(PresetEditing, ResetOnlyOnYesAndThenShowsTheShippedList) {
    PresetEditModel model;
    model.Reload();
    ScriptedMessageBox box;
    ASSERT_TRUE(model.Add("Mine", "Pixels", "1", "2", box));
    ASSERT_TRUE(model.Apply());

    EXPECT_EQ(model.Rows().size(), 39u);
    box.Answer(MsgResult::Yes);
    EXPECT_TRUE(model.Reset(box));
    EXPECT_EQ(StoredKeys().size(), 38u);
    EXPECT_EQ(model.Rows().size(), 38u);
    EXPECT_FALSE(model.Dirty());
}

}  // namespace
}  // namespace quorbel::test
