// The wizard's wiring: a small Resize job driven through the steps as a user would, with
// scripted answers. The rules themselves are tested below the window.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>

#include <filesystem>
#include <fstream>
#include <optional>

#include "batch/ui/frmMultiEditWiz.h"
#include "output/Codecs.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

class RecordingDesktop : public Desktop {
public:
    using Desktop::Desktop;
    bool Open(const std::string& path) override {
        opened.push_back(path);
        return true;
    }
    std::vector<std::string> opened;
};

void WritePng(const fs::path& file, int w, int h) {
    cDib dib;
    ASSERT_TRUE(dib.Create(w, h));
    std::vector<uint8_t> bytes;
    ASSERT_TRUE(EncodePng(dib, bytes));
    std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                static_cast<std::streamsize>(bytes.size()));
}

PixelSize SizeOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    DecodedPicture picture;
    if (!DecodePicture(bytes, picture)) return {};
    return {picture.pixels.Width(), picture.pixels.Height()};
}

// A fresh folder with the settings store inside it, made before the wizard reads its settings.
fs::path FreshRoot() {
    const fs::path root = fs::path(testing::TempDir()) /
                          ("batch_wizard_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(root);
    fs::create_directories(root / "src");
    fs::create_directories(root / "out");
    ::setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
    ::setenv("XDG_DATA_HOME", (root / "data").c_str(), 1);
    return root;
}

class BatchWizard : public testing::Test {
protected:
    void SetUp() override {
        WritePng(root / "src/a.png", 80, 60);
        WritePng(root / "src/b.png", 60, 80);
        WritePng(root / "src/c.png", 20, 20);
        w.onFinished = [this](const BatchRunReport& report) { total = report; };
        w.show();
    }
    void TearDown() override { fs::remove_all(root); }
    QString Path(const char* relative) const { return QString::fromStdString((root / relative).string()); }

    // Through the first step to the picture list, which holds the three source pictures.
    void DriveToPictures() {
        w.cmdNext->click();
        w.txtSrcFolder->setText(Path("src"));
        w.txtTgtFolder->setText(Path("out"));
        w.cmdNext->click();
        ASSERT_EQ(w.Step(), kStepPictures);
        ASSERT_EQ(w.lvDragDrop->topLevelItemCount(), 3);
    }

    // Through the steps to the ready step: 40 × 30 PNG, the first row turned right.
    void DriveToReady() {
        ASSERT_NO_FATAL_FAILURE(DriveToPictures());
        w.lvDragDrop->setCurrentItem(w.lvDragDrop->topLevelItem(0));
        w.optRotateRight->click();
        EXPECT_EQ(w.lvDragDrop->topLevelItem(0)->text(1), "Rotate Right");
        w.cmdNext->click();
        w.Check1->click();
        w.txtWidth->setText("40");
        w.txtHeight->setText("30");
        w.cboImageType->setCurrentText("PNG (*.png)");
        w.cmdNext->click();
        ASSERT_EQ(w.Step(), kStepReady);
    }

    fs::path root = FreshRoot();
    ScriptedMessageBox messages;
    ScriptedFileDialogs dialogs;
    RecordingDesktop desktop{messages};
    frmMultiEditWiz w{{messages, dialogs, desktop, "", "", {}}, "Resize"};
    std::optional<BatchRunReport> total;
};

TEST_F(BatchWizard, ASmallResizeJobRunsThroughTheStepsAndWritesItsPictures) {
    EXPECT_EQ(w.windowTitle(), "Batch Optimizer");
    w.cmdNext->click();
    w.txtSrcFolder->setText(Path("missing"));
    w.cmdNext->click();
    EXPECT_EQ(w.Step(), kStepFolders);  // the check keeps the user here
    ASSERT_EQ(messages.Texts().size(), 1u);
    w.Back();

    std::ofstream(root / "out/c.png") << "kept";
    std::vector<fs::path> asked;
    w.askOverwrite = [&](const fs::path& existing) {
        asked.push_back(existing);
        return OverwriteAnswer::No;
    };
    DriveToReady();
    w.cmdFinish->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return total.has_value(); }, 20000));
    EXPECT_EQ(total->written, 2);
    // 80 × 60 fitted into 40 × 30 and turned right; the portrait one into the box turned.
    EXPECT_EQ(SizeOf(root / "out/a.png"), (PixelSize{30, 40}));
    EXPECT_EQ(SizeOf(root / "out/b.png"), (PixelSize{30, 40}));
    EXPECT_EQ(asked, std::vector<fs::path>{root / "out/c.png"});
    std::ifstream kept(root / "out/c.png");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), "kept");
    EXPECT_EQ(w.picProgress->value(), 100);
    EXPECT_EQ(desktop.opened, std::vector<std::string>{(root / "out").string() + "/"});
}

