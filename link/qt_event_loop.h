#pragma once

#include <QTimer>

#include "link/event_loop.h"

namespace quorvex {

/// Qt's event loop and the system's monotonic clock. Waiting sleeps until an event, a character on an open
/// port or the deadline wakes it.
class QtEventLoop : public EventLoop {
public:
    QtEventLoop();
    std::int32_t ticks() const override;
    void run(std::int32_t untilTick) override;

private:
    QTimer deadline_;
};

}  // namespace quorvex
