#include "batch/ui/frmMultiEditWiz.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "batch/BatchFinish.h"
#include "batch/ui/BatchWorker.h"
#include "batch/ui/FrmMultiEditWizAdd.h"
#include "batch/ui/NumberingDialogs.h"
#include "batch/ui/Thumbnails.h"
#include "share/Mail.h"
#include "share/SlideShow.h"
#include "imaging/ui/DibImage.h"
#include "output/OverwriteState.h"
#include "output/WarningQuestion.h"
#include "output/ui/frmWarning.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "settings/AppFolders.h"
#include "settings/DataFolder.h"
#include "sizes/JpegQuality.h"
#include "core/text/NumericText.h"
#include "settings/SettingsStore.h"
#include "sizes/SizePresets.h"
#include "core/text/TextCase.h"
#include "sizes/Units.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

constexpr int kResizingPage = 5;
constexpr int kDonePage = 6;
constexpr int kPreviewBox = 220;
constexpr const char* kQualityNames[] = {"Highest Quality", "Higher Quality", "Medium Quality", "Lower Quality",
                                         "Lowest Quality"};

QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
std::string S(const QString& text) { return text.toStdString(); }

// Paths typed or dropped keep the host's bytes.
std::string PathText(const QString& text) { return QFile::encodeName(text).toStdString(); }
QString PathQ(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

}  // namespace

frmMultiEditWiz::frmMultiEditWiz(const BatchWizardServices& services, std::string jobWord, QWidget* parent)
    : QDialog(parent), services_(services), jobWord_(JobPageFor(jobWord).word) {
    setWindowTitle(Q(JobPageFor(jobWord_).caption));
    setAcceptDrops(true);
    lblCaption = new QLabel(Q(JobPageFor(jobWord_).caption));
    QFont big = lblCaption->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    lblCaption->setFont(big);

    frasteps = new QStackedWidget;
    frasteps->addWidget(BuildWelcome());
    frasteps->addWidget(BuildFolders());
    frasteps->addWidget(BuildPictures());
    frasteps->addWidget(BuildSize());
    frasteps->addWidget(BuildReady());
    frasteps->addWidget(BuildResizing());
    frasteps->addWidget(BuildDone());

    btnHelp = new QPushButton("Help");
    cmdBack = new QPushButton("< Back");
    cmdNext = new QPushButton("Next >");
    cmdFinish = new QPushButton("Finish");
    cmdCancel = new QPushButton("Cancel");
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

    worker_ = new BatchWorker(this);
    worker_->ask = [this](const fs::path& existing) {
        return askOverwrite ? askOverwrite(existing) : AskOverwriteWithWindow(existing);
    };
    worker_->onProgress = [this](int percent, int done, int total, const std::string& file) {
        picProgress->setValue(percent);
        LblCurrentCount->setText(QString::number(done));
        lblTotal->setText(QString::number(total));
        txtFileName->setText(PathQ(file));
    };
    worker_->onDone = [this](const BatchRunReport& report) { FolderDone(report); };
    resize(760, 560);
    ShowStep();
}

frmMultiEditWiz::~frmMultiEditWiz() {
    // The worker uses the session, which goes with this window's members: stop it first.
    delete worker_;
    if (previewThread_.joinable()) previewThread_.join();
}

bool frmMultiEditWiz::OwnTarget() const {
    return jobWord_ == "Email" || cboselection->currentText() == Q(kDestinationDisc);
}

bool frmMultiEditWiz::Running() const { return worker_ && worker_->Running(); }

// ---- the pages ----

QWidget* frmMultiEditWiz::BuildWelcome() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    lblWelcome = new QLabel(
        Q("Welcome to the " + std::string(JobPageFor(jobWord_).caption) +
          ". This wizard takes a folder of pictures, lets you choose their order, rotation and effect, their size "
          "and file type, and writes them in one go."));
    lblWelcome->setWordWrap(true);
    cboselection = new QComboBox;
    cboselection->addItems({Q(kDestinationFolder), Q(kDestinationDisc)});
    if (jobWord_ == "CD") cboselection->setCurrentIndex(1);
    cboselection->setVisible(jobWord_ == "CD");
    layout->addWidget(lblWelcome);
    layout->addWidget(cboselection);
    layout->addStretch(1);
    return page;
}

