#include "effects/ui/SliderRow.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <algorithm>

namespace quorbel {

SliderRow::SliderRow(QGridLayout* grid, int row, QObject* parent)
    : QObject(parent), label_(new QLabel), slider_(new QSlider(Qt::Horizontal)), box_(new QSpinBox) {
    label_->setBuddy(slider_);
    slider_->setMinimumWidth(160);
    box_->setAlignment(Qt::AlignRight);
    grid->addWidget(label_, row, 0);
    grid->addWidget(slider_, row, 1);
    grid->addWidget(box_, row, 2);
    connect(slider_, &QSlider::valueChanged, this, [this](int v) {
        box_->setValue(v);
        emit valueChanged(v);
    });
    connect(box_, &QSpinBox::valueChanged, slider_, &QSlider::setValue);
}

void SliderRow::Set(const QString& caption, int minimum, int maximum, int value) {
    const QSignalBlocker a(slider_), b(box_);
    caption_ = caption;
    label_->setText(caption + QLatin1Char(':'));
    slider_->setRange(minimum, maximum);
    box_->setRange(minimum, maximum);
    slider_->setValue(value);
    box_->setValue(value);
    // Page steps of about a tenth of the range, so Page Up/Down make visible moves.
    slider_->setPageStep(std::max(1, (maximum - minimum) / 10));
    // A signed setting gets a tick at 0, so the neutral position can be found by eye.
    const bool signedRange = minimum < 0 && maximum > 0;
    slider_->setTickPosition(signedRange ? QSlider::TicksBelow : QSlider::NoTicks);
    slider_->setTickInterval(signedRange ? -minimum : 0);
}

void SliderRow::SetValue(int value) { slider_->setValue(value); }

void SliderRow::SetVisible(bool visible) {
    label_->setVisible(visible);
    slider_->setVisible(visible);
    box_->setVisible(visible);
}

void SliderRow::SetEnabled(bool enabled) {
    label_->setEnabled(enabled);
    slider_->setEnabled(enabled);
    box_->setEnabled(enabled);
}

int SliderRow::Value() const { return slider_->value(); }
int SliderRow::Minimum() const { return slider_->minimum(); }
int SliderRow::Maximum() const { return slider_->maximum(); }
QString SliderRow::Caption() const { return caption_; }
bool SliderRow::IsVisible() const { return !slider_->isHidden(); }

}  // namespace quorbel
