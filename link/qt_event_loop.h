#pragma once

#include <QTimer>
#include <chrono>

#include "link/event_loop.h"

namespace quorvex {

/// Qt's event loop and a clock that starts with it, so that however long the machine has been up changes
/// nothing. Waiting sleeps until an event, a character on an open port or the deadline wakes it.
class QtEventLoop : public EventLoop {
public:
    QtEventLoop();
    std::int32_t ticks() const override;
    void run(std::int32_t untilTick) override;

private:
    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    QTimer deadline_;
};

}  // namespace quorvex
