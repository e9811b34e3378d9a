#include "batch/ui/WizardDone.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "batch/ui/WizardText.h"
#include "core/text/TextCase.h"
#include "share/Mail.h"
#include "share/SlideShow.h"

namespace quorbel {

using namespace wizard;

WizardDone::WizardDone() {
    lblDoneHeading = Named(new QLabel, "lblDoneHeading");
    QFont bold = lblDoneHeading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    lblDoneHeading->setFont(bold);
    lblDoneHeading->setWordWrap(true);
    lblDoneText = Named(new QLabel, "lblDoneText");
    lblDoneText->setWordWrap(true);
    btnViewShow = Named(new QPushButton("View the slide show"), "btnViewShow");
    connect(btnViewShow, &QPushButton::clicked, this, &WizardDone::viewShowPressed);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblDoneHeading);
    layout->addWidget(lblDoneText);
    layout->addWidget(btnViewShow, 0, Qt::AlignLeft);
    layout->addStretch(1);
}

bool WizardDone::ShowFor(const std::string& jobType) {
    std::string_view heading;
    std::string text;
    const auto join = [&text](const auto& lines) {
        for (std::string_view line : lines) text.append(line).append("\n\n");
    };
    if (EqualsIgnoreCase(jobType, "Web")) {
        heading = kWebDoneHeading;
        join(kWebDoneLines);
    } else if (EqualsIgnoreCase(jobType, "Email")) {
        heading = kEmailDoneHeading;
        join(kEmailDoneLines);
    } else {
        return false;
    }
    lblDoneHeading->setText(Q(heading));
    lblDoneText->setText(Q(text));
    btnViewShow->setVisible(EqualsIgnoreCase(jobType, "Web"));
    return true;
}

}  // namespace quorbel
