#include "tests/support/bench_loop.h"

#include <QCoreApplication>
#include <algorithm>

namespace quorvex {

void BenchLoop::run(std::int32_t untilTick) {
    const bool isActed = !deeds_.empty();
    if (isActed) {
        const auto deed = std::move(deeds_.front());
        deeds_.pop_front();
        deed();
    }
    QCoreApplication::processEvents();
    // Whoever waits may end at once with what was done; with a deed still to come it was only a look.
    const bool isDone = isActed && deeds_.empty();
    if (isDone || wire_.waiting() > 0 || clock_.nowMs >= untilTick)
        return;
    const std::int64_t next = wire_.nextEventMs().value_or(untilTick);
    const std::int64_t latest = std::min<std::int64_t>(untilTick, clock_.nowMs + longestJumpMs_);
    clock_.nowMs = std::clamp<std::int64_t>(next, clock_.nowMs, latest);
}

}  // namespace quorvex
