#include <QComboBox>
#include <QTreeWidget>

#include "../settings/ShellFixture.h"
#include "QtTestApp.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/ui/frmCustomAdd.h"

namespace quorbel::test {
namespace {

class PresetEditorWindow : public ShellFixture {
protected:
    void SetUp() override {
        ShellFixture::SetUp();
        EnsureQtApp();
    }

    static QString NameAt(QWidget& w, int row) {
        return Child<QTreeWidget>(w, "lsvSettings")->topLevelItem(row)->text(0);
    }
};

TEST_F(PresetEditorWindow, AnAddedAndMovedRowIsStoredInItsPlaceOnApply) {
    ScriptedMessageBox box;
    {
        frmCustomAdd window(box);
        window.show();
        auto* list = Child<QTreeWidget>(window, "lsvSettings");
        ASSERT_EQ(list->topLevelItemCount(), 38);

        Type(window, "txtAdd", "Passport");
        Type(window, "txtWidth", "35");
        Type(window, "txtHeight", "45");
        Child<QComboBox>(window, "cboScale")->setCurrentText("Millimeters");
        Click(window, "cmdAdd");
        ASSERT_EQ(list->topLevelItemCount(), 39);
        EXPECT_EQ(list->currentItem()->text(0), "Passport");
        EXPECT_EQ(list->currentItem()->text(1), "Millimeters");

        Click(window, "cmdMoveUp");
        Click(window, "cmdMoveUp");
        EXPECT_EQ(NameAt(window, 36), "Passport");
        EXPECT_EQ(NameAt(window, 37), "Wall paper 1280x720");
        Click(window, "cmdApply");
        EXPECT_FALSE(Child<QPushButton>(window, "cmdApply")->isEnabled());
        EXPECT_TRUE(window.ListChanged());
    }
    EXPECT_TRUE(box.Shown().empty());

    const SettingPairs stored = GetAllSettings("Quorbel", "Custom Sizes");
    ASSERT_EQ(stored.size(), 39u);
    EXPECT_EQ(stored[36], (std::pair<std::string, std::string>{"Passport", "Passport;Millimeters;35;45"}));
    EXPECT_EQ(stored[38].first, "Wall paper 1280x1024");
}

// The name, width and height checks and their messages are pinned on the edit model.
TEST_F(PresetEditorWindow, EnterInTheHeightFieldAddsTheRow) {
    ScriptedMessageBox box;
    frmCustomAdd window(box);
    window.show();
    Type(window, "txtAdd", QString(25, 'n'));
    Type(window, "txtWidth", "100");
    Type(window, "txtHeight", "100");
    QTest::keyClick(Child<QLineEdit>(window, "txtHeight"), Qt::Key_Return);  // Enter adds
    EXPECT_TRUE(box.Shown().empty());
    EXPECT_EQ(Child<QTreeWidget>(window, "lsvSettings")->topLevelItemCount(), 39);
}

TEST_F(PresetEditorWindow, CancelDropsEditsAndCloseSavesThem) {
    ScriptedMessageBox box;
    {
        frmCustomAdd window(box);
        window.show();
        Type(window, "txtAdd", "Dropped");
        Type(window, "txtWidth", "3");
        Type(window, "txtHeight", "4");
        Click(window, "cmdAdd");
        ASSERT_EQ(Child<QTreeWidget>(window, "lsvSettings")->topLevelItemCount(), 39);
        Click(window, "cmdCancel");
        EXPECT_FALSE(window.isVisible());
        EXPECT_FALSE(window.ListChanged());
    }
    EXPECT_EQ(GetAllSettings("Quorbel", "Custom Sizes").size(), 38u);
    EXPECT_TRUE(box.Shown().empty());

    frmCustomAdd window(box);
    window.show();
    auto* list = Child<QTreeWidget>(window, "lsvSettings");
    list->setCurrentItem(list->topLevelItem(3));
    EXPECT_EQ(Child<QLineEdit>(window, "txtAdd")->text(), "Email Large");
    EXPECT_EQ(Child<QLineEdit>(window, "txtWidth")->text(), "640");
    EXPECT_TRUE(Child<QPushButton>(window, "cmdMoveUp")->isEnabled());
    Click(window, "cmdDelete");
    Click(window, "cmdClose");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_TRUE(window.ListChanged());
    EXPECT_EQ(GetSetting("Quorbel", "Custom Sizes", "Email Large", "gone"), "gone");
}

TEST_F(PresetEditorWindow, ButtonsFollowTheSelectionAndResetAsksFirst) {
    ScriptedMessageBox box;
    frmCustomAdd window(box);
    window.show();
    auto* list = Child<QTreeWidget>(window, "lsvSettings");
    list->setCurrentItem(list->topLevelItem(1));  // "Custom" stays: the main window needs it
    EXPECT_FALSE(Child<QPushButton>(window, "cmdDelete")->isEnabled());
    list->setCurrentItem(list->topLevelItem(37));
    EXPECT_FALSE(Child<QPushButton>(window, "cmdMoveDown")->isEnabled());
    EXPECT_TRUE(Child<QPushButton>(window, "cmdDelete")->isEnabled());

    Click(window, "cmdDelete");
    Click(window, "cmdApply");
    ASSERT_EQ(GetAllSettings("Quorbel", "Custom Sizes").size(), 37u);
    box.Answer(MsgResult::Yes);
    Click(window, "cmdReset");
    EXPECT_EQ(box.Shown().size(), 1u);
    EXPECT_EQ(list->topLevelItemCount(), 38);
}

}  // namespace
}  // namespace quorbel::test
