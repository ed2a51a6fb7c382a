#include <QApplication>
#include <QMainWindow>

// The least that a program with a main window is; what it costs is the toolkit's and the system's share.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    return QApplication::exec();
}
