#include "output/ui/frmWarning.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "imaging/ResizeDib.h"
#include "imaging/ui/DibImage.h"

namespace quorbel {

frmWarning::frmWarning(WarningQuestion& question, const QImage& thumbnail, QWidget* parent)
    : QDialog(parent), question_(question) {
    setWindowTitle("Quorbel");
    auto* text = new QLabel(QString::fromStdString(question.Message()));
    text->setWordWrap(true);
    text->setMinimumWidth(360);

    optOverWrite = new QRadioButton("&Overwrite the existing file");
    optRename = new QRadioButton("&Rename the new file");
    optSeq = new QRadioButton("&Number the new file");
    optSkip = new QRadioButton("&Skip this file");
    optOverWrite->setChecked(true);
    auto* group = new QButtonGroup(this);
    for (QRadioButton* b : {optOverWrite, optRename, optSeq, optSkip}) group->addButton(b);

    lblRename = new QLabel("New name:");
    txtRename = new QLineEdit;
    lblRename->setBuddy(txtRename);

    Yes = new QPushButton("&Yes");
    No = new QPushButton("&No");
    btnYesAll = new QPushButton("Yes to &All");
    boolNoToAll = new QPushButton("No to A&ll");
    Yes->setDefault(true);

    auto* options = new QVBoxLayout;
    options->addWidget(text);
    for (QRadioButton* b : {optOverWrite, optRename, optSeq, optSkip}) options->addWidget(b);
    auto* rename = new QHBoxLayout;
    rename->addWidget(lblRename);
    rename->addWidget(txtRename, 1);
    options->addLayout(rename);
    options->addStretch(1);

    auto* top = new QHBoxLayout;
    if (!thumbnail.isNull()) {
        auto* picture = new QLabel;
        picture->setPixmap(QPixmap::fromImage(thumbnail));
        picture->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
        top->addWidget(picture);
    }
    top->addLayout(options, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* b : {Yes, No, btnYesAll, boolNoToAll}) buttons->addWidget(b);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);

    connect(optOverWrite, &QRadioButton::clicked, this, [this] { Choose(WarningOption::OverWrite); });
    connect(optRename, &QRadioButton::clicked, this, [this] { Choose(WarningOption::Rename); });
    connect(optSeq, &QRadioButton::clicked, this, [this] { Choose(WarningOption::Seq); });
    connect(optSkip, &QRadioButton::clicked, this, [this] { Choose(WarningOption::Skip); });
    connect(txtRename, &QLineEdit::textEdited, this,
            [this](const QString& t) { question_.SetRenameText(t.toStdString()); });
    connect(Yes, &QPushButton::clicked, this, [this] { Press(&WarningQuestion::Yes); });
    connect(No, &QPushButton::clicked, this, [this] { Press(&WarningQuestion::No); });
    connect(btnYesAll, &QPushButton::clicked, this, [this] { Press(&WarningQuestion::YesToAll); });
    connect(boolNoToAll, &QPushButton::clicked, this, [this] { Press(&WarningQuestion::NoToAll); });
    Sync();
}

void frmWarning::Choose(WarningOption option) {
    question_.Choose(option);
    Sync();
}

void frmWarning::Press(void (WarningQuestion::*action)()) {
    (question_.*action)();
    if (question_.Closed()) accept();
}

void frmWarning::Sync() {
    lblRename->setVisible(question_.RenameVisible());
    txtRename->setVisible(question_.RenameVisible());
    txtRename->setText(QString::fromStdString(question_.RenameText()));
    btnYesAll->setEnabled(question_.YesToAllEnabled());
    if (question_.RenameVisible()) txtRename->setFocus();
}

void QtOverwriteAsker::Ask(WarningQuestion& question) {
    QImage thumbnail;
    DecodedPicture existing;
    std::vector<uint8_t> bytes;
    if (!ReadWholeFile(question.TargetPath(), bytes) && DecodePicture(bytes, existing) && existing.pixels.hDIB()) {
        int32_t l, t, w, h;
        existing.pixels.GetBestFitInfo(160, 160, false, l, t, w, h);
        if (w > 0 && h > 0 && ResizeDib(existing.pixels, w, h, true)) thumbnail = ToQImage(existing.pixels);
    }
    frmWarning window(question, thumbnail, parent_);
    window.exec();
    // Closing the window without an answer counts as No: the file is not touched.
    if (!question.Closed()) question.No();
}

}  // namespace quorbel
