#include "editor/ui/PictureCanvas.h"

#include <QImage>
#include <QPainter>

namespace quorbel {

PictureCanvas::PictureCanvas(QWidget* parent) : QWidget(parent) {
    setMinimumSize(320, 240);
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureCanvas::ShowPicture(const cDib& picture, bool isPreview) {
    shown_.Destroy();
    if (picture.hDIB() && width() > 0 && height() > 0) {
        int32_t left, top, w, h;
        picture.GetBestFitInfo(width(), height(), isPreview, left, top, w, h);
        if (w > 0 && h > 0 && shown_.Create(w, h)) {
            picture.Stretch(shown_.hDC(), 0, 0, w, h, 0, 0, picture.Width(), picture.Height(), StretchMode::Halftone);
            // The screen format wants the unused byte opaque.
            for (int y = 0; y < h; ++y) {
                uint8_t* row = shown_.Row(y);
                for (int x = 0; x < w; ++x) row[x * 4 + 3] = 0xFF;
            }
            left_ = (width() - w) / 2;
            top_ = (height() - h) / 2;
        }
    }
    update();
}

void PictureCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    if (!shown_.hDIB()) return;
    // The buffer's memory as it lies (bottom row first), drawn upside down: no copy.
    const QImage image(shown_.lpBits(), shown_.Width(), shown_.Height(), shown_.BytesPerScanLine(),
                       QImage::Format_RGB32);
    painter.translate(left_, top_ + shown_.Height());
    painter.scale(1, -1);
    painter.drawImage(0, 0, image);
    if (onPainted) onPainted();
}

void PictureCanvas::resizeEvent(QResizeEvent*) {
    if (source_) ShowPicture(*source_);
}

}  // namespace quorbel
