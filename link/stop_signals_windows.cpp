#include <windows.h>

#include <QCoreApplication>
#include <QPointer>
#include <csignal>
#include <utility>

#include "link/stop_signals.h"

namespace quorvex {

namespace {

QPointer<StopSignals> receiver;  ///< looked at on the application's thread only
std::function<void(int)> handle;

/// The system calls this on a thread of its own.
BOOL WINAPI onControl(DWORD event) {
    const int number = event == CTRL_C_EVENT ? SIGINT : SIGTERM;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [number] {
            if (receiver)
                handle(number);
        },
        Qt::QueuedConnection);
    // Where the console closes the program is ended when this returns; the system waits some seconds for it.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

}  // namespace

StopSignals::StopSignals(std::function<void(int)> handler) {
    receiver = this;
    handle = std::move(handler);
    SetConsoleCtrlHandler(onControl, TRUE);
}

}  // namespace quorvex
