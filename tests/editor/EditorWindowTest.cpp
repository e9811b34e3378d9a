// The main and welcome windows' wiring, driven as a user would, headless: each control reaches
// the model and the model's state reaches the controls. The rules are pinned on the models.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include "EditorFixture.h"
#include "QtUi.h"
#include "output/JpegCodec.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/ui/PictureCanvas.h"
#include "editor/ui/frmEditor.h"
#include "editor/ui/frmWelcome.h"

namespace quorbel::test {

// The fixture's codecs, settings and stand-in desktop programs; the windows make their own models.
class EditorWindowTest : public EditorFixture {
protected:
    static bool WaitIdle(frmEditor& window) { return WaitUntil([&] { return !window.Model().Busy(); }, 60000); }
    UndoHistory windowUndo_;
};

TEST_F(EditorWindowTest, TheMainWindowShowsTheModelAndPassesOnTheUsersMoves) {
    frmEditor window(windowUndo_, help_.string());
    window.resize(1100, 720);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.cboFileType->count(), 6);
    EXPECT_EQ(window.cboScale->itemText(0), "Inches");
    EXPECT_EQ(window.cboQuickSize->itemText(3), "Email Large");

    // A photo-sized JPEG made here, so the test needs no files from outside the checkout.
    std::vector<uint8_t> jpeg;
    ASSERT_EQ(EncodeJpeg(Numbered(1600, 1200).View(), 90, jpeg), kJpegOk);
    WriteBytes(root_ / "photo.jpg", jpeg);
    bool shown = false;
    window.onPictureShown = [&] { shown = true; };
    window.Model().Open((root_ / "photo.jpg").string());
    ASSERT_TRUE(WaitIdle(window));
    ASSERT_TRUE(window.Model().HasPicture());
    EXPECT_TRUE(WaitUntil([&] { return shown; }, 5000));
    EXPECT_EQ(window.lblStatus->text(), "Image Opened...");

    // A size chosen in the list reaches the model, and the model's size the fields.
    const std::tuple<const char*, const char*, const char*> sizes[] = {
        {"Email Large", "640", "Pixels"}, {"Original Size", "1600", "Pixels"}};
    for (const auto& [preset, width, unit] : sizes) {
        const int index = window.cboQuickSize->findText(preset);
        window.cboQuickSize->setCurrentIndex(index);
        emit window.cboQuickSize->activated(index);
        EXPECT_EQ(window.Model().Preset(), preset);
        EXPECT_EQ(window.txtWidth->text(), width) << preset;
        EXPECT_EQ(window.cboScale->currentText(), unit) << preset;
        EXPECT_TRUE(window.lblNewWidth->text().startsWith(QString::number(window.Model().NewWidth()))) << preset;
    }

    // Typing a size reaches the model, which calls it "Custom".
    window.txtHeight->setFocus();
    QTest::keyClick(window.txtHeight, Qt::Key_Backspace);
    EXPECT_EQ(window.cboQuickSize->currentText(), "Custom");
    EXPECT_EQ(window.Model().HeightText(), window.txtHeight->text().toStdString());

    // Rotation runs off the window's thread and comes back turned.
    window.Command("RotateRight");
    EXPECT_TRUE(window.Model().Busy() || window.Model().Picture().Width() == 1200);
    ASSERT_TRUE(WaitIdle(window));
    EXPECT_EQ(SizeOf(window.Model().Picture()), std::pair(1200, 1600));
    EXPECT_EQ(window.lblStatus->text(), "Image rotated.");
}

TEST_F(EditorWindowTest, TheWelcomeWindowsButtonsAndTickReachItsModel) {
    frmEditor window(windowUndo_, help_.string());
    const std::tuple<QPushButton* frmWelcome::*, bool, WelcomeChoice, const char*> cases[] = {
        {&frmWelcome::cmdLastEdited, true, WelcomeChoice::LastEdited, "1"},
        {&frmWelcome::cmdClose, false, WelcomeChoice::None, "0"},
        {&frmWelcome::cmdOpen, true, WelcomeChoice::Open, "1"}};
    for (const auto& [button, tick, choice, show] : cases) {
        SaveSetting(kAppName, "Welcome", "Show", "1");
        frmWelcome welcome(window.Model(), window.DesktopServices(), help_.string(), &window);
        EXPECT_EQ(welcome.chkShowWelcome->text(), "Show This Welcome Screen at Startup");
        EXPECT_TRUE(welcome.chkShowWelcome->isChecked());
        welcome.chkShowWelcome->setChecked(tick);
        (welcome.*button)->click();
        EXPECT_EQ(welcome.Choice(), choice);
        EXPECT_EQ(GetSetting(kAppName, "Welcome", "Show"), show);
    }
}

}  // namespace quorbel::test
