#pragma once
// How this folder shows a message to the user: a modal box with a fixed text, an icon and
// an OK button. The desktop program passes its message boxes; tests pass a recorder and
// read the exact texts.
#include <string>
#include <string_view>

namespace quorbel {

enum class MessageIcon : uint8_t { None, Stop, Question, Exclamation, Information };

class MessageBoxPort {
public:
    virtual ~MessageBoxPort() = default;
    virtual void Show(std::string_view text, MessageIcon icon) = 0;
};

// Shows nothing: for callers (a command-line batch) that report failures their own way.
class SilentMessages final : public MessageBoxPort {
public:
    void Show(std::string_view, MessageIcon) override {}
};

}  // namespace quorbel
