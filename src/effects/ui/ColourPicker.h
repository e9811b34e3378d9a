#pragma once
// One colour setting as a row of a grid: caption and a swatch button that opens the
// colour chooser.
#include <QObject>
#include <QString>

#include "imaging/Colour.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace quorbel {

class ColourPicker : public QObject {
    Q_OBJECT
public:
    // Adds the caption and the swatch to grid row `row`, the swatch spanning two columns.
    ColourPicker(QGridLayout* grid, int row, QObject* parent = nullptr);

    void SetCaption(const QString& caption);
    void SetColour(ColorRef colour);
    ColorRef Colour() const { return colour_; }
    void SetVisible(bool visible);
    void SetEnabled(bool enabled);
    bool IsVisible() const;

    QLabel* Label() const { return label_; }
    QPushButton* Swatch() const { return swatch_; }

signals:
    void colourChanged(ColorRef colour);

private:
    void Choose();

    QLabel* label_;
    QPushButton* swatch_;
    ColorRef colour_ = 0;
};

}  // namespace quorbel
