#include "batch/ui/frmMultiEditWiz.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "batch/BatchFinish.h"
#include "batch/BatchRules.h"
#include "batch/ui/BatchWorker.h"
#include "batch/ui/NumberingDialogs.h"
#include "batch/ui/WizardDone.h"
#include "batch/ui/WizardFolders.h"
#include "batch/ui/WizardPictures.h"
#include "batch/ui/WizardProgress.h"
#include "batch/ui/WizardReady.h"
#include "batch/ui/WizardSize.h"
#include "batch/ui/WizardText.h"
#include "batch/ui/WizardWelcome.h"
#include "output/OverwriteState.h"
#include "output/WarningQuestion.h"
#include "output/ui/frmWarning.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "settings/AppFolders.h"
#include "settings/DataFolder.h"
#include "settings/SettingsStore.h"
#include "share/SlideShow.h"

namespace quorbel {

namespace fs = std::filesystem;
using namespace wizard;

frmMultiEditWiz::frmMultiEditWiz(const BatchWizardServices& services, std::string jobWord, QWidget* parent)
    : QDialog(parent), services_(services), jobWord_(JobPageFor(jobWord).word) {
    setWindowTitle(Q(JobPageFor(jobWord_).caption));
    setAcceptDrops(true);
    lblCaption = Named(new QLabel(Q(JobPageFor(jobWord_).caption)), "lblCaption");
    QFont big = lblCaption->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    lblCaption->setFont(big);

    // The pages in step order, then the resizing frame and the completion page.
    frasteps = Named(new QStackedWidget, "frasteps");
    frasteps->addWidget(welcome_ = new WizardWelcome(jobWord_));
    frasteps->addWidget(folders_ = new WizardFolders(services_.dialogs, jobWord_));
    frasteps->addWidget(pictures_ = new WizardPictures(services_.messages, jobWord_));
    frasteps->addWidget(size_ = new WizardSize(jobWord_));
    frasteps->addWidget(ready_ = new WizardReady(jobWord_));
    frasteps->addWidget(progress_ = new WizardProgress);
    frasteps->addWidget(done_ = new WizardDone);

    btnHelp = Named(new QPushButton("Help"), "btnHelp");
    cmdBack = Named(new QPushButton("< Back"), "cmdBack");
    cmdNext = Named(new QPushButton("Next >"), "cmdNext");
    cmdFinish = Named(new QPushButton("Finish"), "cmdFinish");
    cmdCancel = Named(new QPushButton("Cancel"), "cmdCancel");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnHelp);
    buttons->addStretch(1);
    for (QPushButton* b : {cmdBack, cmdNext, cmdFinish, cmdCancel}) buttons->addWidget(b);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblCaption);
    layout->addWidget(frasteps, 1);
    layout->addLayout(buttons);

    connect(btnHelp, &QPushButton::clicked, this,
            [this] { services_.desktop.OpenHelp(services_.helpFolder, std::string(JobPageFor(jobWord_).helpPage)); });
    connect(cmdBack, &QPushButton::clicked, this, &frmMultiEditWiz::Back);
    connect(cmdNext, &QPushButton::clicked, this, &frmMultiEditWiz::Next);
    connect(cmdFinish, &QPushButton::clicked, this, &frmMultiEditWiz::Finish);
    connect(cmdCancel, &QPushButton::clicked, this, &frmMultiEditWiz::CancelPressed);
    connect(folders_, &WizardFolders::filterChanged, this, [this] {
        pictures_->SetFilter(folders_->Filter(), steps_.Step() >= kStepPictures && folders_->AutoLoad());
    });
    connect(pictures_, &WizardPictures::listChanged, this, [this] {
        if (lblCaption->text() == kGettingImagesText) lblCaption->setText(Q(JobPageFor(jobWord_).caption));
        if (!Running() && frasteps->currentIndex() == steps_.Step()) ShowStep();
    });
    connect(size_, &WizardSize::saveJobPressed, this, &frmMultiEditWiz::SaveJobPressed);
    connect(done_, &WizardDone::viewShowPressed, this, &frmMultiEditWiz::ViewShowPressed);

    worker_ = new BatchWorker(this);
    worker_->ask = [this](const fs::path& existing, const QImage& picture) {
        return askOverwrite ? askOverwrite(existing) : AskOverwriteWithWindow(existing, picture);
    };
    worker_->onProgress = [this](int percent, int done, int total, const std::string& file) {
        progress_->Show(percent, done, total, file);
    };
    worker_->onDone = [this](const BatchRunReport& report) { FolderDone(report); };
    resize(760, 560);
    ShowStep();
}

