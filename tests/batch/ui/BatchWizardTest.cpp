// The wizard's wiring: its controls reach the job and back, the steps navigate, the run starts
// and ends, and its background work never holds the window. Pixel results are tested below
// the window.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QRadioButton>
#include <QThreadPool>
#include <QTreeWidget>
#include <QUrl>
#include <memory>
#include <optional>

#include "FreshSettings.h"
#include "Pictures.h"
#include "QtUi.h"
#include "ScriptedDesktop.h"
#include "batch/ui/Thumbnails.h"
#include "batch/ui/frmMultiEditWiz.h"
#include "output/Codecs.h"
#include "platform/FileDialogs.h"

namespace quorbel::test {
namespace {

class BatchWizard : public FreshSettings {
protected:
    void WritePng(const char* name, int w, int h) {
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(EncodePng(Flat(w, h, Grey(128)), bytes));
        WriteBytes(root_ / name, bytes);
    }
    // Three pictures in src, an empty out, and the wizard for the job, every overwrite refused.
    void Open(const char* job) {
        WritePng("src/a.png", 80, 60);
        WritePng("src/b.png", 60, 80);
        WritePng("src/c.png", 20, 20);
        fs::create_directories(root_ / "out");
        w = std::make_unique<frmMultiEditWiz>(BatchWizardServices{messages, dialogs, desktop, "", "", {}}, job);
        w->onFinished = [this](const BatchRunReport& report) { total = report; };
        w->askOverwrite = [this](const fs::path& existing) {
            asked.push_back(existing);
            return OverwriteAnswer::No;
        };
        w->show();
    }
    QString Path(const char* relative) const { return QString::fromStdString((root_ / relative).string()); }
    template <class T = QWidget>
    T* Get(const char* name) { return Child<T>(*w, name); }
    QTreeWidget* List() { return Get<QTreeWidget>("lvDragDrop"); }
    void Select(int row) { List()->setCurrentItem(List()->topLevelItem(row)); }
    bool Rows(int count) { return WaitUntil([&] { return List()->topLevelItemCount() == count; }); }

    // Through the folders step to the picture list, filled from the source folder.
    void DriveToPictures() {
        Click(*w, "cmdNext");
        Type(*w, "txtSrcFolder", Path("src"));
        Type(*w, "txtTgtFolder", Path("out"));
        Click(*w, "cmdNext");
        ASSERT_EQ(w->Step(), kStepPictures);
        ASSERT_TRUE(Rows(3));
    }
    // On to the ready step: a 40 × 30 PNG job, the first row turned right.
    void DriveToReady() {
        ASSERT_NO_FATAL_FAILURE(DriveToPictures());
        Select(0);
        Get<QRadioButton>("optRotateRight")->click();
        Click(*w, "cmdNext");
        Get<QCheckBox>("Check1")->click();
        Type(*w, "txtWidth", "40");
        Type(*w, "txtHeight", "30");
        Get<QComboBox>("cboImageType")->setCurrentText("PNG (*.png)");
        Click(*w, "cmdNext");
        ASSERT_EQ(w->Step(), kStepReady);
    }
    void Run() {
        Click(*w, "cmdFinish");
        ASSERT_TRUE(WaitUntil([&] { return total.has_value(); }));
    }

    ScriptedMessageBox messages;
    ScriptedFileDialogs dialogs;
    ScriptedDesktop desktop{messages};
    std::unique_ptr<frmMultiEditWiz> w;
    std::optional<BatchRunReport> total;
    std::vector<fs::path> asked;
};

TEST_F(BatchWizard, TheStepsReachTheJobAndTheRunWritesIt) {
    Open("Resize");
    EXPECT_EQ(w->windowTitle(), "Batch Optimizer");
    Click(*w, "cmdNext");
    Type(*w, "txtSrcFolder", Path("missing"));
    Click(*w, "cmdNext");
    EXPECT_EQ(w->Step(), kStepFolders);  // the check keeps the user here
    EXPECT_EQ(messages.Texts().size(), 1u);
    Click(*w, "cmdBack");
    WriteText(root_ / "out/c.png", "kept");
    ASSERT_NO_FATAL_FAILURE(DriveToReady());
    const BatchJob job = w->CurrentJob();
    EXPECT_EQ(job.pictures.at(0).rotation, "Rotate Right");
    EXPECT_EQ(job.pictures.at(1).rotation, "None");
    EXPECT_EQ(std::tie(job.width, job.height, job.preset, job.outputType),
              std::make_tuple(40.0, 30.0, std::string("Custom"), OutputType::Png));
    ASSERT_NO_FATAL_FAILURE(Run());
    EXPECT_EQ(total->written, 2);
    EXPECT_TRUE(fs::exists(root_ / "out/a.png") && fs::exists(root_ / "out/b.png"));
    EXPECT_EQ(asked, std::vector<fs::path>{root_ / "out/c.png"});
    EXPECT_EQ(ReadText(root_ / "out/c.png"), "kept");
    EXPECT_EQ(Get<QProgressBar>("picProgress")->value(), 100);
    EXPECT_EQ(desktop.opened, std::vector<std::string>{(root_ / "out").string() + "/"});
}

TEST_F(BatchWizard, ARowsOwnRotationShowsWhenItIsSelected) {
    Open("Resize");
    ASSERT_NO_FATAL_FAILURE(DriveToPictures());
    const struct { int row; const char* option; const char* shown; } cases[] = {
        {0, "optRotatLeft", "Rotate Left"}, {1, "OptFlipImage", "Flip"}, {2, "Option1", "None"}};
    for (const auto& c : cases) {
        Select(c.row);
        Get<QRadioButton>(c.option)->click();
        EXPECT_EQ(List()->topLevelItem(c.row)->text(1), c.shown);
    }
    for (const auto& c : cases) {
        Select(c.row);
        EXPECT_TRUE(Get<QRadioButton>(c.option)->isChecked()) << c.option;
    }
}

// Dragged from a file manager: a folder gives its pictures, a picture is taken as it is,
// anything else is left out; before the picture step nothing is accepted.
TEST_F(BatchWizard, DroppedFilesAndFoldersJoinThePictureList) {
    Open("Resize");
    WritePng("more/d.png", 10, 10);
    WritePng("f.png", 10, 10);
    WriteText(root_ / "g.txt", "not a picture");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Path("more")), QUrl::fromLocalFile(Path("f.png")),
                  QUrl::fromLocalFile(Path("g.txt"))});
    auto dragAccepted = [&] {
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setAccepted(false);
        QCoreApplication::sendEvent(w.get(), &enter);
        return enter.isAccepted();
    };
    EXPECT_FALSE(dragAccepted());  // still on the first step
    ASSERT_NO_FATAL_FAILURE(DriveToPictures());
    EXPECT_TRUE(dragAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(w.get(), &drop);
    ASSERT_TRUE(Rows(5));
    EXPECT_TRUE(List()->topLevelItem(3)->text(0).endsWith("more/d.png"));
    EXPECT_TRUE(List()->topLevelItem(4)->text(0).endsWith("/f.png"));
}

