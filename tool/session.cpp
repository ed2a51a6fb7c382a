#include "tool/session.h"

#include <QStringList>
#include <optional>

#include "beltpack/record.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "link/qt_text.h"
#include "link/runtime_fault.h"
#include "link/stop_signals.h"
#include "link/trace_file.h"
#include "link/trace_port.h"
#include "tool/patience.h"
#include "tool/ports_command.h"
#include "tool/progress.h"

namespace quorvex::tool {

namespace {

/// What the window program would open; nothing is stored.
NamedPort storedPort() {
    try {
        QString problem;
        QtSettingsStore store;
        store.onFailure([&problem](const std::string& text) { problem = fromUtf8(text); });
        const auto number = store.number(kComPortKey, "1");
        if (!problem.isEmpty())
            throw Failure(Status::port, QStringLiteral("%1 Say which port: --port COM1.").arg(problem));
        return portNumbered(number);
    } catch (const RuntimeFault& fault) {
        throw Failure(Status::port,
                      QStringLiteral("%1. Say which port: --port COM1.").arg(fromUtf8(fault.what())));
    }
}

void open(SerialPort& port, const NamedPort& named) {
    try {
        port.open(named.number);
    } catch (const RuntimeFault& fault) {
        throw Failure(Status::port,
                      QStringLiteral("%1 cannot be opened. %2")
                          .arg(named.name, named.device.description(fromUtf8(fault.what()))
                                               .replace(QLatin1Char('\n'), QLatin1String(": "))));
    }
}

/// The port, and a trace of what passes over it where the request asks for one.
class TracedLine {
public:
    /// Throws Failure where the trace cannot be begun.
    TracedLine(const Request& request, const NamedPort& named, const EventLoop& loop)
        : real_([device = named.device](int) { return device; }) {
        if (!request.has("--trace"))
            return;
        file_.emplace(request.value("--trace").toStdString(),
                      [this](const std::string& problem) { problem_ = fromUtf8(problem); });
        if (!problem_.isEmpty())
            throw Failure(Status::file, problem_);
        trace_.emplace(real_, loop, [this](const std::string& line) { file_->line(line); });
        real_.onLost([this] { trace_->lost(); });
    }
    TracedLine(const TracedLine&) = delete;
    TracedLine& operator=(const TracedLine&) = delete;

    SerialPort& port() {
        if (trace_)
            return *trace_;
        return real_;
    }
    /// What has become of the trace; empty for nothing.
    const QString& problem() const { return problem_; }

private:
    QtSerialPort real_;
    std::optional<TraceFile> file_;
    std::optional<TracePort> trace_;
    QString problem_;
};

/// A record of what is read and written, where the request asks for one.
class KeptRecord {
public:
    KeptRecord(const Request& request, const NamedPort& named, TransferLog& transfers) {
        if (!request.has("--record"))
            return;
        record_.emplace(request.value("--record"), [this](const QString& problem) { problem_ = problem; });
        transfers.onEnd([this](const TransferEntry& entry) { record_->keep(entry); },
                        [port = named.name.toStdString()] { return port; });
    }
    /// Waits for the disk. What has become of the record; empty for nothing.
    QString finish() {
        if (record_)
            record_->finish();
        return problem_;
    }

private:
    QString problem_;
    std::optional<Record> record_;
};

void giveUp(Result& result, const Heard& heard) {
    result.status = Status::noAnswer;
    result.problem = QStringLiteral("The unit keeps sending, but not what was asked. ") + heard.howFar();
}

/// What has become of trace and record, behind what has become of the command.
void tellOfFiles(Result& result, const QString& trace, const QString& record) {
    for (const QString& problem : {trace, record}) {
        if (problem.isEmpty())
            continue;
        if (result.status == Status::done)
            result.status = Status::file;
        result.problem += (result.problem.isEmpty() ? QString() : QStringLiteral(" ")) + problem;
    }
}

}  // namespace

Result runJob(const UnitJob& job, PlainWindow& window) {
    Result result;
    try {
        result = job(window);
    } catch (const Failure& failure) {
        result = failed(failure);
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
    TracedLine line(request, named, loop);
    Progress progress;
    PlainWindow window(line.port(), loop, [&progress](const QString& text) { progress.show(text); });
    KeptRecord record(request, named, window.transfers);
    const auto breakOff = [&window] {
        window.transfers.interrupt();
        window.link.closePort();
    };
    const StopSignals signals([&](int number) {
        stopSignal = number;
        breakOff();
    });
    const Patience patience(window.heard, Patience::kLongestExchange, breakOff);
    open(line.port(), named);
    Result result = runJob(job, window);
    result.object.insert(QStringLiteral("port"), named.name);
    if (result.status != Status::port)
        stopSignal = 0;  // it came too late to change anything
    else if (stopSignal != 0)
        result.problem = QStringLiteral("Interrupted. ") + window.heard.howFar();
    else if (patience.hasEnded())
        giveUp(result, window.heard);
    window.link.closePort();  // so that the trace has an end
    tellOfFiles(result, line.problem(), record.finish());
    return result;
}

}  // namespace quorvex::tool
