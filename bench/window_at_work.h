#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/frm_main.h"
#include "bench/counting_port.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/qt_settings_store.h"
#include "rscreen/rscreen_picture.h"

namespace quorvex::bench {

/// The program's main window, shown in this process, on a real port.
class WindowAtWork {
public:
    /// Shows the window, connected to COM`number`, and waits until it is drawn and at rest.
    /// Throws std::runtime_error when the port does not open or the window does not come up.
    explicit WindowAtWork(int number);

    /// Clicks the button of that name; returns when what it starts has ended.
    /// Throws std::runtime_error when a message box comes up.
    void click(const std::string& button);
    /// Runs `work` as a handler of the window, so that the remote screen's timer leaves the port to it.
    /// What it throws comes out here.
    void operate(const std::function<void()>& work);
    /// Lets the window live for that long.
    void rest(int ms);
    /// Brings the remote screen's page to the front. Throws std::runtime_error when there is none.
    RScreenPicture& showRemoteScreen();
    std::string statusText() const;
    QSize size() const { return window_->size(); }

    CountingPort& port() { return counted_; }
    EventLoop& loop() { return loop_; }

private:
    QtSerialPort port_;
    CountingPort counted_{port_};
    QtEventLoop loop_;
    QtSettingsStore store_;
    std::unique_ptr<FrmMain> window_;
};

}  // namespace quorvex::bench
