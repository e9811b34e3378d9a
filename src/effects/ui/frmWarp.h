#pragma once
// frmWarp, the Warp window: one of the six transformations of Warp.h, chosen from a list.
// The preview maps through the whole picture's geometry, so waves and twists keep their
// size relative to the picture.
#include "effects/ui/AdjustWindow.h"

class QComboBox;

namespace quorbel {

inline constexpr const char* kWarpCancelHint = "Click here to cancel your changes or to close this window";

class frmWarp : public AdjustWindow {
    Q_OBJECT
public:
    explicit frmWarp(const cDib& picture, QWidget* parent = nullptr);

    // The chosen list index; -1 before any choice.
    int Transformation() const;

    QComboBox* cboTransformation;

protected:
    PictureJob::Operation MakeOperation() const override;
    PictureJob::Operation MakePreviewOperation() const override;
    bool Ready() const override { return Transformation() >= 0; }
    void SetControlsEnabled(bool enabled) override;

private:
    void OnTransformationChosen(int index);
};

std::optional<cDib> RunWarpDialog(QWidget* parent, const cDib& picture);

}  // namespace quorbel
