#pragma once
// frmMultiEditWiz, the batch wizard: navigates between its steps (each a page of its own),
// holds the job they describe and runs it folder by folder on a worker thread.
#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

#include "batch/BatchJob.h"
#include "batch/BatchSession.h"
#include "batch/WizardSteps.h"
#include "batch/ui/BatchWizard.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace quorbel {

class BatchWorker;
class WizardDone;
class WizardFolders;
class WizardPictures;
class WizardProgress;
class WizardReady;
class WizardSize;
class WizardWelcome;

class frmMultiEditWiz : public QDialog {
    Q_OBJECT
public:
    frmMultiEditWiz(const BatchWizardServices& services, std::string jobWord, QWidget* parent = nullptr);
    ~frmMultiEditWiz() override;

    // The job as the controls say now.
    BatchJob CurrentJob() const;
    int Step() const { return steps_.Step(); }
    bool Running() const;

    // Questions that open windows of their own; tests replace them.
    std::function<OverwriteAnswer(const std::filesystem::path& existing)> askOverwrite;
    std::function<long long(long long highest)> askNumbering;  // base, or -1 to cancel
    // Called when the run has finished (after the finishing steps).
    std::function<void(const BatchRunReport& total)> onFinished;

    // The buttons' actions, for the window and for tests.
    void Next();
    void Back();
    void Finish();
    void CancelPressed();
    // Adds dropped files (their own paths) and the pictures of dropped folders.
    void AddDropped(const std::vector<std::string>& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowStep();
    bool LeaveStep(int step);
    void ShowPage(QWidget* page);
    void SaveJobPressed();
    void ViewShowPressed();
    void StartRun();
    void RunNextFolder();
    void FolderDone(const BatchRunReport& report);
    void FinishRun();
    OverwriteAnswer AskOverwriteWithWindow(const std::filesystem::path& existing, const QImage& picture);

    BatchWizardServices services_;
    std::string jobWord_;
    WizardSteps steps_;
    std::unique_ptr<BatchSession> session_;
    std::optional<BatchSession::Folder> folder_;
    BatchJob runJob_;
    long long numberingBase_ = 0;
    BatchWorker* worker_ = nullptr;
    bool cancelled_ = false;
    bool promptingSubfolder_ = false;  // the user goes through the steps for the next subfolder

    QLabel* lblCaption;
    QStackedWidget* frasteps;
    WizardWelcome* welcome_;
    WizardFolders* folders_;
    WizardPictures* pictures_;
    WizardSize* size_;
    WizardReady* ready_;
    WizardProgress* progress_;
    WizardDone* done_;
    QPushButton* btnHelp;
    QPushButton* cmdBack;
    QPushButton* cmdCancel;
    QPushButton* cmdNext;
    QPushButton* cmdFinish;
};

}  // namespace quorbel
