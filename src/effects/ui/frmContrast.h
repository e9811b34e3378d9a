#pragma once
// frmContrast, the Contrast window. The slider reads as more contrast to the right; the
// rule's amount is its negative (a positive amount pulls toward the middle).
#include "effects/ui/AdjustWindow.h"

namespace quorbel {

class SliderRow;

class frmContrast : public AdjustWindow {
    Q_OBJECT
public:
    explicit frmContrast(const cDib& picture, QWidget* parent = nullptr);

    // The amount the contrast rule receives for the slider's position.
    int Amount() const;

    SliderRow* hbarContrast;

protected:
    PictureJob::Operation MakeOperation() const override;
    void SetControlsEnabled(bool enabled) override;
};

std::optional<cDib> RunContrastDialog(QWidget* parent, const cDib& picture);

}  // namespace quorbel
