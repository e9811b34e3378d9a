#pragma once
// frmBright, the Brightness window: one amount added to every channel.
#include "effects/ui/AdjustWindow.h"

namespace quorbel {

class SliderRow;

class frmBright : public AdjustWindow {
    Q_OBJECT
public:
    explicit frmBright(const cDib& picture, QWidget* parent = nullptr);

    SliderRow* hbarBrightness;

protected:
    PictureJob::Operation MakeOperation() const override;
    void SetControlsEnabled(bool enabled) override;
};

std::optional<cDib> RunBrightnessDialog(QWidget* parent, const cDib& picture);

}  // namespace quorbel
