#include "batch/ui/NumberingDialogs.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"

namespace quorbel {

frmWarningNewName::frmWarningNewName(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Warning!");
    Option2 = new QRadioButton("Continue with count from the highest numbered picture");
    optOverWrite = new QRadioButton("Overwrite the images");
    Option2->setChecked(true);
    btnContinue = new QPushButton("Continue");
    btnCancel = new QPushButton("Cancel");
    btnContinue->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnContinue);
    buttons->addWidget(btnCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Option2);
    layout->addWidget(optOverWrite);
    layout->addLayout(buttons);
    connect(btnContinue, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmNumberingNote::FrmNumberingNote(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Quorbel");
    auto* heading = new QLabel("Important!");
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    for (const char* text :
         {"Quorbel will add the images with the new name and continue the numbering sequence.",
          "EXAMPLE:  Last image added to the folder was MyPics45, the new images to be added will be MyPics046, "
          "MyPics047, MyPics048 and so on.",
          "This is a great way to organize your favorite images!"}) {
        auto* label = new QLabel(text);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    chkShowMe = new QCheckBox("Show this Message");
    chkShowMe->setChecked(true);
    btnClose = new QPushButton("Close");
    auto* row = new QHBoxLayout;
    row->addWidget(chkShowMe);
    row->addStretch(1);
    row->addWidget(btnClose);
    layout->addLayout(row);
    connect(btnClose, &QPushButton::clicked, this, &QDialog::accept);
}

long long AskNumbering(QWidget* parent, long long highest) {
    frmWarningNewName question(parent);
    QObject::connect(question.Option2, &QRadioButton::clicked, &question, [&question] {
        if (GetSetting(kAppName, "MultiEdit", "Numbering Note", "1") == "0") return;
        FrmNumberingNote note(&question);
        note.exec();
        SaveSetting(kAppName, "MultiEdit", "Numbering Note", note.chkShowMe->isChecked() ? "1" : "0");
    });
    if (question.exec() != QDialog::Accepted) return -1;
    return question.Option2->isChecked() ? highest : 0;
}

}  // namespace quorbel
