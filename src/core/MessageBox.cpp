#include "core/MessageBox.h"

namespace quorbel {

namespace {
MsgReply FirstButton(const MsgRequest& request) {
    switch (request.buttons) {
        case MsgButtons::AbortRetryIgnore: return {MsgResult::Abort, false};
        case MsgButtons::YesNoCancel:
        case MsgButtons::YesNo: return {MsgResult::Yes, false};
        case MsgButtons::RetryCancel: return {MsgResult::Retry, false};
        default: return {MsgResult::OK, false};
    }
}
}  // namespace

MsgReply SilentMessageBox::Ask(const MsgRequest& request) { return FirstButton(request); }

MsgReply ScriptedMessageBox::Ask(const MsgRequest& request) {
    shown_.push_back(request);
    if (!answers_.empty()) {
        const MsgReply reply = answers_.front();
        answers_.pop_front();
        return reply;
    }
    return FirstButton(request);
}

std::vector<std::string> ScriptedMessageBox::Texts() const {
    std::vector<std::string> texts;
    for (const MsgRequest& r : shown_) texts.push_back(r.text);
    return texts;
}

}  // namespace quorbel
