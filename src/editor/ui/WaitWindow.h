#pragma once
// The small window that says what is going on while long work runs.
#include <QDialog>

class QLabel;
class QTimer;

namespace quorbel {

class WaitWindow : public QDialog {
    Q_OBJECT
public:
    explicit WaitWindow(QWidget* parent);
    // Shows the text after a short delay, so quick work never flashes a window.
    void ShowText(const QString& text);
    void Dismiss();

    QLabel* lblStatus;

private:
    QTimer* delay_;
};

}  // namespace quorbel
