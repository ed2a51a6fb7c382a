#include "tool/session.h"

#include <cstdio>

#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "link/qt_text.h"
#include "link/runtime_fault.h"
#include "link/stop_signals.h"
#include "tool/ports_command.h"
#include "tool/progress.h"

namespace quorvex::tool {

namespace {

/// What the window program would open; nothing is stored.
NamedPort storedPort() {
    try {
        return portNumbered(QtSettingsStore().number(kComPortKey, "1"));
    } catch (const RuntimeFault& fault) {
        throw Failure(Status::port,
                      QStringLiteral("%1. Say which port: --port COM1.").arg(fromUtf8(fault.what())));
    }
}

void open(QtSerialPort& port, const NamedPort& named) {
    constexpr int kTheOne = 1;
    try {
        port.open(kTheOne);
    } catch (const RuntimeFault& fault) {
        throw Failure(Status::port,
                      QStringLiteral("%1 cannot be opened. %2")
                          .arg(named.name, named.device.description(fromUtf8(fault.what()))
                                               .replace(QLatin1Char('\n'), QLatin1String(": "))));
    }
}

}  // namespace

Result runJob(const UnitJob& job, PlainWindow& window) {
    Result result;
    try {
        result = job(window);
    } catch (const Failure& failure) {
        result.status = failure.status();
        result.problem = failure.problem();
    }
    if (result.status == Status::noAnswer && !window.isPortOpen()) {
        result.status = Status::port;
        result.problem = QStringLiteral("The connection to the port was lost. ") + window.heard.howFar();
    }
    return result;
}

Result runOnPort(const Request& request, const UnitJob& job, int& stopSignal) {
    const NamedPort named = request.has("--port") ? portNamed(request.value("--port")) : storedPort();
    QtEventLoop loop;
    QtSerialPort port([&named](int) { return named.device; });
    Progress progress;
    PlainWindow window(port, loop, [&progress](const QString& text) { progress.show(text); });
    const StopSignals signals([&](int number) {
        stopSignal = number;
        window.link.closePort();
    });
    open(port, named);
    Result result = runJob(job, window);
    result.object.insert(QStringLiteral("port"), named.name);
    if (stopSignal != 0 && result.status == Status::port)
        result.problem = QStringLiteral("Interrupted. ") + window.heard.howFar();
    else
        stopSignal = 0;  // it came too late to change anything
    return result;
}

}  // namespace quorvex::tool
