#include "editor/Prompts.h"

#include <string>

namespace quorbel {

bool PromptSaveIfChanged(bool pictureChanged, MessageBox& box) {
    if (!pictureChanged) return false;
    return box.Show(std::string(kPromptSaveIfChangedText), MsgButtons::YesNo) == MsgResult::Yes;
}

}  // namespace quorbel
