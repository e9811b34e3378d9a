#include "effects/ui/frmWarp.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "effects/Remap.h"
#include "effects/Warp.h"

namespace quorbel {

frmWarp::frmWarp(const cDib& picture, QWidget* parent) : AdjustWindow(picture, tr("Warp"), parent) {
    cboTransformation = new QComboBox;
    for (const char* name : kWarpNames) cboTransformation->addItem(QString::fromUtf8(name));
    cboTransformation->setPlaceholderText(tr("Choose a transformation"));
    cboTransformation->setCurrentIndex(-1);
    auto* label = new QLabel(tr("&Transformation:"));
    label->setBuddy(cboTransformation);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(cboTransformation);
    row->addStretch(1);
    Controls()->addLayout(row);

    // One button both cancels a chosen transformation and closes an untouched window.
    btnCancel->setText(tr("Close"));
    btnCancel->setToolTip(QString::fromUtf8(kWarpCancelHint));
    btnOK->setEnabled(false);
    connect(cboTransformation, &QComboBox::currentIndexChanged, this, &frmWarp::OnTransformationChosen);
}

int frmWarp::Transformation() const { return cboTransformation->currentIndex(); }

void frmWarp::OnTransformationChosen(int index) {
    btnOK->setEnabled(index >= 0);
    btnCancel->setText(index >= 0 ? tr("Cancel") : tr("Close"));
    UpdateResult();
}

PictureJob::Operation frmWarp::MakeOperation() const {
    return [t = static_cast<int16_t>(Transformation()), background = BackgroundColour()](
               const cDib& source, cDib& result, const ProgressFn& progress) {
        return ApplyWarp(source, result, t, background, progress);
    };
}

PictureJob::Operation frmWarp::MakePreviewOperation() const {
    const WarpState state = MakeWarpState(static_cast<int16_t>(Transformation()), Picture().Width(),
                                          Picture().Height());
    const float kx = float(Picture().Width()) / float(PreviewSource().Width());
    const float ky = float(Picture().Height()) / float(PreviewSource().Height());
    return [state, kx, ky, background = BackgroundColour()](const cDib& source, cDib& result,
                                                            const ProgressFn& progress) {
        // Each preview pixel centre goes to the whole picture, through the mapping, and back.
        const Mapping scaled = [&state, kx, ky](float x, float y) {
            const SourcePoint p = WarpMap(state, (x + 0.5f) * kx - 0.5f, (y + 0.5f) * ky - 0.5f);
            return SourcePoint{(p.sx + 0.5f) / kx - 0.5f, (p.sy + 0.5f) / ky - 0.5f};
        };
        return Remap(source, result, scaled, background, progress);
    };
}

void frmWarp::SetControlsEnabled(bool enabled) { cboTransformation->setEnabled(enabled); }

std::optional<cDib> RunWarpDialog(QWidget* parent, const cDib& picture) {
    return RunAdjustWindow<frmWarp>(parent, picture);
}

}  // namespace quorbel
