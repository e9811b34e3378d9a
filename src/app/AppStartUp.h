#pragma once
// The desktop program's start: the Qt main window and welcome window behind the start-up
// sequence.
#include <memory>
#include <string>

#include "editor/StartUp.h"

namespace quorbel {

class frmEditor;

class AppStartUp : public StartUpHost {
public:
    AppStartUp(UndoHistory& undo, std::string helpFolder);
    ~AppStartUp() override;
    EditorModel& ShowMainWindow() override;
    void LayOut() override;
    WelcomeChoice ShowWelcome(EditorModel& editor) override;
    frmEditor* Window() const { return window_.get(); }

private:
    UndoHistory& undo_;
    std::string helpFolder_;
    std::unique_ptr<frmEditor> window_;
};

}  // namespace quorbel
