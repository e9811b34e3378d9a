#pragma once
// One numeric setting as a row of a grid: caption, slider and a box showing the value,
// kept in step with each other.
#include <QObject>
#include <QString>

class QGridLayout;
class QLabel;
class QSlider;
class QSpinBox;

namespace quorbel {

class SliderRow : public QObject {
    Q_OBJECT
public:
    // Adds the row's three controls to grid row `row`; the grid's widget owns them.
    SliderRow(QGridLayout* grid, int row, QObject* parent = nullptr);

    // Caption (shown with a colon), range and value at once; no valueChanged is raised.
    void Set(const QString& caption, int minimum, int maximum, int value);
    void SetValue(int value);
    void SetVisible(bool visible);
    void SetEnabled(bool enabled);

    int Value() const;
    int Minimum() const;
    int Maximum() const;
    QString Caption() const;
    bool IsVisible() const;

    QLabel* Label() const { return label_; }
    QSlider* Slider() const { return slider_; }
    QSpinBox* Box() const { return box_; }

signals:
    void valueChanged(int value);

private:
    QLabel* label_;
    QSlider* slider_;
    QSpinBox* box_;
    QString caption_;
};

}  // namespace quorbel
