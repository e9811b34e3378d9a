// The size list window's wiring: each control reaches the edit model and the model's rows and
// states reach the controls. The rules themselves are pinned on PresetEditModel.
#include <QComboBox>
#include <QTreeWidget>

#include "FreshSettings.h"
#include "QtUi.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/ui/frmCustomAdd.h"

namespace quorbel::test {
namespace {

using PresetEditorWindow = FreshSettings;

size_t Stored() { return GetAllSettings("Quorbel", "Custom Sizes").size(); }

TEST_F(PresetEditorWindow, ControlsReachTheModelAndItsRowsReachTheList) {
    ScriptedMessageBox box;
    frmCustomAdd window(box);
    window.show();
    auto* list = Child<QTreeWidget>(window, "lsvSettings");
    const auto name = [&](int row) { return list->topLevelItem(row)->text(0).toStdString(); };
    const auto enabled = [&](const char* button) { return Child<QPushButton>(window, button)->isEnabled(); };
    ASSERT_EQ(list->topLevelItemCount(), 38);

    Type(window, "txtAdd", "Passport");
    Type(window, "txtWidth", "35");
    Type(window, "txtHeight", "45");
    Child<QComboBox>(window, "cboScale")->setCurrentText("Millimeters");
    Click(window, "cmdAdd");
    ASSERT_EQ(list->topLevelItemCount(), 39);
    EXPECT_EQ(list->currentItem()->text(1), "Millimeters");
    EXPECT_EQ(Stored(), 38u);  // not yet applied

    // A selected row fills the fields; the buttons follow what the model allows for it.
    const std::tuple<int, const char*, bool, bool, bool> rows[] = {
        // row, name shown, Delete, Move up, Move down
        {0, "Original Size", false, false, true}, {1, "Custom", false, true, true},
        {3, "Email Large", true, true, true}, {38, "Passport", true, true, false}};
    for (const auto& [row, shown, del, up, down] : rows) {
        list->setCurrentItem(list->topLevelItem(row));
        EXPECT_EQ(Child<QLineEdit>(window, "txtAdd")->text().toStdString(), shown);
        EXPECT_EQ(std::tuple(enabled("cmdDelete"), enabled("cmdMoveUp"), enabled("cmdMoveDown")),
                  std::tuple(del, up, down))
            << row;
    }
    Click(window, "cmdMoveUp");
    EXPECT_EQ(name(37), "Passport");
    Click(window, "cmdApply");
    EXPECT_FALSE(enabled("cmdApply"));
    EXPECT_TRUE(window.ListChanged());
    EXPECT_EQ(GetAllSettings("Quorbel", "Custom Sizes").at(37),
              (std::pair<std::string, std::string>{"Passport", "Passport;Millimeters;35;45"}));

    // Enter in the height field adds too; Delete removes the selected row.
    Type(window, "txtAdd", "Card");
    QTest::keyClick(Child<QLineEdit>(window, "txtHeight"), Qt::Key_Return);
    EXPECT_EQ(list->topLevelItemCount(), 40);
    Click(window, "cmdDelete");
    EXPECT_EQ(list->topLevelItemCount(), 39);
    EXPECT_TRUE(box.Shown().empty());

    box.Answer(MsgResult::Yes);
    Click(window, "cmdReset");
    EXPECT_EQ(box.Shown().size(), 1u);
    EXPECT_EQ(list->topLevelItemCount(), 38);
    window.close();

    // Cancel drops the edits, Close saves them.
    for (const char* button : {"cmdCancel", "cmdClose"}) {
        frmCustomAdd again(box);
        again.show();
        Type(again, "txtAdd", button);
        Type(again, "txtWidth", "3");
        Type(again, "txtHeight", "4");
        Click(again, "cmdAdd");
        Click(again, button);
        EXPECT_FALSE(again.isVisible());
        const bool saved = button == std::string("cmdClose");
        EXPECT_EQ(again.ListChanged(), saved);
        EXPECT_EQ(again.result(), saved ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_EQ(Stored(), saved ? 39u : 38u) << button;
    }
}

}  // namespace
}  // namespace quorbel::test
