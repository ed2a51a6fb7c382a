#include <QApplication>
#include <QStyle>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "app/end_signals.h"
#include "app/frm_main.h"
#include "beltpack/record.h"
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

/// In front of no operation, which could not end behind the box.
void tellBetweenOperations(quorvex::FrmMain& window, const QString& text) {
    constexpr std::chrono::milliseconds kLookAgain{100};
    if (window.link().isBusy())
        QTimer::singleShot(kLookAgain, &window, [&window, text] { tellBetweenOperations(window, text); });
    else
        quorvex::showMessageBox(text.toStdString(), quorvex::Icon::critical);
}

/// Reads and writes of Beltpacks are kept in a folder.
class WindowRecord {
public:
    WindowRecord(quorvex::FrmMain& window, const QString& folder)
        : window_(window), record_(folder, [this](const QString& text) { tell(text); }) {
        window.transfers().onEnd([this](const quorvex::TransferEntry& entry) { record_.keep(entry); },
                                 [&window] { return window.portName(); });
    }
    ~WindowRecord() { finish(); }
    WindowRecord(const WindowRecord&) = delete;
    WindowRecord& operator=(const WindowRecord&) = delete;

    /// The window is to go.
    void finish() {
        isEnd_ = true;
        record_.finish();
    }

private:
    void tell(const QString& text) {
        if (isEnd_)
            std::fprintf(stderr, "quorvex-config: %s\n", qUtf8Printable(text));
        else
            QMetaObject::invokeMethod(
                &window_, [this, text] { tellBetweenOperations(window_, text); }, Qt::QueuedConnection);
    }

    quorvex::FrmMain& window_;
    std::atomic<bool> isEnd_ = false;
    quorvex::Record record_;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quorvex-config"));
    // The style of Windows draws buttons in colours of its own, on which the caption of the leading one is
    // not seen.
    if (QApplication::style()->name() == QLatin1String("windowsvista"))
        QApplication::setStyle(QStringLiteral("fusion"));

    quorvex::QtEventLoop loop;
    quorvex::QtSerialPort port;
    quorvex::QtSettingsStore store;
    std::optional<Trace> trace;
    if (const QString path = qEnvironmentVariable("QUORVEX_TRACE"); !path.isEmpty())
        trace.emplace(port, loop, path.toStdString());
    quorvex::FrmMain window({trace ? trace->port : static_cast<quorvex::SerialPort&>(port), loop, store});
    std::optional<WindowRecord> record;
    if (const QString folder = qEnvironmentVariable("QUORVEX_RECORD"); !folder.isEmpty())
        record.emplace(window, folder);
    port.onLost([&] {
        if (trace)
            trace->port.lost();
        window.portLost();
    });
    store.onFailure([](const std::string& text) { quorvex::showMessageBox(text, quorvex::Icon::critical); });
    quorvex::setProgramEnd([&](int status) {
        window.transfers().interrupt();
        window.closePort();
        if (record)
            record->finish();
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
