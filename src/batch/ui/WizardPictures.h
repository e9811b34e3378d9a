#pragma once
// The pictures step: the list and its order, each picture's rotation, effect and caption, and
// a preview of the selected one. Folder listings and the preview's decoding run on the
// program's thread pool; the list shows what comes back.
#include <QWidget>
#include <string>
#include <vector>

#include "batch/FolderScan.h"
#include "batch/PictureList.h"
#include "batch/ui/NewestOnly.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace quorbel {

class MessageBox;
struct BatchJob;

class WizardPictures : public QWidget {
    Q_OBJECT
public:
    WizardPictures(MessageBox& messages, const std::string& jobWord);

    // The folder the pictures come from. With autoLoad the list is filled from it when it is
    // empty or the folder changed; filling goes on after this returns true.
    bool UseFolder(const std::string& folder, bool autoLoad);
    // The file types taken from folders; refill fills the list again with them.
    void SetFilter(const PictureFilter& filter, bool refill);
    void Clear();
    bool Empty() const { return list_.Rows().empty(); }
    // Adds dropped files (their own paths) and the pictures of dropped folders.
    void AddDropped(const std::vector<std::string>& paths);
    void Fill(BatchJob& job) const;

signals:
    void listChanged();

private:
    void FillFromFolder();
    void RefreshList();
    void RowSelected();
    void ShowPreview();
    void RotationChosen(const char* word);
    void EffectChosen();
    void AddPressed();

    MessageBox& messages_;
    PictureList list_;
    std::string folder_;
    PictureFilter filter_;
    NewestOnly fill_{this};
    NewestOnly scan_{this};
    NewestOnly preview_{this};

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
};

}  // namespace quorbel
