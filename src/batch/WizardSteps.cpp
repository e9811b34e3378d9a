#include "batch/WizardSteps.h"

#include <algorithm>
#include <filesystem>

#include "batch/FolderScan.h"
#include "settings/AppFolders.h"
#include "core/text/NumericText.h"
#include "settings/SettingsStore.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

constexpr JobPage kPages[] = {
    {"Resize", "Batch Optimizer", "Tutorial Resizing Pictures.htm", "We are now ready to resize the pictures!"},
    {"Email", "Multi Email Send", "Tutorial Multi Email Wizard.htm", "We are now ready to e-mail the pictures!"},
    {"Web", "Web Slide Show Creator", "Web Slide Show Wizard Folder.htm",
     "We are now ready to create the web slide show!"},
    {"CD", "CD/DVD slide show creator", "CD Slide Show Wizard.htm",
     "We are now ready to create the CD/DVD slide show!"},
};

bool FolderExists(const std::string& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::is_directory(path, ec);
}

// Characters, not bytes: a name typed with accents is refused for its characters, not its length.
size_t CharacterCount(std::string_view text) {
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

bool NameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
           c == ' ';
}

bool Refuse(MessageBox& messages, const char* text) {
    messages.Show(text);
    return false;
}

}  // namespace

const JobPage& JobPageFor(std::string_view word) {
    for (const JobPage& page : kPages)
        if (EqualsIgnoreCase(word, page.word)) return page;
    return kPages[0];
}

bool CheckFolderStep(FolderStepValues& v, MessageBox& messages) {
    if (!FolderExists(v.source))
        return Refuse(messages,
                      "The folder you have chosen to resize pictures from does not appear to exist, please check "
                      "to see that you have entered the correct path to the folder.");
    if (v.targetShown && !FolderExists(v.target))
        return Refuse(messages,
                      "The folder you have chosen to save the newly resized pictures too does not appear to "
                      "exist, please check to see that you have entered the correct path to the folder");
    if (v.rename && v.newName.empty())
        return Refuse(messages, "Please add a name in the New Name text box or uncheck Rename checkbox.");
    v.source = WithTrailingSlash(v.source);
    if (v.targetShown) v.target = WithTrailingSlash(v.target);
    if (v.targetShown && ToLowerAscii(v.source) == ToLowerAscii(v.target) &&
        messages.Show("Warning! The Source folder is the same as the Target folder! You may overwrite your "
                      "original files in this folder. Do you wish to proceed? Select 'Yes' to continue or 'No' "
                      "to return to folder choices.",
                      MsgButtons::YesNo) != MsgResult::Yes)
        return false;
    if (!v.newName.empty()) {
        if (CharacterCount(v.newName) > 255) return Refuse(messages, "Name too long, please shorten and try again.");
        if (!std::all_of(v.newName.begin(), v.newName.end(), NameCharacter))
            return Refuse(messages,
                          "The New Name contains characters that cannot be used to create files or folders.");
    }
    SaveSetting(kAppName, "MultiEdit", "Source", v.source);
    if (v.targetShown) SaveSetting(kAppName, "MultiEdit", "Target", v.target);
    SaveSetting(kAppName, "Settings", "Rename Name", v.newName);
    return true;
}

bool CheckSizeStep(const SizeStepValues& v, MessageBox& messages) {
    if (!ParseNumericText(v.height))
        return Refuse(messages, "The Height value does not appear to be valid please check it and try again");
    if (!ParseNumericText(v.width))
        return Refuse(messages, "The Width value does not appear to be valid please check it and try again");
    if (v.outputType.empty())
        return Refuse(messages, "The Image Type value does not appear to be valid please check it and try again");
    if (v.qualityName.empty())
        return Refuse(messages,
                      "The the JPEG quick select quality value does not appear to be valid please check it and try "
                      "again");
    if (v.qualityValue.empty() || !ParseNumericText(v.qualityValue))
        return Refuse(messages, "The JPEG quality value does not appear to be valid please check it and try again");
    return true;
}

}  // namespace quorbel
