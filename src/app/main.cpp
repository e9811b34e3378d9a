// Quorbel, the desktop program. No command-line argument opens a picture: the program starts
// as the user left it, through the start-up sequence.
#include <QApplication>

#include "core/ProgramData.h"
#include "output/CodecRegistry.h"
#include "platform/ui/QtMessageBox.h"
#include "editor/StartUp.h"
#include "editor/UndoHistory.h"
#include "app/AppStartUp.h"
#include "editor/ui/frmEditor.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quorbel");

    quorbel::UndoHistory undo;
    quorbel::AppStartUp host(undo, (quorbel::FindProgramData(quorbel::ProgramFolder()) / "help").string());
    quorbel::QtMessageBox messages;
    const quorbel::StartUpResult started =
        quorbel::RunStartUp(undo, host, messages, QUORBEL_VERSION_MAJOR, QUORBEL_VERSION_MINOR, QUORBEL_REVISION);
    const int code = host.Window() && host.Window()->isVisible() ? QApplication::exec() : 0;
    if (started.codecsStarted) quorbel::GdiplusShutdown(started.codecToken);
    return code;
}
