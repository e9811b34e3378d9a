#pragma once
// frmFish, the fisheye window: the mapping of Warp.h's FishMap, centred, nothing to set.
#include "effects/ui/AdjustWindow.h"

namespace quorbel {

class frmFish : public AdjustWindow {
    Q_OBJECT
public:
    explicit frmFish(const cDib& picture, QWidget* parent = nullptr);

protected:
    PictureJob::Operation MakeOperation() const override;
    void SetControlsEnabled(bool) override {}
};

std::optional<cDib> RunFishDialog(QWidget* parent, const cDib& picture);

}  // namespace quorbel
