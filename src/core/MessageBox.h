#pragma once
// Modal questions and messages to the user. Every text the program shows goes through
// here, so tests can answer the questions in order and read the exact texts.
#include <deque>
#include <string>
#include <vector>

namespace quorbel {

enum class MsgButtons { OK, OKCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgResult { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct MsgRequest {
    std::string text;
    std::string title;  // empty: the program's name
    MsgButtons buttons = MsgButtons::OK;
    MsgIcon icon = MsgIcon::None;
    bool noShowTick = false;  // shows the "Do not show this again." tick
};

struct MsgReply {
    MsgResult result = MsgResult::OK;
    bool noShowTicked = false;
};

inline constexpr const char* kDoNotShowAgain = "Do not show this again.";

class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual MsgReply Ask(const MsgRequest& request) = 0;

    // The common cases.
    MsgResult Show(const std::string& text, MsgButtons buttons = MsgButtons::OK,
                   MsgIcon icon = MsgIcon::None, const std::string& title = {}) {
        return Ask({text, title, buttons, icon, false}).result;
    }
};

// Shows nothing and answers with the first button: for callers without a user to ask (the
// command-line batch), which report failures their own way.
class SilentMessageBox final : public MessageBox {
public:
    MsgReply Ask(const MsgRequest& request) override;
};

// For tests: records every request and answers from a queue; with the queue empty it
// answers with the first button of the box (OK, Abort, Yes or Retry).
class ScriptedMessageBox : public MessageBox {
public:
    MsgReply Ask(const MsgRequest& request) override;

    void Answer(MsgResult result, bool tick = false) { answers_.push_back({result, tick}); }
    const std::vector<MsgRequest>& Shown() const { return shown_; }
    std::vector<std::string> Texts() const;
    void Clear() { shown_.clear(); }

private:
    std::deque<MsgReply> answers_;
    std::vector<MsgRequest> shown_;
};

}  // namespace quorbel
