#include "effects/ui/frmFish.h"

#include "effects/Remap.h"

namespace quorbel {

frmFish::frmFish(const cDib& picture, QWidget* parent) : AdjustWindow(picture, tr("Fisheye"), parent) {
    // The mapping scales with the picture, so the shrunken preview shows it as it will be.
    UpdateResult();
}

PictureJob::Operation frmFish::MakeOperation() const {
    return [background = BackgroundColour()](const cDib& source, cDib& result, const ProgressFn& progress) {
        return ApplyFish(source, result, background, progress);
    };
}

std::optional<cDib> RunFishDialog(QWidget* parent, const cDib& picture) {
    return RunAdjustWindow<frmFish>(parent, picture);
}

}  // namespace quorbel
