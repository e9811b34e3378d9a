#pragma once
// Message boxes as real Qt dialogs.
#include "core/MessageBox.h"

class QWidget;

namespace quorbel {

class QtMessageBox : public MessageBox {
public:
    explicit QtMessageBox(QWidget* parent = nullptr) : parent_(parent) {}
    MsgReply Ask(const MsgRequest& request) override;
    void SetParent(QWidget* parent) { parent_ = parent; }

private:
    QWidget* parent_;
};

}  // namespace quorbel
