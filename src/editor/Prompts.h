#pragma once
// The unsaved-changes question, asked before the picture is replaced or the window closes.
#include <string_view>

#include "core/MessageBox.h"

namespace quorbel {

// The wording is the program's own and is kept exactly ("or'No'" has no blank).
inline constexpr std::string_view kPromptSaveIfChangedText =
    "The picture appears to have changed.\r\n"
    "Would you like to save it first? Select 'Yes' to save changes,\r\n"
    "or'No' to continue without saving changes.";

// Asks only when the picture-changed flag is set; true when the user wants it saved first.
bool PromptSaveIfChanged(bool pictureChanged, MessageBox& box);

}  // namespace quorbel
