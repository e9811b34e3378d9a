#pragma once
// The folders step: where the pictures come from and go, renaming, subfolders, whether the
// list fills itself, and the advanced file filter.
#include <QWidget>
#include <optional>
#include <string>

#include "batch/FolderScan.h"

class QCheckBox;
class QFrame;
class QLineEdit;
class QPushButton;

namespace quorbel {

class FileDialogs;
class MessageBox;
struct BatchJob;

class WizardFolders : public QWidget {
    Q_OBJECT
public:
    WizardFolders(FileDialogs& dialogs, const std::string& jobWord);

    std::string Source() const;
    void SetFolders(const std::string& source, const std::string& target);
    void SetTargetShown(bool shown);
    bool AutoLoad() const;
    bool PromptEachSubfolder() const;
    const PictureFilter& Filter() const { return filter_; }
    // The step's checks before leaving it; the checked source folder, or nothing to stay.
    std::optional<std::string> Check(bool ownTarget, MessageBox& messages);
    void Fill(BatchJob& job) const;

signals:
    void filterChanged();

private:
    void FileFilterPressed();

    FileDialogs& dialogs_;
    std::string jobWord_;
    PictureFilter filter_;
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
};

}  // namespace quorbel