QWidget* frmMultiEditWiz::BuildFolders() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto folderRow = [this](QLineEdit*& edit, const char* label, const std::string& value, QLayout* into) {
        into->addWidget(new QLabel(label));
        auto* row = new QHBoxLayout;
        edit = new QLineEdit(PathQ(value));
        auto* browse = new QPushButton("Browse...");
        row->addWidget(edit, 1);
        row->addWidget(browse);
        static_cast<QVBoxLayout*>(into)->addLayout(row);
        QLineEdit* target = edit;
        connect(browse, &QPushButton::clicked, this, [this, target, label] {
            if (auto folder = services_.dialogs.PickFolder(label, PathText(target->text())))
                target->setText(PathQ(*folder));
        });
    };
    folderRow(txtSrcFolder, "I would like to use the pictures from the following folder",
              GetSetting(kAppName, "MultiEdit", "Source"), layout);
    fraTarget = new QFrame;
    auto* targetLayout = new QVBoxLayout(fraTarget);
    targetLayout->setContentsMargins(0, 0, 0, 0);
    folderRow(txtTgtFolder, "I would like to save them to the following folder",
              GetSetting(kAppName, "MultiEdit", "Target"), targetLayout);
    layout->addWidget(fraTarget);
    chkSubfolder = new QCheckBox("Create a subfolder with this name");
    chkSubfoldersDo = new QCheckBox("Subfolders");
    chkSubfolderPrompt = new QCheckBox("Prompt for optimizing settings on each subfolder");
    chkAutoLoad = new QCheckBox("Automatically load image list. (uncheck for Advanced image selection)");
    chkAutoLoad->setChecked(true);
    btnFileFltrAdv = new QPushButton("Advanced File Filter");
    chkRename = new QCheckBox("Rename");
    txtRenameFiles = new QLineEdit(Q(GetSetting(kAppName, "Settings", "Rename Name")));
    auto* rename = new QHBoxLayout;
    rename->addWidget(chkRename);
    rename->addWidget(new QLabel("New Name:"));
    rename->addWidget(txtRenameFiles, 1);
    layout->addLayout(rename);
    layout->addWidget(chkSubfolder);
    layout->addWidget(chkSubfoldersDo);
    layout->addWidget(chkSubfolderPrompt);
    layout->addWidget(chkAutoLoad);
    auto* filterRow = new QHBoxLayout;
    filterRow->addWidget(btnFileFltrAdv);
    filterRow->addStretch(1);
    layout->addLayout(filterRow);
    layout->addStretch(1);
    chkSubfolderPrompt->setEnabled(false);
    connect(chkSubfoldersDo, &QCheckBox::toggled, chkSubfolderPrompt, &QWidget::setEnabled);
    connect(btnFileFltrAdv, &QPushButton::clicked, this, &frmMultiEditWiz::FileFilterPressed);
    return page;
}

