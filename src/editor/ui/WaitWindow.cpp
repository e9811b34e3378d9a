#include "editor/ui/WaitWindow.h"

#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace quorbel {

WaitWindow::WaitWindow(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
    setWindowTitle("Quorbel");
    setModal(false);  // the main window keeps drawing and can still be moved
    auto* layout = new QVBoxLayout(this);
    lblStatus = new QLabel(this);
    lblStatus->setMinimumWidth(280);
    auto* bar = new QProgressBar(this);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    layout->addWidget(lblStatus);
    layout->addWidget(bar);
    delay_ = new QTimer(this);
    delay_->setSingleShot(true);
    delay_->setInterval(250);
    connect(delay_, &QTimer::timeout, this, [this] {
        adjustSize();
        if (parentWidget()) move(parentWidget()->geometry().center() - rect().center());
        show();
        raise();
    });
}

void WaitWindow::ShowText(const QString& text) {
    lblStatus->setText(text);
    if (isVisible()) adjustSize();
    else delay_->start();
}

void WaitWindow::Dismiss() {
    delay_->stop();
    hide();
}

}  // namespace quorbel
