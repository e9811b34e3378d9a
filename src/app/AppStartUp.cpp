#include "app/AppStartUp.h"

#include <QApplication>

#include "app/AppWindows.h"
#include "editor/ui/frmEditor.h"
#include "editor/ui/frmWelcome.h"

namespace quorbel {

AppStartUp::AppStartUp(UndoHistory& undo, std::string helpFolder) : undo_(undo), helpFolder_(std::move(helpFolder)) {}

AppStartUp::~AppStartUp() = default;

EditorModel& AppStartUp::ShowMainWindow() {
    window_ = std::make_unique<frmEditor>(undo_, helpFolder_, [](frmEditor& window) {
        return std::make_unique<AppWindows>(window);
    });
    window_->show();
    return window_->Model();
}

void AppStartUp::LayOut() { QApplication::processEvents(); }

WelcomeChoice AppStartUp::ShowWelcome(EditorModel& editor) {
    frmWelcome welcome(editor, window_->DesktopServices(), helpFolder_, window_.get());
    welcome.exec();
    return welcome.Choice();
}

}  // namespace quorbel
