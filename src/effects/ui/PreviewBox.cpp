#include "effects/ui/PreviewBox.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "imaging/ui/DibImage.h"

namespace quorbel {

PreviewBox::PreviewBox(QWidget* parent) : QFrame(parent) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PreviewBox::SetPicture(const cDib& picture) {
    image_ = ToQImage(picture);
    updateGeometry();
    update();
}

void PreviewBox::SetBefore(const cDib& picture) {
    before_ = ToQImage(picture);
    UpdateToolTip();
}

void PreviewBox::UpdateToolTip() {
    const bool holds = !picking_ && !before_.isNull();
    setToolTip(holds ? tr("Hold the mouse button down to see the picture before the change") : QString());
}

void PreviewBox::SetPicking(bool on) {
    picking_ = on;
    UpdateToolTip();
    if (on)
        setCursor(Qt::CrossCursor);
    else
        unsetCursor();
}

QRect PreviewBox::ImageRect() const {
    if (image_.isNull()) return {};
    const QRect area = contentsRect();
    QSize size = image_.size();
    if (size.width() > area.width() || size.height() > area.height())
        size.scale(area.size(), Qt::KeepAspectRatio);
    QRect r(QPoint(0, 0), size);
    r.moveCenter(area.center());
    return r;
}

QPoint PreviewBox::PixelAt(QPoint position) const {
    const QRect r = ImageRect();
    if (r.isEmpty() || !r.contains(position)) return {-1, -1};
    const int x = (position.x() - r.left()) * image_.width() / r.width();
    const int y = (position.y() - r.top()) * image_.height() / r.height();
    return {std::min(x, image_.width() - 1), std::min(y, image_.height() - 1)};
}

QSize PreviewBox::sizeHint() const {
    // A box for an icon-sized picture still looks like a preview.
    const int f = 2 * frameWidth();
    return image_.size().expandedTo(QSize(240, 180)) + QSize(f, f);
}

// Never smaller than the preview itself: it is already shrunk to what the window can show.
QSize PreviewBox::minimumSizeHint() const { return sizeHint(); }

void PreviewBox::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        painter.fillRect(contentsRect(), palette().color(QPalette::Dark));
        const QRect r = ImageRect();
        if (!r.isEmpty()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform, r.size() != image_.size());
            const bool before = holding_ && before_.size() == image_.size();
            painter.drawImage(r, before ? before_ : image_);
        }
    }
    QFrame::paintEvent(event);
}

void PreviewBox::mousePressEvent(QMouseEvent* event) {
    if (picking_) {
        const QPoint pixel = PixelAt(event->position().toPoint());
        if (pixel.x() >= 0) {
            emit picked(pixel, event->button());
            return;
        }
    } else if (!before_.isNull()) {
        holding_ = true;
        update();
        return;
    }
    QFrame::mousePressEvent(event);
}

void PreviewBox::mouseReleaseEvent(QMouseEvent* event) {
    if (holding_ && event->buttons() == Qt::NoButton) {
        holding_ = false;
        update();
        return;
    }
    QFrame::mouseReleaseEvent(event);
}

}  // namespace quorbel
