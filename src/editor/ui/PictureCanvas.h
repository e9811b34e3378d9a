#pragma once
// The picture area: the picture fitted into the view, centred, shrunk with averaging
// (HALFTONE) into a buffer of the view's size and drawn straight from that buffer's memory.
#include <QWidget>
#include <functional>

#include "imaging/cDib.h"

namespace quorbel {

class PictureCanvas : public QWidget {
    Q_OBJECT
public:
    explicit PictureCanvas(QWidget* parent = nullptr);

    // Fits picture into the view now; the picture is not kept. Empty: the view is cleared.
    // A quick small decode of a large picture is stretched to the size the full one will take.
    void ShowPicture(const cDib& picture, bool isPreview = false);
    // Fitting again on a resize reads the source, which must then be alive and unchanged;
    // nullptr while long work owns it.
    void SetSource(const cDib* source) { source_ = source; }
    // Called after a frame with a picture on screen has been drawn.
    std::function<void()> onPainted;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const cDib* source_ = nullptr;
    cDib shown_;  // the fitted picture
    int left_ = 0, top_ = 0;
};

}  // namespace quorbel
