#include "effects/ui/frmContrast.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "effects/ColourRules.h"
#include "imaging/ui/DibImage.h"
#include "effects/ui/SliderRow.h"

namespace quorbel {

// The slider shows -amount, so its range is the rule's range turned round.
static_assert(kContrastRange.minimum == -kContrastRange.maximum, "the slider mirrors the range");

frmContrast::frmContrast(const cDib& picture, QWidget* parent)
    : AdjustWindow(picture, tr("Contrast"), parent) {
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    hbarContrast = new SliderRow(grid, 0, this);
    hbarContrast->Set(tr("Contrast"), -kContrastRange.maximum, -kContrastRange.minimum,
                      -kContrastRange.initial);
    Controls()->addLayout(grid);
    connect(hbarContrast, &SliderRow::valueChanged, this, &frmContrast::ScheduleUpdate);
    UpdateResult();
}

int frmContrast::Amount() const { return -hbarContrast->Value(); }

PictureJob::Operation frmContrast::MakeOperation() const {
    return [amount = Amount()](const cDib& source, cDib& result, const ProgressFn& progress) {
        result = CopyDib(source);
        return ContrastPicture(result, amount, progress);
    };
}

void frmContrast::SetControlsEnabled(bool enabled) { hbarContrast->SetEnabled(enabled); }

std::optional<cDib> RunContrastDialog(QWidget* parent, const cDib& picture) {
    return RunAdjustWindow<frmContrast>(parent, picture);
}

}  // namespace quorbel
