#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <functional>
#include <list>
#include <map>
#include <stdexcept>
#include <thread>

#include "app/frm_main.h"
#include "form/guard.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "tour/simulated_unit.h"
#include "tour/tour.h"
#include "tour/units.h"

namespace {

using namespace quorvex;
using namespace quorvex::tour;

/// The folder of everything that the tour makes, empty of what an earlier one has left.
QDir makeFolder(const QString& path) {
    QDir folder(path);
    for (const char* name : {"ports", "config"}) {
        QDir(folder.filePath(name)).removeRecursively();
        if (!folder.mkpath(name))
            throw std::runtime_error("Cannot make the folder " + folder.filePath(name).toStdString());
    }
    const QStringList made = folder.entryList({"[0-9][0-9]-*.png", "*.bpc", "*.bmp"}, QDir::Files);
    for (const QString& file : made)
        folder.remove(file);
    return QDir(folder.absolutePath());
}

/// Keeps what the pictures show from depending on chance.
void holdStill(QWidget& window) {
    QApplication::setCursorFlashTime(0);
    const QRect screen = window.screen()->availableGeometry();
    window.move(screen.topLeft() + QPoint(40, 40));
    QCursor::setPos(screen.bottomRight());
}

int takeTour(const QDir& folder) {
    std::list<SimulatedUnit> units;
    std::map<std::string, std::function<std::string()>> held;
    const QString ports = folder.filePath("ports");
    for (const Unit* unit :
         {&rm5Beltpack(), &kirkBeltpack(), &rm5Antenna(), &kirkAntenna(), &displayBeltpack()}) {
        const SimulatedUnit& simulated =
            units.emplace_back(QApplication::applicationDirPath() + QStringLiteral("/quorvex-simulator"),
                               unit->arguments(ports));
        held[unit->port] = [&simulated, dump = unit->dump(ports)] { return simulated.holds(dump); };
    }

    QtEventLoop loop;
    QtSerialPort port;
    QtSettingsStore store;
    FrmMain window({port, loop, store});
    port.onLost([&window] { window.portLost(); });
    Tour tour(window, folder, {folder.path().toStdString(), [&held](const std::string& unitPort) {
                                   return held.at(unitPort)();
                               }});
    setProgramEnd([&tour](int status) { tour.programEnded(status); });

    holdStill(window);
    window.show();
    QTimer::singleShot(0, &window, [&window] { window.load(); });
    std::thread visitor([&tour] {
        const int status = tour.take();
        QMetaObject::invokeMethod(
            qApp, [status] { QApplication::exit(status); }, Qt::QueuedConnection);
    });
    const int status = QApplication::exec();
    visitor.join();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs(
            "Usage: quorvex-tour FOLDER\n\nTakes a tour through the main window and leaves its pictures in "
            "FOLDER.\n",
            stderr);
        return 2;
    }
    try {
        const QDir folder = makeFolder(QString::fromLocal8Bit(argv[1]));
        qputenv("QUORVEX_PORTS", folder.filePath("ports").toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", folder.filePath("config").toLocal8Bit());
        const QApplication application(argc, argv);
        QApplication::setApplicationName(QStringLiteral("quorvex-tour"));
        return takeTour(folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvex-tour: %s\n", error.what());
        return 1;
    }
}
