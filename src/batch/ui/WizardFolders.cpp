#include "batch/ui/WizardFolders.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>

#include "batch/BatchJob.h"
#include "batch/WizardSteps.h"
#include "batch/ui/WizardText.h"
#include "platform/FileDialogs.h"
#include "settings/AppFolders.h"
#include "settings/DataFolder.h"
#include "settings/SettingsStore.h"

namespace quorbel {

using namespace wizard;

WizardFolders::WizardFolders(FileDialogs& dialogs, const std::string& jobWord) : dialogs_(dialogs), jobWord_(jobWord) {
    auto* layout = new QVBoxLayout(this);
    auto folderRow = [this](const char* name, const char* label, const std::string& value, QVBoxLayout* into) {
        into->addWidget(new QLabel(label));
        auto* row = new QHBoxLayout;
        auto* edit = Named(new QLineEdit(PathQ(value)), name);
        auto* browse = new QPushButton("Browse...");
        row->addWidget(edit, 1);
        row->addWidget(browse);
        into->addLayout(row);
        connect(browse, &QPushButton::clicked, this, [this, edit, label] {
            if (auto folder = dialogs_.PickFolder(label, PathText(edit->text()))) edit->setText(PathQ(*folder));
        });
        return edit;
    };
    txtSrcFolder = folderRow("txtSrcFolder", "I would like to use the pictures from the following folder",
                             GetSetting(kAppName, "MultiEdit", "Source"), layout);
    fraTarget = Named(new QFrame, "fraTarget");
    auto* targetLayout = new QVBoxLayout(fraTarget);
    targetLayout->setContentsMargins(0, 0, 0, 0);
    txtTgtFolder = folderRow("txtTgtFolder", "I would like to save them to the following folder",
                             GetSetting(kAppName, "MultiEdit", "Target"), targetLayout);
    layout->addWidget(fraTarget);
    chkSubfolder = Named(new QCheckBox("Create a subfolder with this name"), "chkSubfolder");
    chkSubfoldersDo = Named(new QCheckBox("Subfolders"), "chkSubfoldersDo");
    chkSubfolderPrompt =
        Named(new QCheckBox("Prompt for optimizing settings on each subfolder"), "chkSubfolderPrompt");
    chkAutoLoad =
        Named(new QCheckBox("Automatically load image list. (uncheck for Advanced image selection)"), "chkAutoLoad");
    chkAutoLoad->setChecked(true);
    btnFileFltrAdv = Named(new QPushButton("Advanced File Filter"), "btnFileFltrAdv");
    chkRename = Named(new QCheckBox("Rename"), "chkRename");
    txtRenameFiles = Named(new QLineEdit(Q(GetSetting(kAppName, "Settings", "Rename Name"))), "txtRenameFiles");
    auto* rename = new QHBoxLayout;
    rename->addWidget(chkRename);
    rename->addWidget(new QLabel("New Name:"));
    rename->addWidget(txtRenameFiles, 1);
    layout->addLayout(rename);
    for (QWidget* w : {chkSubfolder, chkSubfoldersDo, chkSubfolderPrompt, chkAutoLoad}) layout->addWidget(w);
    auto* filterRow = new QHBoxLayout;
    filterRow->addWidget(btnFileFltrAdv);
    filterRow->addStretch(1);
    layout->addLayout(filterRow);
    layout->addStretch(1);
    chkSubfolderPrompt->setEnabled(false);
    connect(chkSubfoldersDo, &QCheckBox::toggled, chkSubfolderPrompt, &QWidget::setEnabled);
    connect(btnFileFltrAdv, &QPushButton::clicked, this, &WizardFolders::FileFilterPressed);
}

std::string WizardFolders::Source() const { return PathText(txtSrcFolder->text()); }

void WizardFolders::SetFolders(const std::string& source, const std::string& target) {
    txtSrcFolder->setText(PathQ(source));
    txtTgtFolder->setText(PathQ(target));
}

void WizardFolders::SetTargetShown(bool shown) { fraTarget->setVisible(shown); }
bool WizardFolders::AutoLoad() const { return chkAutoLoad->isChecked(); }
bool WizardFolders::PromptEachSubfolder() const { return chkSubfolderPrompt->isChecked(); }

std::optional<std::string> WizardFolders::Check(bool ownTarget, MessageBox& messages) {
    if (ownTarget) {
        // The pictures of a mail or a disc are gathered in a folder of the program's own.
        const std::string folder = GetAppDataFolder() + "/" + jobWord_ + "/";
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        txtTgtFolder->setText(PathQ(folder));
    }
    FolderStepValues v{PathText(txtSrcFolder->text()), PathText(txtTgtFolder->text()), chkRename->isChecked(),
                       S(txtRenameFiles->text()), !ownTarget};
    if (!CheckFolderStep(v, messages)) return std::nullopt;
    SetFolders(v.source, v.target);
    return v.source;
}

void WizardFolders::Fill(BatchJob& job) const {
    job.source = PathText(txtSrcFolder->text());
    job.target = PathText(txtTgtFolder->text());
    job.createSubfolder = chkSubfolder->isChecked();
    job.subfolders = chkSubfoldersDo->isChecked();
    job.rename = chkRename->isChecked();
    job.newName = S(txtRenameFiles->text());
    if (filter_ != PictureFilter()) job.fileFilter = filter_.Text();
}

void WizardFolders::FileFilterPressed() {
    bool ok = false;
    const QString text = QInputDialog::getText(this, "Advanced File Filter",
                                               "File types to take from the folder (separated by ;):",
                                               QLineEdit::Normal, Q(filter_.Text()), &ok);
    if (!ok) return;
    filter_ = PictureFilter::FromText(S(text));
    emit filterChanged();
}

}  // namespace quorbel
