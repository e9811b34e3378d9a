#include "shell/ui/AppStartUp.h"

#include <QApplication>
#include <filesystem>

#include "shell/ui/frmEditor.h"
#include "shell/ui/frmWelcome.h"

namespace quorbel {

std::string FindHelpFolder(const std::string& programFolder) {
    namespace fs = std::filesystem;
    std::error_code ec;
    for (const fs::path& candidate : {fs::path(programFolder) / "../share/quorbel/help",
                                     fs::path(programFolder) / "../../data/help",
#ifdef QUORBEL_SOURCE_HELP
                                     fs::path(QUORBEL_SOURCE_HELP)
#endif
         }) {
        if (fs::is_directory(candidate, ec)) return fs::weakly_canonical(candidate, ec).string();
    }
    return (fs::path(programFolder) / "help").string();
}

AppStartUp::AppStartUp(UndoHistory& undo, std::string helpFolder) : undo_(undo), helpFolder_(std::move(helpFolder)) {}

AppStartUp::~AppStartUp() = default;

EditorModel& AppStartUp::ShowMainWindow() {
    window_ = std::make_unique<frmEditor>(undo_, helpFolder_);
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
