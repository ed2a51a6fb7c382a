#pragma once

#include <QLabel>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "app/frm_main.h"
#include "bench/counting_port.h"
#include "link/command_link.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "link/trace_file.h"
#include "link/trace_port.h"
#include "rscreen/rscreen_picture.h"

namespace quorvex::bench {

/// The program's main window, shown in this process, on a real port.
class WindowAtWork {
public:
    /// Shows the window, connected to the bench's port, and waits until it is drawn and at rest. `tracePath`:
    /// what passes over the port goes into that file, too; empty for none. Throws std::runtime_error when the
    /// port does not open or the window does not come up.
    explicit WindowAtWork(const std::string& tracePath = {});

    /// Clicks the button of that name; returns when what it starts has ended.
    /// Throws std::runtime_error when a message box comes up.
    void click(const QString& button);
    /// Runs `work` as a handler of the window. What it throws comes out here.
    void operate(const std::function<void()>& work);
    /// Lets the window live for that long.
    void rest(int ms);
    /// Brings the remote screen's page to the front.
    RScreenPicture& showRemoteScreen();
    std::string statusText() const { return control<QLabel>("LblStatus").text().toStdString(); }
    QSize size() const { return window_->size(); }

    CountingPort& port() { return counted_; }
    EventLoop& loop() { return loop_; }
    /// The window's own, so that the remote screen leaves the port to the operations on it.
    CommandLink& link() { return window_->link(); }

private:
    template <typename Control>
    Control& control(const QString& name) const {
        if (auto* found = window_->findChild<Control*>(name))
            return *found;
        throw std::runtime_error("The main window has no " + name.toStdString() + ".");
    }

    SerialPort& traced(const std::string& path);

    QtSerialPort port_;
    QtEventLoop loop_;
    std::optional<TraceFile> traceFile_;
    std::optional<TracePort> tracePort_;
    CountingPort counted_;
    QtSettingsStore store_;
    std::unique_ptr<FrmMain> window_;
};

}  // namespace quorvex::bench
