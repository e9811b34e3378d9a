#include "effects/ui/AdjustWindow.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "imaging/ui/DibImage.h"
#include "effects/ui/PreviewBox.h"

namespace quorbel {
namespace {

constexpr int kPreviewWidth = 360;
constexpr int kPreviewHeight = 270;

}  // namespace

AdjustWindow::AdjustWindow(const cDib& picture, const QString& caption, QWidget* parent)
    : QDialog(parent), picture_(picture), preview_(MakePreview(picture, kPreviewWidth, kPreviewHeight)),
      controls_(new QVBoxLayout), updateTimer_(new QTimer(this)) {
    setWindowTitle(caption);

    picOriginal = new PreviewBox;
    picResult = new PreviewBox;
    picOriginal->SetPicture(preview_);
    picResult->SetPicture(preview_);

    auto* pictures = new QGridLayout;
    pictures->addWidget(new QLabel(tr("Original")), 0, 0);
    pictures->addWidget(new QLabel(tr("Result")), 0, 1);
    pictures->addWidget(picOriginal, 1, 0);
    pictures->addWidget(picResult, 1, 1);
    pictures->setRowStretch(1, 1);

    prgRun = new QProgressBar;
    prgRun->setRange(0, 100);
    QSizePolicy keep = prgRun->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    prgRun->setSizePolicy(keep);
    prgRun->hide();

    btnOK = new QPushButton(tr("OK"));
    btnCancel = new QPushButton(tr("Cancel"));
    btnOK->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(prgRun, 1);
    buttons->addWidget(btnOK);
    buttons->addWidget(btnCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(pictures, 1);
    layout->addLayout(controls_);
    layout->addLayout(buttons);

    updateTimer_->setSingleShot(true);
    updateTimer_->setInterval(30);
    connect(updateTimer_, &QTimer::timeout, this, &AdjustWindow::UpdateResult);
    connect(btnOK, &QPushButton::clicked, this, &AdjustWindow::accept);
    connect(btnCancel, &QPushButton::clicked, this, &AdjustWindow::reject);
    connect(&job_, &PictureJob::progress, prgRun, &QProgressBar::setValue);
    connect(&job_, &PictureJob::finished, this, &AdjustWindow::OnRunFinished);
}

AdjustWindow::~AdjustWindow() {
    job_.Cancel();
    job_.Wait();
}

cDib AdjustWindow::TakeResult() {
    done_ = false;
    return std::move(result_);
}

void AdjustWindow::ScheduleUpdate() { updateTimer_->start(); }

void AdjustWindow::UpdateResult() {
    updateTimer_->stop();
    if (!Ready()) {
        picResult->SetPicture(preview_);
        return;
    }
    cDib result;
    if (MakePreviewOperation()(preview_, result, {})) picResult->SetPicture(result);
}

ColorRef AdjustWindow::BackgroundColour() const { return ToColorRef(palette().color(QPalette::Window)); }

void AdjustWindow::accept() {
    if (Busy() || !Ready()) return;
    SetBusy(true);
    job_.Start(picture_, MakeOperation());
}

void AdjustWindow::reject() {
    if (Busy()) {
        // Cancel during the run stops it; the window goes when the worker has let go.
        closeWhenDone_ = true;
        job_.Cancel();
        return;
    }
    QDialog::reject();
}

void AdjustWindow::OnRunFinished(bool done) {
    SetBusy(false);
    if (done) {
        result_ = job_.TakeResult();
        done_ = true;
    }
    emit runFinished(done);
    if (closeWhenDone_)
        QDialog::reject();
    else if (done)
        QDialog::accept();
}

void AdjustWindow::SetBusy(bool busy) {
    SetControlsEnabled(!busy);
    btnOK->setEnabled(!busy && Ready());
    prgRun->setValue(0);
    prgRun->setVisible(busy);
    if (busy) updateTimer_->stop();
}

}  // namespace quorbel
