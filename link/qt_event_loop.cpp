#include "link/qt_event_loop.h"

#include <QCoreApplication>

namespace quorvex {

QtEventLoop::QtEventLoop() {
    deadline_.setSingleShot(true);
    deadline_.setTimerType(Qt::PreciseTimer);  // a coarse timer fires early
}

std::int32_t QtEventLoop::ticks() const {
    const auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begun_)
            .count();
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(ms));
}

void QtEventLoop::run(std::int32_t untilTick) {
    const std::int64_t leftMs = std::int64_t{untilTick} - ticks();
    if (leftMs <= 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        return;
    }
    // Armed anew for each turn: a wait nested in this one arms it for itself.
    deadline_.start(std::chrono::milliseconds(leftMs));
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    deadline_.stop();
}

}  // namespace quorvex
