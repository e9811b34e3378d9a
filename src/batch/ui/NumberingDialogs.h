#pragma once
// Before a renaming run into a folder that already holds numbered pictures of the same
// name: frmWarningNewName (go on counting, or overwrite) and the note FrmNumberingNote.
#include <QDialog>

class QCheckBox;
class QPushButton;
class QRadioButton;

namespace quorbel {

class frmWarningNewName : public QDialog {
    Q_OBJECT
public:
    explicit frmWarningNewName(QWidget* parent = nullptr);
    QRadioButton* Option2;       // continue the count
    QRadioButton* optOverWrite;  // overwrite the images
    QPushButton* btnContinue;
    QPushButton* btnCancel;
};

class FrmNumberingNote : public QDialog {
    Q_OBJECT
public:
    explicit FrmNumberingNote(QWidget* parent = nullptr);
    QCheckBox* chkShowMe;
    QPushButton* btnClose;
};

// Asks with frmWarningNewName: the numbering base the run goes on from (highest when the
// count continues, 0 to overwrite), or -1 for Cancel. Choosing to continue shows the note
// while ("MultiEdit", "Numbering Note") is not "0"; the note's tick writes it.
long long AskNumbering(QWidget* parent, long long highest);

}  // namespace quorbel