TEST_F(BatchWizard, CancelStopsTheRunBetweenPictures) {
    Open("Resize");
    WriteText(root_ / "out/b.png", "kept");
    // Cancel pressed while the second picture's question is open: the third is never written.
    w->askOverwrite = [&](const fs::path&) {
        Click(*w, "cmdCancel");
        return OverwriteAnswer::Yes;
    };
    ASSERT_NO_FATAL_FAILURE(DriveToReady());
    ASSERT_NO_FATAL_FAILURE(Run());
    EXPECT_EQ(total->written, 2);
    EXPECT_NE(ReadText(root_ / "out/b.png"), "kept");
    EXPECT_FALSE(fs::exists(root_ / "out/c.png"));
}

TEST_F(BatchWizard, WithThePromptEachSubfolderGoesThroughTheStepsAgain) {
    Open("Resize");
    WritePng("src/sub/d.png", 50, 50);
    Get<QCheckBox>("chkSubfoldersDo")->click();
    Get<QCheckBox>("chkSubfolderPrompt")->click();
    ASSERT_NO_FATAL_FAILURE(DriveToReady());
    Click(*w, "cmdFinish");
    // After the source folder: back on the folders step, showing the subfolder and its mirror.
    ASSERT_TRUE(WaitUntil([&] { return w->Step() == kStepFolders && !w->Running(); }));
    EXPECT_EQ(Get<QLineEdit>("txtSrcFolder")->text(), Path("src/sub/"));
    EXPECT_EQ(Get<QLineEdit>("txtTgtFolder")->text(), Path("out/sub/"));
    EXPECT_FALSE(Get("cmdBack")->isEnabled());
    Click(*w, "cmdNext");
    ASSERT_TRUE(Rows(1));
    Click(*w, "cmdNext");
    Click(*w, "cmdNext");
    ASSERT_NO_FATAL_FAILURE(Run());
    EXPECT_EQ(total->written, 4);
    EXPECT_TRUE(fs::exists(root_ / "out/sub/d.png"));
}

TEST_F(BatchWizard, AWebJobEndsOnItsCompletionPageBesideItsSlideShow) {
    Open("Web");
    ASSERT_NO_FATAL_FAILURE(DriveToPictures());
    Click(*w, "cmdNext");
    Click(*w, "cmdNext");
    ASSERT_NO_FATAL_FAILURE(Run());
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(Get<QLabel>("lblDoneHeading")->text(), "Web Slide Show Creation Completed Successfully!");
    EXPECT_TRUE(Get("btnViewShow")->isVisibleTo(w.get()));
    EXPECT_EQ(Get<QPushButton>("cmdCancel")->text(), "Close");
    EXPECT_TRUE(fs::exists(root_ / "out/slideshow.htm"));
}

// The preview decodes on the thread pool: a newer request wins over a slower older one, and
// closing the window neither waits for a decode nor meets its late result.
TEST_F(BatchWizard, PreviewsAreDecodedAwayFromTheWindow) {
    WritePng("big/wide.png", 6000, 4500);
    QElapsedTimer clock;
    clock.start();
    ASSERT_FALSE(LoadThumbnail(root_ / "big/wide.png", 220).isNull());
    const qint64 decodeMs = clock.elapsed();
    Open("Resize");
    ASSERT_NO_FATAL_FAILURE(DriveToPictures());
    w->AddDropped({(root_ / "big/wide.png").string()});
    ASSERT_TRUE(Rows(4));
    auto* canvas = Get<QLabel>("Canvas");
    Select(3);  // the wide one, slow
    Select(1);  // the tall one
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(20000));
    ASSERT_TRUE(WaitUntil([&] { return !canvas->pixmap().isNull(); }));
    QTest::qWait(50);
    EXPECT_GT(canvas->pixmap().height(), canvas->pixmap().width());

    Select(3);
    clock.restart();
    w.reset();
    EXPECT_LT(clock.elapsed(), decodeMs / 2);
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(20000));
    QTest::qWait(50);  // the late result arrives for a window that is gone
}

}  // namespace
}  // namespace quorbel::test