// Files and folders dragged from a file manager: a folder gives its pictures, a picture is
// taken as it is, anything else is left out; before the picture step nothing is accepted.
TEST_F(BatchWizard, DroppedFilesAndFoldersJoinThePictureList) {
    fs::create_directories(root / "more");
    WritePng(root / "more/d.png", 10, 10);
    std::ofstream(root / "more/notes.txt") << "not a picture";
    WritePng(root / "f.png", 10, 10);
    std::ofstream(root / "g.txt") << "not a picture";
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Path("more")), QUrl::fromLocalFile(Path("f.png")),
                  QUrl::fromLocalFile(Path("g.txt"))});
    auto dragAccepted = [&] {
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setAccepted(false);
        QCoreApplication::sendEvent(&w, &enter);
        return enter.isAccepted();
    };
    EXPECT_FALSE(dragAccepted());  // still on the first step

    ASSERT_NO_FATAL_FAILURE(DriveToPictures());
    EXPECT_TRUE(dragAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&w, &drop);
    ASSERT_EQ(w.lvDragDrop->topLevelItemCount(), 5);
    EXPECT_TRUE(w.lvDragDrop->topLevelItem(3)->text(0).endsWith("more/d.png"));
    EXPECT_TRUE(w.lvDragDrop->topLevelItem(4)->text(0).endsWith("/f.png"));
}

TEST_F(BatchWizard, CancelStopsTheRunBetweenPictures) {
    std::ofstream(root / "out/b.png") << "kept";
    // Cancel pressed while the second picture's question is open: the third is never written.
    w.askOverwrite = [&](const fs::path&) {
        w.cmdCancel->click();
        return OverwriteAnswer::Yes;
    };
    DriveToReady();
    w.cmdFinish->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return total.has_value(); }, 20000));
    EXPECT_EQ(total->written, 2);
    EXPECT_TRUE(fs::exists(root / "out/a.png"));
    EXPECT_EQ(SizeOf(root / "out/b.png"), (PixelSize{30, 40}));
    EXPECT_FALSE(fs::exists(root / "out/c.png"));
}

TEST_F(BatchWizard, WithThePromptEachSubfolderGoesThroughTheStepsAgain) {
    fs::create_directories(root / "src/sub");
    WritePng(root / "src/sub/d.png", 50, 50);
    w.askOverwrite = [](const fs::path&) { return OverwriteAnswer::No; };
    w.chkSubfoldersDo->click();
    w.chkSubfolderPrompt->click();
    DriveToReady();
    w.cmdFinish->click();
    // After the source folder: back on the folders step, showing the subfolder and its mirror.
    ASSERT_TRUE(QTest::qWaitFor([&] { return w.Step() == kStepFolders && !w.Running(); }, 20000));
    EXPECT_EQ(w.txtSrcFolder->text(), Path("src/sub/"));
    EXPECT_EQ(w.txtTgtFolder->text(), Path("out/sub/"));
    EXPECT_FALSE(w.cmdBack->isEnabled());
    w.cmdNext->click();
    w.cmdNext->click();
    w.cmdNext->click();
    ASSERT_EQ(w.Step(), kStepReady);
    w.cmdFinish->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return total.has_value(); }, 20000));
    EXPECT_EQ(total->written, 4);
    EXPECT_EQ(SizeOf(root / "out/sub/d.png"), (PixelSize{30, 30}));  // 50 × 50 into 40 × 30
}

TEST(BatchWizardDone, AWebJobEndsOnItsCompletionPageBesideItsSlideShow) {
    const fs::path root = FreshRoot();
    WritePng(root / "src/a.png", 80, 60);
    ScriptedMessageBox messages;
    ScriptedFileDialogs dialogs;
    RecordingDesktop desktop{messages};
    frmMultiEditWiz w{{messages, dialogs, desktop, "", "", {}}, "Web"};
    bool finished = false;
    w.onFinished = [&](const BatchRunReport&) { finished = true; };
    w.show();
    w.cmdNext->click();
    w.txtSrcFolder->setText(QString::fromStdString((root / "src").string()));
    w.txtTgtFolder->setText(QString::fromStdString((root / "out").string()));
    for (int i = 0; i < 3; ++i) w.cmdNext->click();
    ASSERT_EQ(w.Step(), kStepReady);
    w.cmdFinish->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished; }, 20000));
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(w.lblDoneHeading->text(), "Web Slide Show Creation Completed Successfully!");
    EXPECT_TRUE(w.lblDoneText->text().contains("Use your favorite FTP program"));
    EXPECT_TRUE(w.btnViewShow->isVisibleTo(&w));
    EXPECT_EQ(w.cmdCancel->text(), "Close");
    EXPECT_TRUE(fs::exists(root / "out/slideshow.htm"));
    fs::remove_all(root);
}

}  // namespace
}  // namespace quorbel
