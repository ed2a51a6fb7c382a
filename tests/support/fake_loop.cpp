#include "tests/support/fake_loop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quorvex {

namespace {
constexpr int kMostTurnsAtOneTick = 100'000;
}

void FakeLoop::at(Tick tick, std::function<void()> something) {
    scheduled_.emplace(tick, std::move(something));
}

FakeLoop::Tick FakeLoop::nextTick() const {
    Tick next = scheduled_.empty() ? std::numeric_limits<Tick>::max() : scheduled_.begin()->first;
    for (const auto& source : sources_)
        next = std::min(next, source().value_or(next));
    return next;
}

bool FakeLoop::runDue() {
    bool any = false;
    while (!scheduled_.empty() && scheduled_.begin()->first <= now_) {
        // Out of the list before it runs: it may wait, and so come here again.
        const auto something = scheduled_.extract(scheduled_.begin()).mapped();
        something();
        any = true;
    }
    return any;
}

void FakeLoop::runUntil(Tick until) {
    ++turns_;
    longestPause_ = std::max(longestPause_, now_ - turnEndedAt_);
    turnEndedAt_ = now_;
    turnsAtThisTick_ = now_ == lastTurnTick_ ? turnsAtThisTick_ + 1 : 0;
    lastTurnTick_ = now_;
    if (turnsAtThisTick_ > kMostTurnsAtOneTick)
        throw std::logic_error("a wait spins without end");

    if (!runDue() && until > now_) {
        now_ = std::max(now_, std::min(nextTick(), until));
        turnEndedAt_ = now_;  // what runs now may let the window in again
        runDue();
    }
    turnEndedAt_ = now_;
}

}  // namespace quorvex
