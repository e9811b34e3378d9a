#pragma once
// The preset editor: the list of named sizes with add, delete, move up and down, reset,
// reload, apply, cancel and close. A thin view over PresetEditModel.
#include <QDialog>

#include "core/MessageBox.h"
#include "sizes/PresetEditModel.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace quorbel {

class frmCustomAdd : public QDialog {
    Q_OBJECT
public:
    explicit frmCustomAdd(MessageBox& messages, QWidget* parent = nullptr);

    const PresetEditModel& Model() const { return model_; }
    // True once the stored list was written (apply, close or reset).
    bool ListChanged() const { return model_.Saved(); }

private:
    void AddRow();
    void DeleteRow();
    void MoveRow(bool up);
    void ResetList();
    void ReloadList();
    bool ApplyList();
    void CloseSaving();
    void ShowRow(int row);
    void Fill(int selectRow);
    void UpdateButtons();
    int SelectedRow() const;

    MessageBox& messages_;
    PresetEditModel model_;

    QTreeWidget* lsvSettings_;
    QLineEdit* txtAdd_;
    QLineEdit* txtWidth_;
    QLineEdit* txtHeight_;
    QComboBox* cboScale_;
    QPushButton* cmdAdd_;
    QPushButton* cmdDelete_;
    QPushButton* cmdMoveUp_;
    QPushButton* cmdMoveDown_;
    QPushButton* cmdReset_;
    QPushButton* cmdReload_;
    QPushButton* cmdApply_;
    QPushButton* cmdCancel_;
    QPushButton* cmdClose_;
};

// Opens the editor modally; true when the stored list changed, so the caller refills its
// preset list.
bool RunPresetEditor(QWidget* parent, MessageBox& messages);

}  // namespace quorbel
