#include "editor/Welcome.h"

#include "settings/AppFolders.h"
#include "settings/HelpFile.h"
#include "settings/SettingsStore.h"
#include "editor/EditorTexts.h"

namespace quorbel {

WelcomeModel::WelcomeModel(EditorModel& editor, Desktop& desktop, std::string helpFolder)
    : editor_(editor), desktop_(desktop), helpFolder_(std::move(helpFolder)) {}

void WelcomeModel::Press(WelcomeButton button) {
    switch (button) {
        case WelcomeButton::Open:
            choice_ = WelcomeChoice::Open;
            editor_.SetChanged(false);
            break;
        case WelcomeButton::LastEdited:
            choice_ = WelcomeChoice::LastEdited;
            break;
        case WelcomeButton::GettingStarted:
            choice_ = WelcomeChoice::GettingStarted;
            desktop_.OpenHelp(helpFolder_, std::string(kHelpTopicGettingStarted));
            break;
        case WelcomeButton::Tutorials:
            desktop_.OpenHelp(helpFolder_, std::string(kHelpTopicTutorialResizing));
            break;
        case WelcomeButton::BatchResize:
            editor_.Dispatch(cmd::BatchResize);
            break;
        case WelcomeButton::Close:
            choice_ = WelcomeChoice::None;
            editor_.SetChanged(false);
            break;
        case WelcomeButton::WebSite:
            desktop_.OpenWebPage(std::string(kHomePage));
            break;
    }
    Close();
}

void WelcomeModel::Close() {
    if (closed_) return;
    closed_ = true;
    if (!showAtStartup) SaveSetting(kAppName, "Welcome", "Show", "0");
}

}  // namespace quorbel
