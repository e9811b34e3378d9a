#pragma once
// A picture box for previews: shows a small picture centred, at its own size. Holding a
// mouse button down on it shows the picture before the change, when one is given; in
// picking mode clicks report the picture pixel instead.
#include <QFrame>
#include <QImage>
#include <QPoint>

#include "imaging/cDib.h"

namespace quorbel {

class PreviewBox : public QFrame {
    Q_OBJECT
public:
    explicit PreviewBox(QWidget* parent = nullptr);

    void SetPicture(const cDib& picture);
    const QImage& Image() const { return image_; }
    // The picture to compare with while a button is held down (same size); empty for none.
    void SetBefore(const cDib& picture);

    // With picking on the cursor becomes a cross and clicks raise picked.
    void SetPicking(bool on);
    bool Picking() const { return picking_; }

    // The picture pixel under a point of the box; (-1, -1) off the picture.
    QPoint PixelAt(QPoint position) const;
    // Where the picture is drawn, in the box's coordinates.
    QRect ImageRect() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void picked(QPoint pixel, Qt::MouseButton button);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void UpdateToolTip();

    QImage image_;
    QImage before_;
    bool picking_ = false;
    bool holding_ = false;
};

}  // namespace quorbel
