#include "editor/ui/frmWelcome.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quorbel {

frmWelcome::frmWelcome(EditorModel& editor, Desktop& desktop, const std::string& helpFolder, QWidget* parent)
    : QDialog(parent), model_(editor, desktop, helpFolder) {
    setWindowTitle("Welcome to Quorbel");
    auto* layout = new QVBoxLayout(this);
    auto* heading = new QLabel("<h2>Welcome to Quorbel</h2>"
                               "<p>Resize, rotate and touch up your pictures, one at a time or hundreds at once.</p>",
                               this);
    heading->setWordWrap(true);
    layout->addWidget(heading);

    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    layout->addLayout(grid);
    auto place = [&](QPushButton* button, const QString& note, int row, int column) {
        auto* cell = new QVBoxLayout;
        cell->addWidget(button);
        auto* label = new QLabel(note, this);
        label->setStyleSheet("color: #555;");
        label->setContentsMargins(4, 0, 4, 0);
        cell->addWidget(label);
        grid->addLayout(cell, row, column);
    };
    cmdOpen = AddButton("Open a picture", "", WelcomeButton::Open);
    cmdLastEdited = AddButton("Last edited", "", WelcomeButton::LastEdited);
    cmdBatchResize = AddButton("Batch resize", "", WelcomeButton::BatchResize);
    cmdGettingStarted = AddButton("Getting started", "", WelcomeButton::GettingStarted);
    cmdTutorials = AddButton("Tutorials", "", WelcomeButton::Tutorials);
    cmdWebSite = AddButton("Web site", "", WelcomeButton::WebSite);
    cmdOpen->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    cmdLastEdited->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
    cmdBatchResize->setIcon(style()->standardIcon(QStyle::SP_DirIcon));
    cmdGettingStarted->setIcon(style()->standardIcon(QStyle::SP_DialogHelpButton));
    cmdTutorials->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
    cmdWebSite->setIcon(style()->standardIcon(QStyle::SP_ComputerIcon));
    place(cmdOpen, "Resize, rotate or touch up\none picture.", 0, 0);
    place(cmdLastEdited, "Carry on with the picture\nyou had open last time.", 0, 1);
    place(cmdBatchResize, "Resize a whole folder\nof pictures in one go.", 0, 2);
    place(cmdGettingStarted, "A short tour of\nthe main window.", 1, 0);
    place(cmdTutorials, "Step by step:\nresizing pictures.", 1, 1);
    place(cmdWebSite, "News and downloads\non the web site.", 1, 2);

    auto* bottom = new QHBoxLayout;
    chkShowWelcome = new QCheckBox(QString::fromUtf8(kShowWelcomeCaption.data(), kShowWelcomeCaption.size()), this);
    chkShowWelcome->setChecked(true);
    cmdClose = AddButton("Close", "", WelcomeButton::Close);
    bottom->addWidget(chkShowWelcome);
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addSpacing(8);
    layout->addLayout(bottom);
    cmdOpen->setDefault(true);
    cmdOpen->setFocus();
}

QPushButton* frmWelcome::AddButton(const QString& title, const QString&, WelcomeButton button) {
    auto* b = new QPushButton(title, this);
    b->setMinimumHeight(34);
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [this, button] {
        model_.showAtStartup = chkShowWelcome->isChecked();
        model_.Press(button);
        accept();
    });
    return b;
}

void frmWelcome::done(int result) {
    // The window's own close box and Escape close it too.
    model_.showAtStartup = chkShowWelcome->isChecked();
    model_.Close();
    QDialog::done(result);
}

}  // namespace quorbel
