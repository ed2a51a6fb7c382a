#include "tests/support/bench_loop.h"

#include <QCoreApplication>
#include <algorithm>

namespace quorvex {

void BenchLoop::run(std::int32_t untilTick) {
    const std::uint32_t connection = wire_.connection();
    if (!deeds_.empty()) {
        const auto deed = std::move(deeds_.front());
        deeds_.pop_front();
        deed();
    }
    QCoreApplication::processEvents();
    // Whoever waits on a port that is gone may end at once.
    if (wire_.waiting() > 0 || wire_.connection() != connection || clock_.nowMs >= untilTick)
        return;
    const std::int64_t next = wire_.nextEventMs().value_or(untilTick);
    clock_.nowMs = std::clamp<std::int64_t>(next, clock_.nowMs, untilTick);
}

}  // namespace quorvex
