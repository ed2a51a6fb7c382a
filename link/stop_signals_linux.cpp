#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>
#include <utility>

#include "link/stop_signals.h"

namespace quorvex {

namespace {
int wakeUp[2] = {-1, -1};  ///< a signal handler may do no more than write to one end

void onSignal(int number) {
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const auto written = write(wakeUp[0], &byte, 1);
}
}  // namespace

StopSignals::StopSignals(std::function<void(int)> handler) {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp) != 0)
        return;
    connect(new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, this), &QSocketNotifier::activated, this,
            [handler = std::move(handler)] {
                char number = 0;
                if (read(wakeUp[1], &number, 1) == 1)
                    handler(number);
            });
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        const bool isIgnored = std::signal(number, onSignal) == SIG_IGN;
        if (number == SIGHUP && isIgnored)
            std::signal(SIGHUP, SIG_IGN);  // as nohup wants it
    }
}

}  // namespace quorvex
