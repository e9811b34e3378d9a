#include "batch/ui/WizardProgress.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QVBoxLayout>

#include "batch/ui/WizardText.h"

namespace quorbel {

using namespace wizard;

WizardProgress::WizardProgress() {
    lblPleaseWait = Named(new QLabel("Please Wait..."), "lblPleaseWait");
    QFont bold = lblPleaseWait->font();
    bold.setBold(true);
    lblPleaseWait->setFont(bold);
    lblPleaseWait->setWordWrap(true);
    picProgress = Named(new QProgressBar, "picProgress");
    picProgress->setRange(0, 100);
    picProgress->setFormat("%p%");
    lblTotal = Named(new QLabel("0"), "lblTotal");
    LblCurrentCount = Named(new QLabel("0"), "LblCurrentCount");
    txtFileName = Named(new QLineEdit, "txtFileName");
    txtFileName->setReadOnly(true);
    auto* counts = new QFormLayout;
    counts->addRow("Pictures done:", LblCurrentCount);
    counts->addRow("Total pictures:", lblTotal);
    counts->addRow("Picture:", txtFileName);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblPleaseWait);
    layout->addWidget(picProgress);
    layout->addLayout(counts);
    layout->addStretch(1);
}

void WizardProgress::Start() {
    lblPleaseWait->setText("Please Wait...");
    picProgress->setValue(0);
}

void WizardProgress::SetStatus(const std::string& text) { lblPleaseWait->setText(Q(text)); }

void WizardProgress::Show(int percent, int done, int total, const std::string& file) {
    picProgress->setValue(percent);
    LblCurrentCount->setText(QString::number(done));
    lblTotal->setText(QString::number(total));
    txtFileName->setText(PathQ(file));
}

}  // namespace quorbel
