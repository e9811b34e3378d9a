#pragma once
// The welcome window without its window: its buttons, the choice it hands to start-up and
// the "Show This Welcome Screen at Startup" tick.
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Desktop.h"
#include "editor/EditorModel.h"

namespace quorbel {

inline constexpr std::string_view kShowWelcomeCaption = "Show This Welcome Screen at Startup";
inline constexpr std::string_view kHomePage = "https://quorbel.example.org/";

enum class WelcomeChoice : int16_t { None = 0, Open = 1, LastEdited = 2, GettingStarted = 3 };
enum class WelcomeButton { Open, LastEdited, GettingStarted, Tutorials, BatchResize, Close, WebSite };

class WelcomeModel {
public:
    WelcomeModel(EditorModel& editor, Desktop& desktop, std::string helpFolder);

    // Every button closes the window.
    void Press(WelcomeButton button);
    // Closing, by a button or the window's own close box: a cleared tick writes
    // ("Welcome", "Show") = "0".
    void Close();

    bool showAtStartup = true;  // chkShowWelcome
    WelcomeChoice Choice() const { return choice_; }
    bool Closed() const { return closed_; }

private:
    EditorModel& editor_;
    Desktop& desktop_;
    std::string helpFolder_;
    WelcomeChoice choice_ = WelcomeChoice::None;
    bool closed_ = false;
};

}  // namespace quorbel
