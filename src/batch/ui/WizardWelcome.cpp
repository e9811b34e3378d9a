#include "batch/ui/WizardWelcome.h"

#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>

#include "batch/BatchJob.h"
#include "batch/WizardSteps.h"
#include "batch/ui/WizardText.h"

namespace quorbel {

using namespace wizard;

WizardWelcome::WizardWelcome(const std::string& jobWord) : jobWord_(jobWord) {
    lblWelcome = Named(new QLabel(Q("Welcome to the " + std::string(JobPageFor(jobWord_).caption) +
                                    ". This wizard takes a folder of pictures, lets you choose their order, "
                                    "rotation and effect, their size and file type, and writes them in one go.")),
                       "lblWelcome");
    lblWelcome->setWordWrap(true);
    cboselection = Named(new QComboBox, "cboselection");
    cboselection->addItems({Q(kDestinationFolder), Q(kDestinationDisc)});
    if (jobWord_ == "CD") cboselection->setCurrentIndex(1);
    cboselection->setVisible(jobWord_ == "CD");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblWelcome);
    layout->addWidget(cboselection);
    layout->addStretch(1);
}

std::string WizardWelcome::Destination() const {
    return jobWord_ == "CD" ? S(cboselection->currentText()) : std::string(kDestinationFolder);
}

bool WizardWelcome::OwnTarget() const {
    return jobWord_ == "Email" || cboselection->currentText() == Q(kDestinationDisc);
}

}  // namespace quorbel
