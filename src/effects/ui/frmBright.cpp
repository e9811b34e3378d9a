#include "effects/ui/frmBright.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "effects/ColourRules.h"
#include "imaging/ui/DibImage.h"
#include "effects/ui/SliderRow.h"

namespace quorbel {

frmBright::frmBright(const cDib& picture, QWidget* parent)
    : AdjustWindow(picture, tr("Brightness"), parent) {
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    hbarBrightness = new SliderRow(grid, 0, this);
    hbarBrightness->Set(tr("Brightness"), kBrightnessRange.minimum, kBrightnessRange.maximum,
                        kBrightnessRange.initial);
    Controls()->addLayout(grid);
    connect(hbarBrightness, &SliderRow::valueChanged, this, &frmBright::ScheduleUpdate);
    UpdateResult();
}

PictureJob::Operation frmBright::MakeOperation() const {
    return [amount = hbarBrightness->Value()](const cDib& source, cDib& result, const ProgressFn& progress) {
        result = CopyDib(source);
        return Brighten(result, amount, progress);
    };
}

void frmBright::SetControlsEnabled(bool enabled) { hbarBrightness->SetEnabled(enabled); }

std::optional<cDib> RunBrightnessDialog(QWidget* parent, const cDib& picture) {
    return RunAdjustWindow<frmBright>(parent, picture);
}

}  // namespace quorbel
