#include "output/WarningQuestion.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace quorbel {

OverwriteState& Overwrite() {
    static OverwriteState state;
    return state;
}

std::string OverwriteQuestionText(const std::string& name) {
    // The doubled full stop after "file" is the wording users know.
    return "The picture '" + name + "' exists.\r\nDo you want to replace it?\r\n"
           "Select 'Yes' to replace the picture.\r\nor 'No' to not replace the file..\r\n"
           "Click 'Yes to All' to replace all files,\r\nSelect 'No to All' to not replace any files.";
}

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// Replaces every occurrence of what, compared without case, by with.
std::string ReplaceNoCase(const std::string& text, const std::string& what, const std::string& with) {
    if (what.empty()) return text;
    std::string out;
    size_t i = 0;
    while (i < text.size()) {
        const bool match = i + what.size() <= text.size() &&
                           std::equal(what.begin(), what.end(), text.begin() + static_cast<ptrdiff_t>(i),
                                      [](char a, char b) { return Lower(a) == Lower(b); });
        if (match) {
            out += with;
            i += what.size();
        } else {
            out += text[i++];
        }
    }
    return out;
}

}  // namespace

WarningQuestion::WarningQuestion(OverwriteState& state, MessageBox& messages, std::string message,
                                 std::string targetPath, std::string fileName)
    : state_(state), messages_(messages), message_(std::move(message)), targetPath_(std::move(targetPath)),
      fileName_(std::move(fileName)) {}

void WarningQuestion::Choose(WarningOption option) {
    option_ = option;
    renameText_.clear();
}

void WarningQuestion::Yes() {
    if (option_ == WarningOption::Rename) {
        if (renameText_.empty()) return;
        const std::string renamed = ReplaceNoCase(targetPath_, fileName_, renameText_);
        if (access(renamed.c_str(), F_OK) == 0) {
            messages_.Show(std::string(kFileExistsTryAnother), MsgButtons::OK, MsgIcon::None);
            return;
        }
        targetPath_ = renamed;
        fileName_ = renameText_;
    }
    const bool skip = option_ == WarningOption::Skip;
    state_.SkipThis = skip;
    state_.WriteThis = !skip;
    closed_ = true;
}

void WarningQuestion::No() {
    state_.SkipThis = true;
    closed_ = true;
}

void WarningQuestion::YesToAll() {
    if (!YesToAllEnabled()) return;  // the button is disabled while renaming
    if (option_ == WarningOption::Skip) {
        state_.YesToAll = false;
        state_.WriteThis = false;
        state_.NoToAll = true;
        state_.SkipThis = true;
    } else {
        state_.YesToAll = true;
        state_.WriteThis = true;
    }
    closed_ = true;
}

void WarningQuestion::NoToAll() {
    state_.NoToAll = true;
    state_.SkipThis = true;
    closed_ = true;
}

}  // namespace quorbel
