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
#include "link/qt_text.h"
#include "link/trace_file.h"
#include "link/trace_port.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

/// Tells in a box over the window what has become of the files that are written beside the work.
class Teller {
public:
    /// From then on there is a window.
    void show(quorvex::FrmMain& window) { window_ = &window; }
    /// From then on there is none.
    void hide() { isOver_ = true; }

    /// On any thread; the box comes when the window is there and no operation is under way, which could not
    /// end behind it.
    void tell(const QString& text) {
        if (isOver_)
            std::fprintf(stderr, "quorvex-config: %s\n", qUtf8Printable(text));
        else
            QMetaObject::invokeMethod(
                qApp, [this, text] { tellBetweenOperations(text); }, Qt::QueuedConnection);
    }

private:
    void tellBetweenOperations(const QString& text) {
        constexpr std::chrono::milliseconds kLookAgain{100};
        if (window_->link().isBusy())
            QTimer::singleShot(kLookAgain, window_, [this, text] { tellBetweenOperations(text); });
        else
            quorvex::showMessageBox(text.toStdString(), quorvex::Icon::critical);
    }

    quorvex::FrmMain* window_ = nullptr;
    std::atomic<bool> isOver_ = false;
};

/// What passes over the port goes into a file, too.
struct Trace {
    Trace(quorvex::SerialPort& traced, const quorvex::EventLoop& loop, const std::string& path,
          Teller& teller)
        : file(path, [&teller](const std::string& text) { teller.tell(quorvex::fromUtf8(text)); }),
          port(traced, loop, [this](const std::string& line) { file.line(line); }) {}

    quorvex::TraceFile file;
    quorvex::TracePort port;
};

/// Reads and writes of Beltpacks are kept in a folder.
struct WindowRecord {
    WindowRecord(quorvex::FrmMain& window, const QString& folder, Teller& teller)
        : record(folder, [&teller](const QString& text) { teller.tell(text); }) {
        window.transfers().onEnd([this](const quorvex::TransferEntry& entry) { record.keep(entry); },
                                 [&window] { return window.portName(); });
    }

    quorvex::Record record;
};

/// The style of Windows draws buttons in colours of its own, on which the caption of the leading one is not
/// seen.
void chooseStyle() {
    if (QApplication::style()->name() == QLatin1String("windowsvista"))
        QApplication::setStyle(QStringLiteral("fusion"));
}

[[noreturn]] void leave(int status) {
    std::fflush(nullptr);
#ifdef __SANITIZE_ADDRESS__
    __lsan_do_leak_check();  // which _Exit leaves out
#endif
    std::_Exit(status);
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quorvex-config"));
    chooseStyle();

    quorvex::QtEventLoop loop;
    quorvex::QtSerialPort port;
    quorvex::QtSettingsStore store;
    Teller teller;
    std::optional<Trace> trace;
    if (const QString path = qEnvironmentVariable("QUORVEX_TRACE"); !path.isEmpty())
        trace.emplace(port, loop, path.toStdString(), teller);
    quorvex::FrmMain window({trace ? trace->port : static_cast<quorvex::SerialPort&>(port), loop, store});
    teller.show(window);
    std::optional<WindowRecord> record;
    if (const QString folder = qEnvironmentVariable("QUORVEX_RECORD"); !folder.isEmpty())
        record.emplace(window, folder, teller);
    port.onLost([&] {
        if (trace)
            trace->port.lost();
        window.portLost();
    });
    store.onFailure([](const std::string& text) { quorvex::showMessageBox(text, quorvex::Icon::critical); });
    quorvex::setProgramEnd([&](int status) {
        window.transfers().interrupt();
        window.closePort();
        teller.hide();
        if (record)
            record->record.finish();
        leave(status);
    });

    const quorvex::EndSignals endSignals;

    window.show();
    window.load();
    return QApplication::exec();
}
