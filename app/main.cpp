#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "app/end_signals.h"
#include "app/frm_main.h"
#include "form/guard.h"
#include "form/message_box.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "link/trace_file.h"
#include "link/trace_port.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

/// What passes over the port goes into a file, too.
struct Trace {
    Trace(quorvex::SerialPort& traced, const quorvex::EventLoop& loop, const std::string& path)
        : file(path, tellLater), port(traced, loop, [this](const std::string& line) { file.line(line); }) {}

    static void tellLater(const std::string& text) {
        // Not inside an exchange, and not before the window is there.
        QMetaObject::invokeMethod(
            qApp, [text] { quorvex::showMessageBox(text, quorvex::Icon::critical); }, Qt::QueuedConnection);
    }

    quorvex::TraceFile file;
    quorvex::TracePort port;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quorvex-config"));

    quorvex::QtEventLoop loop;
    quorvex::QtSerialPort port;
    quorvex::QtSettingsStore store;
    std::optional<Trace> trace;
    if (const QByteArray path = qgetenv("QUORVEX_TRACE"); !path.isEmpty())
        trace.emplace(port, loop, path.toStdString());
    quorvex::FrmMain window({trace ? trace->port : static_cast<quorvex::SerialPort&>(port), loop, store});
    port.onLost([&] {
        if (trace)
            trace->port.lost();
        window.portLost();
    });
    store.onFailure([](const std::string& text) { quorvex::showMessageBox(text, quorvex::Icon::critical); });
    quorvex::setProgramEnd([&](int status) {
        window.closePort();
        std::fflush(nullptr);
#ifdef __SANITIZE_ADDRESS__
        __lsan_do_leak_check();  // which _Exit leaves out
#endif
        std::_Exit(status);
    });

    const quorvex::EndSignals endSignals;

    window.show();
    window.load();
    return QApplication::exec();
}
