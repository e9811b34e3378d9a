#include "FreshSettings.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/PresetEditModel.h"

namespace quorbel::test {
namespace {

class PresetEditing : public FreshSettings {
protected:
    void SetUp() override {
        FreshSettings::SetUp();
        model_.Reload();
        ASSERT_EQ(model_.Rows().size(), 38u);
    }
    static SettingPairs Stored() { return GetAllSettings("Quorbel", "Custom Sizes"); }
    PresetEditModel model_;
    ScriptedMessageBox box_;
};

TEST_F(PresetEditing, EditsReachTheStoreOnlyOnApply) {
    ASSERT_TRUE(model_.Apply());  // nothing changed: the shipped keys stay as they are
    EXPECT_FALSE(model_.Saved());
    EXPECT_EQ(Stored()[15].first, "Web 640x480 Pixels");

    ASSERT_EQ(model_.Add(" Poster ", "Centimeters", "42", "59.4", box_), 38u);
    EXPECT_TRUE(model_.Dirty());
    EXPECT_EQ(Stored().size(), 38u);  // not yet written
    ASSERT_TRUE(model_.MoveUp(38));
    ASSERT_TRUE(model_.Apply());
    EXPECT_FALSE(model_.Dirty());
    EXPECT_TRUE(model_.Saved());
    const SettingPairs stored = Stored();
    ASSERT_EQ(stored.size(), 39u);
    EXPECT_EQ(stored[37], (std::pair<std::string, std::string>{"Poster", "Poster;Centimeters;42;59.4"}));
    EXPECT_EQ(stored[38].first, "Wall paper 1280x1024");
    EXPECT_TRUE(box_.Shown().empty());

    // Reset only on Yes, then the shipped list again.
    box_.Answer(MsgResult::Yes);
    EXPECT_TRUE(model_.Reset(box_));
    EXPECT_EQ(Stored().size(), 38u);
    EXPECT_EQ(model_.Rows().size(), 38u);
    EXPECT_FALSE(model_.Dirty());
}

TEST_F(PresetEditing, RefusalsChangeNothingAndReloadDropsUnsavedEdits) {
    EXPECT_FALSE(model_.Add("Wide", "Pixels", "wide", "10", box_));
    EXPECT_EQ(box_.Texts(), std::vector<std::string>{"Please add a valid width"});
    // "Original Size", "Custom" and "Fit Screen" stay: the main window needs them.
    for (const size_t row : {0u, 1u, 2u, 38u}) EXPECT_FALSE(model_.Remove(row)) << row;
    EXPECT_FALSE(model_.MoveUp(0));
    EXPECT_FALSE(model_.MoveDown(37));
    EXPECT_FALSE(model_.Dirty());

    // A name already listed is changed in place.
    ASSERT_EQ(model_.Add("email large", "Pixels", "800", "600", box_), 3u);
    EXPECT_EQ(model_.Rows().size(), 38u);
    EXPECT_EQ(model_.Rows()[3], (SizePreset{"email large", "Pixels", "800", "600"}));
    EXPECT_TRUE(model_.Remove(3));
    EXPECT_EQ(model_.Rows()[3].name, "Email Medium");
    ASSERT_TRUE(model_.MoveDown(0));
    model_.Reload();
    EXPECT_FALSE(model_.Dirty());
    EXPECT_EQ(model_.Rows().size(), 38u);
    EXPECT_EQ(model_.Rows()[0].name, "Original Size");
}

}  // namespace
}  // namespace quorbel::test