frmMultiEditWiz::~frmMultiEditWiz() {
    // The worker uses the session, which goes with this window's members: stop it first.
    delete worker_;
}

bool frmMultiEditWiz::Running() const { return worker_ && worker_->Running(); }

BatchJob frmMultiEditWiz::CurrentJob() const {
    BatchJob job;
    job.type = jobWord_;
    job.destination = welcome_->Destination();
    folders_->Fill(job);
    pictures_->Fill(job);
    size_->Fill(job);
    ready_->Fill(job);
    return job;
}

// ---- steps ----

void frmMultiEditWiz::ShowPage(QWidget* page) {
    frasteps->setCurrentWidget(page);
    for (QPushButton* b : {cmdBack, cmdNext, cmdFinish}) b->setEnabled(false);
}

void frmMultiEditWiz::ShowStep() {
    const int step = steps_.Step();
    frasteps->setCurrentIndex(step);
    // The target is chosen by the user unless the job writes into a folder of its own.
    folders_->SetTargetShown(!welcome_->OwnTarget());
    // A subfolder's own pass starts at the folders step and cannot go before it.
    cmdBack->setEnabled(step > (promptingSubfolder_ ? kStepFolders : kStepChoose));
    cmdNext->setEnabled(step < kStepReady && (step != kStepPictures || !pictures_->Empty()));
    cmdFinish->setEnabled(step == kStepReady);
    cmdCancel->setEnabled(true);
}

bool frmMultiEditWiz::LeaveStep(int step) {
    if (step == kStepFolders) {
        const auto source = folders_->Check(welcome_->OwnTarget(), services_.messages);
        if (!source) return false;
        if (pictures_->UseFolder(*source, folders_->AutoLoad())) lblCaption->setText(kGettingImagesText);
        return true;
    }
    if (step == kStepPictures) return !pictures_->Empty();
    if (step == kStepSize) {
        if (!size_->Check(services_.messages)) return false;
        lblCaption->setText(kGettingReadyText);
        return true;
    }
    return true;
}

void frmMultiEditWiz::Next() {
    if (Running() || steps_.Step() >= kStepReady) return;
    steps_.Next([this](int leaving) { return LeaveStep(leaving); });
    if (steps_.Step() == kStepReady) lblCaption->setText(Q(JobPageFor(jobWord_).caption));
    ShowStep();
}

void frmMultiEditWiz::Back() {
    if (Running() || (promptingSubfolder_ && steps_.Step() <= kStepFolders)) return;
    steps_.Back();
    ShowStep();
}

void frmMultiEditWiz::AddDropped(const std::vector<std::string>& paths) { pictures_->AddDropped(paths); }

void frmMultiEditWiz::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && steps_.Step() == kStepPictures && !Running()) event->acceptProposedAction();
}

void frmMultiEditWiz::dropEvent(QDropEvent* event) {
    std::vector<std::string> paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) paths.push_back(PathText(url.toLocalFile()));
    AddDropped(paths);
    event->acceptProposedAction();
}

void frmMultiEditWiz::SaveJobPressed() {
    SaveRequest request;
    request.title = "Save job";
    request.filter = "Batch jobs (*.ini)|*.ini";
    request.initialName = jobWord_ + " job.ini";
    const auto answer = services_.dialogs.SaveFile(request);
    if (!answer) return;
    std::string path = answer->path;
    if (!fs::path(path).has_extension()) path += ".ini";
    if (SaveBatchJob(CurrentJob(), path))
        services_.messages.Show("Failed to save the job to the file: '" + path + "'");
}

void frmMultiEditWiz::ViewShowPressed() {
    OpenPageInBrowser(fs::path(session_ ? session_->TargetRootFolder() : runJob_.target) / kSlideShowPage,
                      WorkingFolder().empty() ? fs::temp_directory_path() : fs::path(WorkingFolder()),
                      services_.desktop, services_.messages);
}

// ---- the run ----

