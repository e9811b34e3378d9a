#include "batch/ui/WizardReady.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "batch/BatchFinish.h"
#include "batch/BatchJob.h"
#include "batch/WizardSteps.h"
#include "batch/ui/WizardText.h"

namespace quorbel {

using namespace wizard;

WizardReady::WizardReady(const std::string& jobWord) {
    lblReady = Named(new QLabel(Q(JobPageFor(jobWord).ready)), "lblReady");
    QFont bold = lblReady->font();
    bold.setBold(true);
    lblReady->setFont(bold);
    optOpenWinExplr = Named(new QRadioButton(Q(kAfterRunTexts[0])), "optOpenWinExplr");
    optOpenQorbix = Named(new QRadioButton(Q(kAfterRunTexts[1])), "optOpenQorbix");
    optOpenNo = Named(new QRadioButton(Q(kAfterRunTexts[2])), "optOpenNo");
    optOpenWinExplr->setChecked(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblReady);
    layout->addSpacing(12);
    layout->addWidget(new QLabel("When the pictures are done:"));
    for (QRadioButton* b : {optOpenWinExplr, optOpenQorbix, optOpenNo}) layout->addWidget(b);
    layout->addStretch(1);
}

void WizardReady::Fill(BatchJob& job) const {
    job.afterRun = optOpenWinExplr->isChecked() ? "Folder" : optOpenQorbix->isChecked() ? "Open" : "None";
}

}  // namespace quorbel
