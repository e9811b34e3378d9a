// Quorbel, the desktop program.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quorbel");
    QMainWindow window;
    window.setWindowTitle("Quorbel");
    window.resize(900, 640);
    window.show();
    return QApplication::exec();
}
