#pragma once
// frmMultiEditWiz, the batch wizard: a thin window over the job model, the step checks, the
// picture list and the batch session. Steps 0 to 4 and the resizing frame are pages of one
// stack; the run goes folder by folder on a worker thread.
#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "batch/BatchJob.h"
#include "batch/BatchSession.h"
#include "batch/FolderScan.h"
#include "batch/PictureList.h"
#include "batch/WizardSteps.h"
#include "batch/ui/BatchWizard.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTreeWidget;

namespace quorbel {

class BatchWorker;

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

    // ---- controls, named as the wizard names them ----
    QLabel* lblCaption;
    QStackedWidget* frasteps;
    QLabel* lblWelcome;
    QComboBox* cboselection;
    QLineEdit* txtSrcFolder;
    QLineEdit* txtTgtFolder;
    QFrame* fraTarget;
    QCheckBox* chkSubfolder;
    QCheckBox* chkSubfoldersDo;
    QCheckBox* chkSubfolderPrompt;
    QCheckBox* chkAutoLoad;
    QPushButton* btnFileFltrAdv;
    QCheckBox* chkRename;
    QLineEdit* txtRenameFiles;
    QTreeWidget* lvDragDrop;
    QPushButton* cmdAdd;
    QPushButton* btnRemove;
    QPushButton* btnRemoveAll;
    QPushButton* btnMoveUp;
    QPushButton* btnMoveDown;
    QRadioButton* optRotatLeft;
    QRadioButton* optRotateRight;
    QRadioButton* OptFlipImage;
    QRadioButton* optFlipHorizontal;
    QRadioButton* Option1;
    QCheckBox* chkRotateAll;
    QComboBox* cboEffect;
    QCheckBox* ChkEffectApplyAll;
    QComboBox* cboPreviewMode;
    QLabel* Canvas;
    QLineEdit* txtTitle;
    QLineEdit* txtCaption;
    QPushButton* btnAddCaption;
    QCheckBox* Check1;
    QComboBox* cboSize;
    QLineEdit* txtWidth;
    QLineEdit* txtHeight;
    QComboBox* cboscale;
    QCheckBox* chkAspectRatio;
    QCheckBox* chkResample;
    QCheckBox* chkBestfit;
    QCheckBox* chkForceSize;
    QCheckBox* chkFitTurned;
    QCheckBox* chkRemoveGps;
    QCheckBox* chkRemoveMetadata;
    QCheckBox* chkConvertSrgb;
    QComboBox* cboImageType;
    QComboBox* cboQuality;
    QLineEdit* txtJPEGVal;
    QPushButton* btnSaveJob;
    QLabel* lblReady;
    QRadioButton* optOpenWinExplr;
    QRadioButton* optOpenQorbix;
    QRadioButton* optOpenNo;
    // The resizing frame.
    QLabel* lblPleaseWait;
    QProgressBar* picProgress;
    QLabel* lblTotal;
    QLabel* LblCurrentCount;
    QLineEdit* txtFileName;
    // The completion page of the "Web" and "Email" jobs.
    QLabel* lblDoneHeading;
    QLabel* lblDoneText;
    QPushButton* btnViewShow;
    QPushButton* btnHelp;
    QPushButton* cmdBack;
    QPushButton* cmdCancel;
    QPushButton* cmdNext;
    QPushButton* cmdFinish;

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
    QWidget* BuildWelcome();
    QWidget* BuildFolders();
    QWidget* BuildPictures();
    QWidget* BuildSize();
    QWidget* BuildReady();
    QWidget* BuildResizing();
    QWidget* BuildDone();
    // Shows the job's completion page; false when the job has none.
    bool ShowDonePage();
    bool OwnTarget() const;  // the job writes into a folder of the program's own
    void ShowStep();
    bool LeaveStep(int step);
    void FillListFromFolder();
    void RefreshList();
    void RowSelected();
    void ShowPreview();
    void RotationChosen(const char* word);
    void EffectChosen();
    void PresetChosen();
    void AddPressed();
    void FileFilterPressed();
    void SaveJobPressed();
    void StartRun();
    void RunNextFolder();
    void FolderDone(const BatchRunReport& report);
    void FinishRun();
    OverwriteAnswer AskOverwriteWithWindow(const std::filesystem::path& existing);

    BatchWizardServices services_;
    std::string jobWord_;
    WizardSteps steps_;
    PictureList list_;
    PictureFilter filter_;
    std::string listFolder_;  // the folder the list was filled from
    std::unique_ptr<BatchSession> session_;
    std::optional<BatchSession::Folder> folder_;
    BatchJob runJob_;
    long long numberingBase_ = 0;
    BatchWorker* worker_ = nullptr;
    bool cancelled_ = false;
    bool promptingSubfolder_ = false;  // the user goes through the steps for the next subfolder
    bool closeWhenDone_ = false;
    std::thread previewThread_;
    int previewToken_ = 0;
};

}  // namespace quorbel
