#pragma once
// The overwrite question: a thin window over WarningQuestion, which holds every rule.
#include <QDialog>
#include <QImage>

#include "output/WarningQuestion.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quorbel {

class frmWarning : public QDialog {
    Q_OBJECT
public:
    // thumbnail: a small picture of the existing file, or a null image for none.
    frmWarning(WarningQuestion& question, const QImage& thumbnail, QWidget* parent = nullptr);

    QRadioButton* optOverWrite;
    QRadioButton* optRename;
    QRadioButton* optSeq;
    QRadioButton* optSkip;
    QLabel* lblRename;
    QLineEdit* txtRename;
    QPushButton* Yes;
    QPushButton* No;
    QPushButton* btnYesAll;
    QPushButton* boolNoToAll;

private:
    void Choose(WarningOption option);
    void Press(void (WarningQuestion::*action)());
    void Sync();

    WarningQuestion& question_;
};

// Asks through frmWarning, modally, with the existing file's thumbnail when it can be read.
class QtOverwriteAsker : public OverwriteAsker {
public:
    explicit QtOverwriteAsker(QWidget* parent = nullptr) : parent_(parent) {}
    void Ask(WarningQuestion& question) override;

private:
    QWidget* parent_;
};

}  // namespace quorbel
