#pragma once
// frmColorBal, the Color Balance window: a bar per channel, percent of the way toward
// white (right) or black (left).
#include <array>

#include "effects/ui/AdjustWindow.h"

namespace quorbel {

class SliderRow;

class frmColorBal : public AdjustWindow {
    Q_OBJECT
public:
    explicit frmColorBal(const cDib& picture, QWidget* parent = nullptr);

    std::array<SliderRow*, 3> hbarBrightness;  // red, green, blue
    QPushButton* cmdUpdate;
    QPushButton* cmdRefresh;

public slots:
    // Puts every bar back to its start and the result back to the original.
    void Refresh();

protected:
    PictureJob::Operation MakeOperation() const override;
    void SetControlsEnabled(bool enabled) override;
};

std::optional<cDib> RunColourBalanceDialog(QWidget* parent, const cDib& picture);

}  // namespace quorbel
