#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "app/end_signals.h"
#include "app/frm_main.h"
#include "form/guard.h"
#include "form/message_box.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quorvex-config"));

    quorvex::QtEventLoop loop;
    quorvex::QtSerialPort port;
    quorvex::QtSettingsStore store;
    quorvex::FrmMain window({port, loop, store});
    port.onLost([&window] { window.portLost(); });
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
