#pragma once
// The program's start, in its fixed order: undo table, data folder, version, codec
// registry, main window with the remembered size, the update question once per user, the
// welcome window, and the welcome choice acted on.
#include <cstdint>

#include "core/MessageBox.h"
#include "editor/EditorModel.h"
#include "editor/Welcome.h"

namespace quorbel {

class StartUpHost {
public:
    virtual ~StartUpHost() = default;
    // Creates and shows the main window (not modal) and hands over its model.
    virtual EditorModel& ShowMainWindow() = 0;
    // Lays the main window's panels out and lets the window draw.
    virtual void LayOut() {}
    // The update check window, after a Yes to the update question.
    virtual void OpenUpdateCheck() {}
    // Shows the welcome window modally; returns the choice made there.
    virtual WelcomeChoice ShowWelcome(EditorModel& editor) = 0;
};

struct StartUpResult {
    uintptr_t codecToken = 0;
    bool codecsStarted = false;
    WelcomeChoice choice = WelcomeChoice::None;
};

StartUpResult RunStartUp(UndoHistory& undo, StartUpHost& host, MessageBox& messages, int major, int minor,
                         int revision);

}  // namespace quorbel