QWidget* frmMultiEditWiz::BuildPictures() {
    auto* page = new QWidget;
    lvDragDrop = new QTreeWidget;
    lvDragDrop->setHeaderLabels({"Images added:", "Rotation:", "Effect:"});
    lvDragDrop->setRootIsDecorated(false);
    lvDragDrop->header()->setStretchLastSection(false);
    lvDragDrop->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lvDragDrop->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    lvDragDrop->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    lvDragDrop->setAcceptDrops(false);  // drops go to the window
    cmdAdd = new QPushButton("Add");
    btnRemove = new QPushButton("Remove");
    btnRemoveAll = new QPushButton("Remove All");
    btnMoveUp = new QPushButton("Move Up");
    btnMoveDown = new QPushButton("Move Down");
    auto* listButtons = new QHBoxLayout;
    for (QPushButton* b : {cmdAdd, btnRemove, btnRemoveAll, btnMoveUp, btnMoveDown}) listButtons->addWidget(b);

    optRotatLeft = new QRadioButton("Rotate Left");
    optRotateRight = new QRadioButton("Rotate Right");
    OptFlipImage = new QRadioButton("Flip Image");
    optFlipHorizontal = new QRadioButton("Flip Horizontal");
    Option1 = new QRadioButton("None");
    Option1->setChecked(true);
    chkRotateAll = new QCheckBox("Rotate All Images");
    auto* rotation = new QGroupBox("Rotation");
    auto* rotationLayout = new QVBoxLayout(rotation);
    auto* group = new QButtonGroup(this);
    for (QRadioButton* b : {optRotatLeft, optRotateRight, OptFlipImage, optFlipHorizontal, Option1}) {
        group->addButton(b);
        rotationLayout->addWidget(b);
    }
    rotationLayout->addWidget(chkRotateAll);

    cboEffect = new QComboBox;
    for (std::string_view e : kEffectWords) cboEffect->addItem(Q(e));
    // Editable only so that a "Pixalate" row can show as "Pixelate"; the user picks from the list.
    cboEffect->setEditable(true);
    cboEffect->lineEdit()->setReadOnly(true);
    ChkEffectApplyAll = new QCheckBox("Apply to all images");
    cboPreviewMode = new QComboBox;
    for (std::string_view m : kPreviewModes) cboPreviewMode->addItem(Q(m));
    Canvas = new QLabel;
    Canvas->setFixedSize(kPreviewBox, kPreviewBox);
    Canvas->setAlignment(Qt::AlignCenter);
    Canvas->setFrameShape(QFrame::StyledPanel);
    txtTitle = new QLineEdit;
    txtCaption = new QLineEdit;
    btnAddCaption = new QPushButton("Add Caption");

    auto* side = new QVBoxLayout;
    side->addWidget(Canvas);
    side->addWidget(cboPreviewMode);
    side->addWidget(rotation);
    side->addWidget(new QLabel("Effect:"));
    side->addWidget(cboEffect);
    side->addWidget(ChkEffectApplyAll);
    side->addStretch(1);
    auto* captions = new QHBoxLayout;
    captions->addWidget(new QLabel("Title:"));
    captions->addWidget(txtTitle);
    captions->addWidget(new QLabel("Caption:"));
    captions->addWidget(txtCaption, 1);
    captions->addWidget(btnAddCaption);
    auto* left = new QVBoxLayout;
    left->addWidget(lvDragDrop, 1);
    left->addLayout(listButtons);
    left->addLayout(captions);
    const bool slideShow = jobWord_ == "Web" || jobWord_ == "CD";
    for (QWidget* w : {static_cast<QWidget*>(txtTitle), static_cast<QWidget*>(txtCaption),
                       static_cast<QWidget*>(btnAddCaption)})
        w->setEnabled(slideShow);
    auto* layout = new QHBoxLayout(page);
    layout->addLayout(left, 1);
    layout->addLayout(side);

    connect(lvDragDrop, &QTreeWidget::itemSelectionChanged, this, &frmMultiEditWiz::RowSelected);
    connect(cmdAdd, &QPushButton::clicked, this, &frmMultiEditWiz::AddPressed);
    connect(btnRemove, &QPushButton::clicked, this, [this] {
        if (list_.RemoveSelected(services_.messages)) RefreshList();
    });
    connect(btnRemoveAll, &QPushButton::clicked, this, [this] {
        if (list_.RemoveAll(services_.messages)) RefreshList();
    });
    connect(btnMoveUp, &QPushButton::clicked, this, [this] {
        list_.MoveUp();
        RefreshList();
    });
    connect(btnMoveDown, &QPushButton::clicked, this, [this] {
        list_.MoveDown();
        RefreshList();
    });
    connect(optRotatLeft, &QRadioButton::clicked, this, [this] { RotationChosen("Rotate Left"); });
    connect(optRotateRight, &QRadioButton::clicked, this, [this] { RotationChosen("Rotate Right"); });
    connect(OptFlipImage, &QRadioButton::clicked, this, [this] { RotationChosen("Flip"); });
    connect(optFlipHorizontal, &QRadioButton::clicked, this, [this] { RotationChosen("Horizontal"); });
    connect(Option1, &QRadioButton::clicked, this, [this] { RotationChosen("None"); });
    connect(cboEffect, &QComboBox::activated, this, &frmMultiEditWiz::EffectChosen);
    connect(cboPreviewMode, &QComboBox::currentIndexChanged, this, &frmMultiEditWiz::ShowPreview);
    connect(btnAddCaption, &QPushButton::clicked, this, [this] {
        // The title and caption travel together in the row's caption, the title first.
        const QString title = txtTitle->text(), caption = txtCaption->text();
        list_.SetCaption(S(title.isEmpty() ? caption : title + "\n" + caption));
    });
    return page;
}

