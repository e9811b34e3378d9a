#include "effects/ui/ColourPicker.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>

#include "imaging/ui/DibImage.h"

namespace quorbel {

ColourPicker::ColourPicker(QGridLayout* grid, int row, QObject* parent)
    : QObject(parent), label_(new QLabel), swatch_(new QPushButton) {
    label_->setBuddy(swatch_);
    swatch_->setIconSize(QSize(28, 14));
    grid->addWidget(label_, row, 0);
    grid->addWidget(swatch_, row, 1, 1, 2, Qt::AlignLeft);
    connect(swatch_, &QPushButton::clicked, this, &ColourPicker::Choose);
    SetColour(0);
}

void ColourPicker::SetCaption(const QString& caption) { label_->setText(caption); }

void ColourPicker::SetColour(ColorRef colour) {
    colour_ = colour;
    QPixmap chip(swatch_->iconSize());
    chip.fill(ToQColor(colour));
    {
        QPainter painter(&chip);
        painter.setPen(swatch_->palette().color(QPalette::Mid));
        painter.drawRect(chip.rect().adjusted(0, 0, -1, -1));
    }
    swatch_->setIcon(chip);
    swatch_->setText(QStringLiteral("%1, %2, %3").arg(RedOf(colour)).arg(GreenOf(colour)).arg(BlueOf(colour)));
    emit colourChanged(colour);
}

void ColourPicker::Choose() {
    const QColor chosen = QColorDialog::getColor(ToQColor(colour_), swatch_->window(), label_->text());
    if (chosen.isValid()) SetColour(ToColorRef(chosen));
}

void ColourPicker::SetVisible(bool visible) {
    label_->setVisible(visible);
    swatch_->setVisible(visible);
}

void ColourPicker::SetEnabled(bool enabled) {
    label_->setEnabled(enabled);
    swatch_->setEnabled(enabled);
}

bool ColourPicker::IsVisible() const { return !swatch_->isHidden(); }

}  // namespace quorbel
