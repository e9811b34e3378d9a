#pragma once
// The layout and the run that the tone, warp and fisheye windows share: the picture and
// its result side by side (picOriginal, picResult), the window's own controls below, OK
// and Cancel. The result preview follows every change; OK runs the same operation on the
// whole picture off the UI thread and closes when it is done.
#include <QDialog>
#include <optional>

#include "effects/ui/PictureJob.h"
#include "imaging/cDib.h"

class QHBoxLayout;
class QProgressBar;
class QPushButton;
class QTimer;
class QVBoxLayout;

namespace quorbel {

class PreviewBox;

class AdjustWindow : public QDialog {
    Q_OBJECT
public:
    ~AdjustWindow() override;

    bool Busy() const { return job_.Running(); }
    // True once OK has made the whole-picture result; TakeResult hands it over.
    bool Done() const { return done_; }
    cDib TakeResult();

    // The window's shared controls.
    PreviewBox* picOriginal;
    PreviewBox* picResult;
    QProgressBar* prgRun;
    QPushButton* btnOK;
    QPushButton* btnCancel;

signals:
    // The whole-picture run ended: made the result, or not (cancelled, failed).
    void runFinished(bool done);

public slots:
    void accept() override;
    void reject() override;
    // Runs the operation on the preview now.
    void UpdateResult();

protected:
    AdjustWindow(const cDib& picture, const QString& caption, QWidget* parent);

    // The operation with the current settings; it must not read the controls, as it runs
    // on a worker.
    virtual PictureJob::Operation MakeOperation() const = 0;
    // The same for the preview, which is a shrunken copy; by default the same operation.
    virtual PictureJob::Operation MakePreviewOperation() const { return MakeOperation(); }
    // Whether there is anything to run yet.
    virtual bool Ready() const { return true; }
    virtual void SetControlsEnabled(bool enabled) = 0;

    // Where a window puts its controls, between the previews and the buttons.
    QVBoxLayout* Controls() const { return controls_; }
    // A change of setting: the result preview follows shortly.
    void ScheduleUpdate();
    // Sources outside the picture take the window's background colour.
    ColorRef BackgroundColour() const;
    const cDib& Picture() const { return picture_; }
    const cDib& PreviewSource() const { return preview_; }

private:
    void OnRunFinished(bool done);
    void SetBusy(bool busy);

    const cDib& picture_;
    cDib preview_;
    cDib result_;
    bool done_ = false;
    bool closeWhenDone_ = false;
    QVBoxLayout* controls_;
    QTimer* updateTimer_;
    PictureJob job_;  // declared last: it stops before the pictures it reads go
};

// Shows a window of type W on picture and returns the result when the user chose OK.
template <class W>
std::optional<cDib> RunAdjustWindow(QWidget* parent, const cDib& picture) {
    if (!picture.hDIB()) return std::nullopt;
    W window(picture, parent);
    if (window.exec() != QDialog::Accepted || !window.Done()) return std::nullopt;
    return window.TakeResult();
}

}  // namespace quorbel