QWidget* frmMultiEditWiz::BuildSize() {
    auto* page = new QWidget;
    Check1 = new QCheckBox("I want to set a custom size");
    cboSize = new QComboBox;
    EnsurePresets();
    for (const std::string& key : PresetKeys()) cboSize->addItem(Q(key));
    if (cboSize->findText("Original Size", Qt::MatchFixedString) < 0) cboSize->insertItem(0, "Original Size");
    cboSize->setCurrentIndex(cboSize->findText("Original Size", Qt::MatchFixedString));
    txtWidth = new QLineEdit("640");
    txtHeight = new QLineEdit("480");
    cboscale = new QComboBox;
    for (std::string_view u : kUnitNames) cboscale->addItem(Q(u));
    cboscale->setCurrentText("Pixels");
    chkAspectRatio = new QCheckBox("Keep aspect ratio");
    chkResample = new QCheckBox("Resample");
    chkBestfit = new QCheckBox("Best Fit");
    chkForceSize = new QCheckBox("Force resize if source image size is smaller.");
    chkFitTurned = new QCheckBox("Fit portrait pictures into the box turned");
    for (QCheckBox* c : {chkAspectRatio, chkResample, chkBestfit, chkFitTurned}) c->setChecked(true);
    chkRemoveGps = new QCheckBox("Remove location data (GPS)");
    chkRemoveMetadata = new QCheckBox("Remove all metadata");
    chkConvertSrgb = new QCheckBox("Convert colours to sRGB");
    BatchJob sharing;
    sharing.type = jobWord_;
    SetSharingDefaults(sharing);
    chkRemoveGps->setChecked(sharing.removeGps);
    chkRemoveMetadata->setChecked(sharing.removeMetadata);
    chkConvertSrgb->setChecked(sharing.convertToSrgb);
    cboImageType = new QComboBox;
    for (std::string_view t : kOutputTypeTexts) cboImageType->addItem(Q(t));
    // Few programs open HEIC pictures, so keeping the type writes them as JPEG; say so.
    auto* keepNote = new QLabel("HEIC and HEIF pictures are written as JPEG (*.jpg), which every program opens.");
    keepNote->setWordWrap(true);
    connect(cboImageType, &QComboBox::currentIndexChanged, keepNote,
            [keepNote](int index) { keepNote->setVisible(index == 0); });
    cboQuality = new QComboBox;
    for (const char* q : kQualityNames) cboQuality->addItem(q);
    txtJPEGVal = new QLineEdit("95");
    btnSaveJob = new QPushButton("Save job...");

    auto* form = new QFormLayout;
    form->addRow(Check1);
    form->addRow("Size:", cboSize);
    form->addRow("Width:", txtWidth);
    form->addRow("Height:", txtHeight);
    form->addRow("Unit:", cboscale);
    auto* boxes = new QGridLayout;
    boxes->addWidget(chkAspectRatio, 0, 0);
    boxes->addWidget(chkResample, 0, 1);
    boxes->addWidget(chkBestfit, 1, 0);
    boxes->addWidget(chkForceSize, 1, 1);
    boxes->addWidget(chkFitTurned, 2, 0, 1, 2);
    boxes->addWidget(chkRemoveGps, 3, 0);
    boxes->addWidget(chkRemoveMetadata, 3, 1);
    boxes->addWidget(chkConvertSrgb, 4, 0);
    form->addRow(boxes);
    form->addRow("Image type:", cboImageType);
    form->addRow(keepNote);
    form->addRow("Quick select:", cboQuality);
    form->addRow("JPEG (*.jpg) Quality", txtJPEGVal);
    auto* save = new QHBoxLayout;
    save->addStretch(1);
    save->addWidget(btnSaveJob);
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addStretch(1);
    layout->addLayout(save);

    connect(cboSize, &QComboBox::activated, this, &frmMultiEditWiz::PresetChosen);
    connect(Check1, &QCheckBox::toggled, this, [this](bool on) {
        if (on) cboSize->setCurrentText("Custom");
        PresetChosen();
    });
    connect(cboQuality, &QComboBox::activated, this, [this] {
        txtJPEGVal->setText(QString::number(JpegQualityFromName(S(cboQuality->currentText()))));
    });
    connect(btnSaveJob, &QPushButton::clicked, this, &frmMultiEditWiz::SaveJobPressed);
    PresetChosen();
    return page;
}