void frmMultiEditWiz::Finish() {
    if (Running() || steps_.Step() != kStepReady) return;
    if (promptingSubfolder_) {
        // The next subfolder with the settings the user just went through.
        promptingSubfolder_ = false;
        runJob_ = CurrentJob();
        folder_->source = runJob_.source;
        folder_->target = runJob_.target;
        folder_->ownRows = true;
        ShowPage(progress_);
        worker_->Start(*session_, runJob_, *folder_, numberingBase_);
        return;
    }
    StartRun();
}

void frmMultiEditWiz::StartRun() {
    runJob_ = CurrentJob();
    numberingBase_ = 0;
    if (runJob_.Renames()) {
        const int64_t highest = HighestExistingNumber(TargetRoot(runJob_), runJob_.newName);
        if (highest > 0) {
            const long long base = askNumbering ? askNumbering(highest) : AskNumbering(this, highest);
            if (base < 0) return;  // Cancel: back to the wizard
            numberingBase_ = base;
        }
    }
    session_ = std::make_unique<BatchSession>(runJob_);
    cancelled_ = false;
    Overwrite() = OverwriteState{};
    Overwrite().BatchActive = true;
    progress_->Start();
    ShowPage(progress_);
    RunNextFolder();
}

void frmMultiEditWiz::RunNextFolder() {
    folder_ = session_->NextFolder();
    if (!folder_) {
        FinishRun();
        return;
    }
    if (!folder_->ownRows && folders_->PromptEachSubfolder()) {
        // The settings steps again for this subfolder; Finish goes on with it.
        std::error_code ec;
        fs::create_directories(folder_->target, ec);
        promptingSubfolder_ = true;
        folders_->SetFolders(folder_->source, folder_->target);
        pictures_->Clear();
        steps_.Restart();
        steps_.Next([](int) { return true; });
        ShowStep();
        return;
    }
    worker_->Start(*session_, runJob_, *folder_, numberingBase_);
}

void frmMultiEditWiz::FolderDone(const BatchRunReport& report) {
    if (report.stopped && !cancelled_) services_.messages.Show(report.stopReason);
    if (report.stopped || cancelled_) {
        FinishRun();
        return;
    }
    RunNextFolder();
}

void frmMultiEditWiz::FinishRun() {
    Overwrite().BatchActive = false;
    JobCompletionServices completion{services_.messages, services_.desktop, services_.programData};
    FinishServices finish{completion, [this](const std::string& text) { progress_->SetStatus(text); },
                          services_.openInEditor};
    const BatchRunReport total = session_->Total();
    FinishBatch(runJob_, session_->Written(), total.outputs, session_->TargetRootFolder(), finish);
    if (!total.failures.empty()) services_.messages.Show(total.FailureText());
    if (onFinished) onFinished(total);
    if (!cancelled_ && done_->ShowFor(runJob_.type)) {
        ShowPage(done_);
        cmdCancel->setText("Close");
        return;
    }
    close();
}

void frmMultiEditWiz::CancelPressed() {
    if (Running()) {
        // Stops between pictures; the pictures written so far stay.
        cancelled_ = true;
        worker_->Cancel();
        return;
    }
    close();
}

void frmMultiEditWiz::closeEvent(QCloseEvent* event) {
    if (Running()) {
        cancelled_ = true;
        worker_->Cancel();
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

OverwriteAnswer frmMultiEditWiz::AskOverwriteWithWindow(const fs::path& existing, const QImage& picture) {
    OverwriteState state;
    const std::string name = existing.filename().string();
    WarningQuestion question(state, services_.messages, OverwriteQuestionText(name), existing.string(), name);
    frmWarning window(question, picture, this);
    // A batch writes under the name it formed: replace or skip only.
    window.optRename->hide();
    window.optSeq->hide();
    window.exec();
    if (!question.Closed()) question.No();
    if (state.YesToAll) return OverwriteAnswer::YesToAll;
    if (state.NoToAll) return OverwriteAnswer::NoToAll;
    return state.WriteThis ? OverwriteAnswer::Yes : OverwriteAnswer::No;
}

QWidget* OpenBatchWizardWindow(QWidget* parent, const BatchWizardServices& services) {
    auto* wizard = new frmMultiEditWiz(services, GetSetting(kAppName, "MultiEdit", "Type", "Resize"), parent);
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    wizard->show();
    return wizard;
}

}  // namespace quorbel
