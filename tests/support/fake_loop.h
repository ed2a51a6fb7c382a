#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "link/event_loop.h"

namespace quorvex {

/// A clock that stands still but for run(), which jumps to the next thing that happens. A minute of silence
/// takes no time, and a limit can be told to the millisecond.
class FakeLoop : public EventLoop {
public:
    using Tick = std::int64_t;  ///< wide enough to schedule past the end of the real count

    explicit FakeLoop(Tick startTick = 0) : now_(startTick) {}

    /// From 2^31 on it begins again at its lowest, as the real one.
    std::int32_t ticks() const override {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(now_));
    }
    /// The time by which things are scheduled; it never begins again.
    Tick now() const { return now_; }
    /// Runs what is due; if nothing is, goes to the next tick at which something happens, or to
    /// `untilTick`. Throws std::logic_error when it is called without end and time stands still.
    void run(std::int32_t untilTick) override { runUntil(now_ + (Tick{untilTick} - ticks())); }
    void runUntil(Tick until);

    /// Does `something` inside run(), when `tick` has come: a character arrives, a button is pressed, a
    /// cable is pulled. It may run a whole operation, which waits inside the wait that it interrupts.
    void at(Tick tick, std::function<void()> something);
    /// Lets time pass outside run(), as work that takes a while does. Nothing that falls due happens yet.
    void advance(Tick ms) { now_ += ms; }
    /// The same for the whole machine, so that nobody has waited for the window.
    void standStill(Tick ms) {
        now_ += ms;
        turnEndedAt_ += ms;
    }
    /// Asks `nextTick` when something that was not scheduled here happens next.
    void addSource(std::function<std::optional<Tick>()> nextTick) { sources_.push_back(std::move(nextTick)); }

    /// Number of turns that the window was given.
    int turns() const { return turns_; }
    /// The longest time for which the window was not let in: between two turns, or before the first.
    Tick longestPause() const { return longestPause_; }

private:
    Tick nextTick() const;
    bool runDue();

    Tick now_;
    std::multimap<Tick, std::function<void()>> scheduled_;  // those of one tick in the order of scheduling
    std::vector<std::function<std::optional<Tick>()>> sources_;
    int turns_ = 0;
    int turnsAtThisTick_ = 0;
    Tick lastTurnTick_ = std::numeric_limits<Tick>::min();
    Tick longestPause_ = 0;
    Tick turnEndedAt_ = now_;
};

}  // namespace quorvex
