#include "platform/ui/QtMessageBox.h"

#include <QCheckBox>
#include <QMessageBox>

namespace quorbel {
namespace {

QMessageBox::StandardButtons ButtonsOf(MsgButtons b) {
    switch (b) {
        case MsgButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
        case MsgButtons::AbortRetryIgnore: return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
        case MsgButtons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case MsgButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
        case MsgButtons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
        case MsgButtons::OK: break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon IconOf(MsgIcon i) {
    switch (i) {
        case MsgIcon::Critical: return QMessageBox::Critical;
        case MsgIcon::Question: return QMessageBox::Question;
        case MsgIcon::Exclamation: return QMessageBox::Warning;
        case MsgIcon::Information: return QMessageBox::Information;
        case MsgIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

MsgResult ResultOf(int button) {
    switch (button) {
        case QMessageBox::Cancel: return MsgResult::Cancel;
        case QMessageBox::Abort: return MsgResult::Abort;
        case QMessageBox::Retry: return MsgResult::Retry;
        case QMessageBox::Ignore: return MsgResult::Ignore;
        case QMessageBox::Yes: return MsgResult::Yes;
        case QMessageBox::No: return MsgResult::No;
        default: return MsgResult::OK;
    }
}

}  // namespace

MsgReply QtMessageBox::Ask(const MsgRequest& request) {
    QMessageBox box(IconOf(request.icon),
                    QString::fromStdString(request.title.empty() ? "Quorbel" : request.title),
                    QString::fromStdString(request.text), ButtonsOf(request.buttons), parent_);
    QCheckBox* tick = nullptr;
    if (request.noShowTick) {
        tick = new QCheckBox(QString::fromUtf8(kDoNotShowAgain));
        box.setCheckBox(tick);
    }
    const int pressed = box.exec();
    // Closing the box with Escape or the title bar counts as its cancelling button.
    MsgResult result = ResultOf(pressed);
    if (pressed == QMessageBox::NoButton || pressed == QMessageBox::Escape)
        result = request.buttons == MsgButtons::OK ? MsgResult::OK : MsgResult::Cancel;
    return {result, tick && tick->isChecked()};
}

}  // namespace quorbel
