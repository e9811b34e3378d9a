#pragma once
// What the overwrite question window does, without the window: four options, a new-name
// box, and the buttons Yes, No, Yes to All and No to All with their effect on the
// overwrite state. The Qt window only shows this model and forwards the clicks; tests
// drive it directly.
#include <string>

#include "core/MessageBox.h"
#include "output/OverwriteState.h"

namespace quorbel {

inline constexpr const char* kFileExistsTryAnother = "File Exists please try another name.";

enum class WarningOption { OverWrite, Rename, Seq, Skip };

class WarningQuestion {
public:
    // targetPath: the file that exists; fileName: its name as the saver formed it.
    WarningQuestion(OverwriteState& state, MessageBox& messages, std::string message, std::string targetPath,
                    std::string fileName);

    const std::string& Message() const { return message_; }
    // Where the picture goes when written: the target, or the renamed path.
    const std::string& TargetPath() const { return targetPath_; }

    void Choose(WarningOption option);
    WarningOption Option() const { return option_; }
    void SetRenameText(std::string text) { renameText_ = std::move(text); }
    const std::string& RenameText() const { return renameText_; }
    bool RenameVisible() const { return option_ == WarningOption::Rename; }
    bool YesToAllEnabled() const { return option_ != WarningOption::Rename; }

    void Yes();
    void No();
    void YesToAll();
    void NoToAll();
    bool Closed() const { return closed_; }

private:
    OverwriteState& state_;
    MessageBox& messages_;
    std::string message_, targetPath_, fileName_, renameText_;
    WarningOption option_ = WarningOption::OverWrite;
    bool closed_ = false;
};

// Shows the question modally and returns when it is closed (or abandoned).
class OverwriteAsker {
public:
    virtual ~OverwriteAsker() = default;
    virtual void Ask(WarningQuestion& question) = 0;
};

// "The picture '" + name + "' exists." and the rest of the question, with its CR LF breaks.
std::string OverwriteQuestionText(const std::string& name);

}  // namespace quorbel
