#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

// The least that a program with a main window is; what it costs is the toolkit's and the system's share.
// Arguments: width and height of the window, so that it holds as many pixels as the one it is compared with;
// a third one gives it a menu: the least that a window with any text in it costs.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QMainWindow window;
    window.resize(arguments.value(1).toInt(), arguments.value(2).toInt());
    if (arguments.size() > 3)
        window.menuBar()->addMenu(QStringLiteral("File"));
    window.show();
    return QApplication::exec();
}
