#pragma once

#include <deque>
#include <functional>
#include <limits>

#include "link/event_loop.h"
#include "tests/support/wire.h"

namespace quorvex {

/// Qt's events on a clock of the test's own: a wait lets the window handle what is there and then jumps to
/// whatever comes next, so that seconds of silence take no time.
class BenchLoop : public EventLoop {
public:
    BenchLoop(Clock& clock, Wire& wire) : clock_(clock), wire_(wire) {}

    std::int32_t ticks() const override { return static_cast<std::int32_t>(clock_.nowMs); }
    void run(std::int32_t untilTick) override;

    /// What the person at the window does inside the next wait.
    void inNextWait(std::function<void()> deed) { deeds_.push_back(std::move(deed)); }
    /// A wait with nothing to come goes on in steps of at most that, with a turn for the window after each.
    void jumpAtMost(std::int64_t ms) { longestJumpMs_ = ms; }

private:
    Clock& clock_;
    Wire& wire_;
    std::deque<std::function<void()>> deeds_;
    std::int64_t longestJumpMs_ = std::numeric_limits<std::int32_t>::max();
};

}  // namespace quorvex
