#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <functional>

#include "tool/heard.h"

namespace quorvex::tool {

/// Ends what would go on for as long as a unit keeps sending something else than what was asked: the limits
/// of the readers are limits of silence.
class Patience {
public:
    /// More than any unit takes that answers at all: 12 s of silence for a first line, 2 s for each of ten
    /// more.
    static constexpr std::chrono::milliseconds kLongestExchange{35'000};

    /// `giveUp` is called from the event loop, once, when `limit` has passed since the last line was sent.
    Patience(const Heard& heard, std::chrono::milliseconds limit, std::function<void()> giveUp);
    bool hasEnded() const { return hasEnded_; }

private:
    void look();

    const Heard& heard_;
    const std::chrono::milliseconds limit_;
    const std::function<void()> giveUp_;
    QTimer timer_;
    QElapsedTimer sinceSent_;
    int sentLines_ = 0;
    bool hasEnded_ = false;
};

}  // namespace quorvex::tool
