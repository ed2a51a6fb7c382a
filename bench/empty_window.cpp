#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

namespace {

/// About what the program's own window takes up, so that both hold the same number of pixels.
constexpr QSize kProgramWindow{880, 620};

}  // namespace

// The least that a program with a main window is; what it costs is the toolkit's and the system's share.
// With an argument the window has one menu as well: the least that a window with any text in it costs.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(kProgramWindow);
    if (QApplication::arguments().size() > 1)
        window.menuBar()->addMenu(QStringLiteral("File"));
    window.show();
    return QApplication::exec();
}