QWidget* frmMultiEditWiz::BuildReady() {
    auto* page = new QWidget;
    lblReady = new QLabel(Q(JobPageFor(jobWord_).ready));
    QFont bold = lblReady->font();
    bold.setBold(true);
    lblReady->setFont(bold);
    optOpenWinExplr = new QRadioButton(Q(kAfterRunTexts[0]));
    optOpenQorbix = new QRadioButton(Q(kAfterRunTexts[1]));
    optOpenNo = new QRadioButton(Q(kAfterRunTexts[2]));
    optOpenWinExplr->setChecked(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(lblReady);
    layout->addSpacing(12);
    layout->addWidget(new QLabel("When the pictures are done:"));
    for (QRadioButton* b : {optOpenWinExplr, optOpenQorbix, optOpenNo}) layout->addWidget(b);
    layout->addStretch(1);
    return page;
}

QWidget* frmMultiEditWiz::BuildResizing() {
    auto* page = new QWidget;
    lblPleaseWait = new QLabel("Please Wait...");
    QFont bold = lblPleaseWait->font();
    bold.setBold(true);
    lblPleaseWait->setFont(bold);
    lblPleaseWait->setWordWrap(true);
    picProgress = new QProgressBar;
    picProgress->setRange(0, 100);
    picProgress->setFormat("%p%");
    lblTotal = new QLabel("0");
    LblCurrentCount = new QLabel("0");
    txtFileName = new QLineEdit;
    txtFileName->setReadOnly(true);
    auto* counts = new QFormLayout;
    counts->addRow("Pictures done:", LblCurrentCount);
    counts->addRow("Total pictures:", lblTotal);
    counts->addRow("Picture:", txtFileName);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(lblPleaseWait);
    layout->addWidget(picProgress);
    layout->addLayout(counts);
    layout->addStretch(1);
    return page;
}

QWidget* frmMultiEditWiz::BuildDone() {
    auto* page = new QWidget;
    lblDoneHeading = new QLabel;
    QFont bold = lblDoneHeading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    lblDoneHeading->setFont(bold);
    lblDoneHeading->setWordWrap(true);
    lblDoneText = new QLabel;
    lblDoneText->setWordWrap(true);
    btnViewShow = new QPushButton("View the slide show");
    connect(btnViewShow, &QPushButton::clicked, this, [this] {
        OpenPageInBrowser(fs::path(session_ ? session_->TargetRootFolder() : runJob_.target) / kSlideShowPage,
                          WorkingFolder().empty() ? fs::temp_directory_path() : fs::path(WorkingFolder()),
                          services_.desktop, services_.messages);
    });
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(lblDoneHeading);
    layout->addWidget(lblDoneText);
    layout->addWidget(btnViewShow, 0, Qt::AlignLeft);
    layout->addStretch(1);
    return page;
}

bool frmMultiEditWiz::ShowDonePage() {
    std::string_view heading;
    std::string text;
    const auto join = [&text](const auto& lines) {
        for (std::string_view line : lines) text.append(line).append("\n\n");
    };
    if (EqualsIgnoreCase(runJob_.type, "Web")) {
        heading = kWebDoneHeading;
        join(kWebDoneLines);
    } else if (EqualsIgnoreCase(runJob_.type, "Email")) {
        heading = kEmailDoneHeading;
        join(kEmailDoneLines);
    } else {
        return false;
    }
    lblDoneHeading->setText(Q(std::string(heading)));
    lblDoneText->setText(Q(text));
    btnViewShow->setVisible(EqualsIgnoreCase(runJob_.type, "Web"));
    frasteps->setCurrentIndex(kDonePage);
    for (QPushButton* b : {cmdBack, cmdNext, cmdFinish}) b->setEnabled(false);
    cmdCancel->setText("Close");
    return true;
}

// ---- steps ----

void frmMultiEditWiz::ShowStep() {
    const int step = steps_.Step();
    frasteps->setCurrentIndex(step);
    // The target is chosen by the user unless the job writes into a folder of its own.
    fraTarget->setVisible(!OwnTarget());
    // A subfolder's own pass starts at the folders step and cannot go before it.
    cmdBack->setEnabled(step > (promptingSubfolder_ ? kStepFolders : kStepChoose));
    cmdNext->setEnabled(step < kStepReady && (step != kStepPictures || !list_.Rows().empty()));
    cmdFinish->setEnabled(step == kStepReady);
    cmdCancel->setEnabled(true);
}

bool frmMultiEditWiz::LeaveStep(int step) {
    if (step == kStepFolders) {
        const bool ownTarget = OwnTarget();
        if (ownTarget) {
            // The pictures of a mail or a disc are gathered in a folder of the program's own.
            const std::string folder = GetAppDataFolder() + "/" + jobWord_ + "/";
            std::error_code ec;
            fs::create_directories(folder, ec);
            txtTgtFolder->setText(PathQ(folder));
        }
        FolderStepValues v{PathText(txtSrcFolder->text()), PathText(txtTgtFolder->text()), chkRename->isChecked(),
                           S(txtRenameFiles->text()), !ownTarget};
        if (!CheckFolderStep(v, services_.messages)) return false;
        txtSrcFolder->setText(PathQ(v.source));
        txtTgtFolder->setText(PathQ(v.target));
        lblCaption->setText(kGettingImagesText);
        if (chkAutoLoad->isChecked() && (list_.Rows().empty() || listFolder_ != v.source)) FillListFromFolder();
        listFolder_ = v.source;
        lblCaption->setText(Q(JobPageFor(jobWord_).caption));
        return true;
    }
    if (step == kStepPictures) return !list_.Rows().empty();
    if (step == kStepSize) {
        const SizeStepValues v{S(txtWidth->text()), S(txtHeight->text()), S(cboImageType->currentText()),
                               S(cboQuality->currentText()), S(txtJPEGVal->text())};
        if (!CheckSizeStep(v, services_.messages)) return false;
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

// ---- the picture list ----

void frmMultiEditWiz::FillListFromFolder() {
    std::vector<BatchPicture> rows;
    for (const fs::path& file : ListPictures(PathText(txtSrcFolder->text()), filter_))
        rows.push_back({file.filename().string(), "None", "None", {}});
    list_.SetRows(std::move(rows));
    RefreshList();
}

void frmMultiEditWiz::RefreshList() {
    const QSignalBlocker block(lvDragDrop);
    lvDragDrop->clear();
    for (const BatchPicture& row : list_.Rows())
        lvDragDrop->addTopLevelItem(new QTreeWidgetItem({PathQ(row.file), Q(row.rotation), Q(row.effect)}));
    if (auto selected = list_.Selected()) lvDragDrop->setCurrentItem(lvDragDrop->topLevelItem(static_cast<int>(*selected)));
    ShowStep();
    ShowPreview();
}

void frmMultiEditWiz::RowSelected() {
    const int index = lvDragDrop->indexOfTopLevelItem(lvDragDrop->currentItem());
    list_.Select(index >= 0 ? std::optional<size_t>(static_cast<size_t>(index)) : std::nullopt);
    if (!list_.Selected()) return;
    const BatchPicture& row = list_.Rows()[*list_.Selected()];
    QRadioButton* option = Option1;
    switch (OptionForRotation(row.rotation)) {
        case RotationOption::Flip: option = OptFlipImage; break;
        case RotationOption::RotateLeft: option = optRotatLeft; break;
        case RotationOption::RotateRight: option = optRotateRight; break;
        case RotationOption::None: break;
    }
    option->setChecked(true);
    const QSignalBlocker block(cboEffect);
    cboEffect->setEditText(Q(EffectBoxText(row.effect)));
    const std::string& caption = row.caption;
    const size_t cut = caption.find('\n');
    txtTitle->setText(Q(cut == std::string::npos ? std::string() : caption.substr(0, cut)));
    txtCaption->setText(Q(cut == std::string::npos ? caption : caption.substr(cut + 1)));
    ShowPreview();
}

void frmMultiEditWiz::ShowPreview() {
    const auto selected = list_.Selected();
    const std::string mode = S(cboPreviewMode->currentText());
    if (!selected || !PlanPreview(mode, list_.Rows()[*selected]).picture) {
        Canvas->clear();
        return;
    }
    const BatchPicture row = list_.Rows()[*selected];
    const PreviewPlan plan = PlanPreview(mode, row);
    const fs::path file = fs::path(PathText(txtSrcFolder->text())) / row.file;
    const int token = ++previewToken_;
    if (previewThread_.joinable()) previewThread_.join();
    // Decoding and the effect run off the window's thread; only the newest request is shown.
    previewThread_ = std::thread([this, file, plan, row, token] {
        cDib picture = LoadSmallPicture(file, kPreviewBox);
        if (picture.hDIB() && plan.rotation) ApplyBatchRotation(picture, row.rotation);
        if (picture.hDIB() && plan.effect) ApplyBatchEffect(picture, row.effect);
        const QImage image = picture.hDIB() ? ToQImage(picture) : QImage();
        QMetaObject::invokeMethod(
            this,
            [this, image, token] {
                if (token != previewToken_) return;
                if (image.isNull()) Canvas->clear();
                else Canvas->setPixmap(QPixmap::fromImage(image));
            },
            Qt::QueuedConnection);
    });
}

void frmMultiEditWiz::RotationChosen(const char* word) {
    list_.SetRotation(word, chkRotateAll->isChecked());
    RefreshList();
}

void frmMultiEditWiz::EffectChosen() {
    list_.SetEffect(S(cboEffect->currentText()), ChkEffectApplyAll->isChecked());
    RefreshList();
}

void frmMultiEditWiz::AddPressed() {
    const std::string folder = PathText(txtSrcFolder->text());
    std::vector<std::string> names;
    for (const fs::path& file : ListPictures(folder, filter_)) names.push_back(file.filename().string());
    const std::vector<std::string> missing = list_.AddCandidates(names, services_.messages);
    if (missing.empty()) return;
    FrmMultiEditWizAdd picker(folder, missing, this);
    if (!picker.LoadThumbnails()) return;
    if (picker.exec() != QDialog::Accepted) return;
    list_.Add(picker.Picked(), picker.Rotation());
    RefreshList();
}

void frmMultiEditWiz::AddDropped(const std::vector<std::string>& paths) {
    std::vector<std::string> names;
    for (const std::string& path : paths) {
        std::error_code ec;
        if (fs::is_directory(path, ec)) {
            for (const fs::path& file : ListPictures(path, filter_)) names.push_back(file.string());
        } else if (filter_.Admits(path)) {
            names.push_back(path);
        }
    }
    list_.Add(names);
    RefreshList();
}

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

void frmMultiEditWiz::FileFilterPressed() {
    bool ok = false;
    const QString text = QInputDialog::getText(this, "Advanced File Filter",
                                               "File types to take from the folder (separated by ;):",
                                               QLineEdit::Normal, Q(filter_.Text()), &ok);
    if (!ok) return;
    filter_ = PictureFilter::FromText(S(text));
    if (steps_.Step() >= kStepPictures && chkAutoLoad->isChecked()) FillListFromFolder();
}

// ---- size step ----

void frmMultiEditWiz::PresetChosen() {
    const std::string name = S(cboSize->currentText());
    const SpecialPreset special = ClassifyPreset(name);
    {
        const QSignalBlocker block(Check1);
        Check1->setChecked(special == SpecialPreset::Custom);
    }
    const bool typed = special != SpecialPreset::OriginalSize;
    for (QWidget* w : {static_cast<QWidget*>(txtWidth), static_cast<QWidget*>(txtHeight),
                       static_cast<QWidget*>(cboscale)})
        w->setEnabled(typed);
    if (special == SpecialPreset::None)
        if (auto preset = ReadPreset(name)) {
            txtWidth->setText(Q(preset->width));
            txtHeight->setText(Q(preset->height));
            cboscale->setCurrentText(Q(preset->unit));
        }
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

BatchJob frmMultiEditWiz::CurrentJob() const {
    BatchJob job;
    job.type = jobWord_;
    job.destination = jobWord_ == "CD" ? S(cboselection->currentText()) : std::string(kDestinationFolder);
    job.source = PathText(txtSrcFolder->text());
    job.target = PathText(txtTgtFolder->text());
    job.createSubfolder = chkSubfolder->isChecked();
    job.subfolders = chkSubfoldersDo->isChecked();
    job.rename = chkRename->isChecked();
    job.newName = S(txtRenameFiles->text());
    const std::string effect = S(cboEffect->currentText());
    job.effect = effect == "Pixelate" ? "Pixalate" : effect;
    job.effectAll = ChkEffectApplyAll->isChecked();
    job.rotation = optRotatLeft->isChecked()        ? "Rotate Left"
                   : optRotateRight->isChecked()    ? "Rotate Right"
                   : OptFlipImage->isChecked()      ? "Flip"
                   : optFlipHorizontal->isChecked() ? "Horizontal"
                                                    : "None";
    job.rotateAll = chkRotateAll->isChecked();
    job.preset = S(cboSize->currentText());
    job.width = ParseNumericText(S(txtWidth->text())).value_or(0);
    job.height = ParseNumericText(S(txtHeight->text())).value_or(0);
    job.unit = S(cboscale->currentText());
    job.keepAspect = chkAspectRatio->isChecked();
    job.resample = chkResample->isChecked();
    job.bestFit = chkBestfit->isChecked();
    job.forceResize = chkForceSize->isChecked();
    job.fitTurned = chkFitTurned->isChecked();
    job.removeGps = chkRemoveGps->isChecked();
    job.removeMetadata = chkRemoveMetadata->isChecked();
    job.convertToSrgb = chkConvertSrgb->isChecked();
    job.outputType = ParseOutputType(S(cboImageType->currentText())).value_or(OutputType::KeepOriginal);
    job.quality = S(txtJPEGVal->text());
    job.afterRun = optOpenWinExplr->isChecked() ? "Folder" : optOpenQorbix->isChecked() ? "Open" : "None";
    job.pictures = list_.Rows();
    if (filter_ != PictureFilter()) job.fileFilter = filter_.Text();
    return job;
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
        frasteps->setCurrentIndex(kResizingPage);
        for (QPushButton* b : {cmdBack, cmdNext, cmdFinish}) b->setEnabled(false);
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
    lblPleaseWait->setText("Please Wait...");
    picProgress->setValue(0);
    frasteps->setCurrentIndex(kResizingPage);
    for (QPushButton* b : {cmdBack, cmdNext, cmdFinish}) b->setEnabled(false);
    RunNextFolder();
}

void frmMultiEditWiz::RunNextFolder() {
    folder_ = session_->NextFolder();
    if (!folder_) {
        FinishRun();
        return;
    }
    if (!folder_->ownRows && chkSubfolderPrompt->isChecked()) {
        // The settings steps again for this subfolder; Finish goes on with it.
        std::error_code ec;
        fs::create_directories(folder_->target, ec);
        promptingSubfolder_ = true;
        txtSrcFolder->setText(PathQ(folder_->source));
        txtTgtFolder->setText(PathQ(folder_->target));
        list_.SetRows({});
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
    FinishServices finish{completion, [this](const std::string& text) { lblPleaseWait->setText(Q(text)); },
                          services_.openInEditor};
    const BatchRunReport total = session_->Total();
    FinishBatch(runJob_, session_->Written(), total.outputs, session_->TargetRootFolder(), finish);
    if (!total.failures.empty()) services_.messages.Show(total.FailureText());
    if (onFinished) onFinished(total);
    if (!cancelled_ && ShowDonePage()) return;
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

OverwriteAnswer frmMultiEditWiz::AskOverwriteWithWindow(const fs::path& existing) {
    OverwriteState state;
    const std::string name = existing.filename().string();
    WarningQuestion question(state, services_.messages, OverwriteQuestionText(name), existing.string(), name);
    frmWarning window(question, LoadThumbnail(existing, 160), this);
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
