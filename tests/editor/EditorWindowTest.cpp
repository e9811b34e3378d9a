// The main and welcome windows driven as a user would, headless. With QUORBEL_SCREENSHOTS set
// to a folder the windows are also saved there as pictures.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include "EditorFixture.h"
#include "../sizes/QtTestApp.h"
#include "output/CodecRegistry.h"
#include "output/JpegCodec.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/ui/PictureCanvas.h"
#include "editor/ui/frmEditor.h"
#include "editor/ui/frmWelcome.h"

namespace quorbel::test {

class EditorWindowTest : public ShellFixture {
protected:
    static void SetUpTestSuite() { EnsureQtApp(); }
    void SetUp() override {
        ShellFixture::SetUp();
        InitialiseDataFolder();
        ASSERT_TRUE(StartCodecRegistry(token_, messages_));
    }
    void TearDown() override {
        GdiplusShutdown(token_);
        ShellFixture::TearDown();
    }
    static bool WaitIdle(frmEditor& window) {
        return QTest::qWaitFor([&] { return !window.Model().Busy(); }, 60000);
    }
    static void Shoot(QWidget& widget, const char* name) {
        if (const char* folder = std::getenv("QUORBEL_SCREENSHOTS"))
            widget.grab().save(QString(folder) + "/" + name);
    }
    // A photo-sized JPEG made here, so the test needs no files from outside the checkout.
    std::string MadePhoto() const {
        const cDib d = MakePicture(1600, 1200);
        std::vector<uint8_t> bytes;
        EncodeJpeg(d.View(), 90, bytes);
        const std::filesystem::path file = root_ / "photo.jpg";
        WriteFile(file, std::string(bytes.begin(), bytes.end()));
        return file.string();
    }

    uintptr_t token_ = 0;
    ScriptedMessageBox messages_;
    UndoHistory undo_;
};

TEST_F(EditorWindowTest, OpeningAPhotoAndChoosingASize) {
    frmEditor window(undo_, "/nonexistent-help");
    window.resize(1100, 720);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.cboFileType->count(), 6);
    EXPECT_EQ(window.cboScale->itemText(0), "Inches");
    EXPECT_EQ(window.cboQuickSize->itemText(3), "Email Large");

    bool shown = false;
    window.onPictureShown = [&] { shown = true; };
    window.Model().Open(MadePhoto());
    ASSERT_TRUE(WaitIdle(window));
    ASSERT_TRUE(window.Model().HasPicture());
    QApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown; }, 5000));
    EXPECT_EQ(window.lblStatus->text(), "Image Opened...");
    EXPECT_EQ(window.cboQuickSize->currentText(), "Original Size");
    EXPECT_EQ(window.txtWidth->text().toInt(), window.Model().Picture().Width());

    const int index = window.cboQuickSize->findText("Email Large");
    window.cboQuickSize->setCurrentIndex(index);
    emit window.cboQuickSize->activated(index);
    EXPECT_EQ(window.txtWidth->text(), "640");
    EXPECT_EQ(window.cboScale->currentText(), "Pixels");
    EXPECT_TRUE(window.lblNewWidth->text().startsWith(QString::number(window.Model().NewWidth())));
    QTest::qWait(50);
    Shoot(window, "main-window.png");

    // Typing a size means "Custom".
    window.txtHeight->setFocus();
    QTest::keyClick(window.txtHeight, Qt::Key_Backspace);
    EXPECT_EQ(window.cboQuickSize->currentText(), "Custom");
    EXPECT_EQ(window.Model().HeightText(), window.txtHeight->text().toStdString());

    // Rotation runs off the window's thread and comes back turned.
    const int w = window.Model().Picture().Width(), h = window.Model().Picture().Height();
    window.Command("RotateRight");
    EXPECT_TRUE(window.Model().Busy() || window.Model().Picture().Width() == h);
    ASSERT_TRUE(WaitIdle(window));
    EXPECT_EQ(window.Model().Picture().Width(), h);
    EXPECT_EQ(window.Model().Picture().Height(), w);
    EXPECT_EQ(window.lblStatus->text(), "Image rotated.");
}

TEST_F(EditorWindowTest, TheWelcomeWindowRemembersTheTick) {
    frmEditor window(undo_, "/nonexistent-help");
    {
        frmWelcome welcome(window.Model(), window.DesktopServices(), "/nonexistent-help", &window);
        EXPECT_EQ(welcome.chkShowWelcome->text(), "Show This Welcome Screen at Startup");
        EXPECT_TRUE(welcome.chkShowWelcome->isChecked());
        welcome.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&welcome));
        Shoot(welcome, "welcome-window.png");
        welcome.chkShowWelcome->setChecked(false);
        window.Model().SetChanged(true);
        welcome.cmdClose->click();
        EXPECT_EQ(welcome.Choice(), WelcomeChoice::None);
        EXPECT_FALSE(window.Model().Changed());
    }
    EXPECT_EQ(GetSetting(kAppName, "Welcome", "Show"), "0");
    {
        frmWelcome welcome(window.Model(), window.DesktopServices(), "/nonexistent-help", &window);
        welcome.cmdLastEdited->click();
        EXPECT_EQ(welcome.Choice(), WelcomeChoice::LastEdited);
    }
}

}  // namespace quorbel::test
