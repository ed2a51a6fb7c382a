#include "app/end_signals.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include "form/guard.h"

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#include <unistd.h>
#include <csignal>
#endif

namespace quorvex {

#ifdef Q_OS_UNIX
namespace {
int wakeUp[2] = {-1, -1};  ///< a signal handler may do no more than write to one end

void onSignal(int /*number*/) {
    [[maybe_unused]] const auto written = write(wakeUp[0], "", 1);
}
}  // namespace
#endif

EndSignals::EndSignals() {
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [] { endProgram(0); });
#ifdef Q_OS_UNIX
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp) != 0)
        return;
    connect(new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, this), &QSocketNotifier::activated, this,
            [] { endProgram(0); });
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        std::signal(number, onSignal);
#endif
}

}  // namespace quorvex
