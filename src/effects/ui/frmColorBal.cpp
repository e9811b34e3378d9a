#include "effects/ui/frmColorBal.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "effects/ColourRules.h"
#include "imaging/ui/DibImage.h"
#include "effects/ui/SliderRow.h"

namespace quorbel {

frmColorBal::frmColorBal(const cDib& picture, QWidget* parent)
    : AdjustWindow(picture, tr("Color Balance"), parent) {
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    const QString captions[3] = {tr("Red"), tr("Green"), tr("Blue")};
    for (int i = 0; i < 3; ++i) {
        hbarBrightness[i] = new SliderRow(grid, i, this);
        hbarBrightness[i]->Set(captions[i], kColourBalanceRange.minimum, kColourBalanceRange.maximum,
                               kColourBalanceRange.initial);
        connect(hbarBrightness[i], &SliderRow::valueChanged, this, &frmColorBal::ScheduleUpdate);
    }
    cmdUpdate = new QPushButton(tr("Update Image"));
    cmdRefresh = new QPushButton(tr("Refresh"));
    for (QPushButton* b : {cmdUpdate, cmdRefresh}) b->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(cmdUpdate);
    row->addWidget(cmdRefresh);
    Controls()->addLayout(grid);
    Controls()->addLayout(row);
    connect(cmdUpdate, &QPushButton::clicked, this, &frmColorBal::UpdateResult);
    connect(cmdRefresh, &QPushButton::clicked, this, &frmColorBal::Refresh);
    UpdateResult();
}

void frmColorBal::Refresh() {
    for (SliderRow* bar : hbarBrightness) bar->SetValue(kColourBalanceRange.initial);
    UpdateResult();
}

PictureJob::Operation frmColorBal::MakeOperation() const {
    return [r = hbarBrightness[0]->Value(), g = hbarBrightness[1]->Value(), b = hbarBrightness[2]->Value()](
               const cDib& source, cDib& result, const ProgressFn& progress) {
        result = CopyDib(source);
        return ColourBalance(result, r, g, b, progress);
    };
}

void frmColorBal::SetControlsEnabled(bool enabled) {
    for (SliderRow* bar : hbarBrightness) bar->SetEnabled(enabled);
    cmdUpdate->setEnabled(enabled);
    cmdRefresh->setEnabled(enabled);
}

std::optional<cDib> RunColourBalanceDialog(QWidget* parent, const cDib& picture) {
    return RunAdjustWindow<frmColorBal>(parent, picture);
}

}  // namespace quorbel
