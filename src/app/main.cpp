// Quorbel, the desktop program. No command-line argument opens a picture: the program starts
// as the user left it, through the start-up sequence.
#include <QApplication>

#include "output/CodecRegistry.h"
#include "platform/QtMessageBox.h"
#include "shell/editor/StartUp.h"
#include "shell/editor/UndoHistory.h"
#include "shell/ui/AppStartUp.h"
#include "shell/ui/frmEditor.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quorbel");

    quorbel::UndoHistory undo;
    quorbel::AppStartUp host(undo, quorbel::FindHelpFolder(QApplication::applicationDirPath().toStdString()));
    quorbel::QtMessageBox messages;
    const quorbel::StartUpResult started =
        quorbel::RunStartUp(undo, host, messages, QUORBEL_VERSION_MAJOR, QUORBEL_VERSION_MINOR, QUORBEL_REVISION);
    const int code = host.Window() && host.Window()->isVisible() ? QApplication::exec() : 0;
    if (started.codecsStarted) quorbel::GdiplusShutdown(started.codecToken);
    return code;
}
