#pragma once

#include <cstdint>

namespace quorvex {

/// The clock and the window's events while an operation waits.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    /// Milliseconds since the program started, as a signed 32-bit count.
    virtual std::int32_t ticks() const = 0;
    /// Time since the count was `tick`, also where it has begun again at its lowest meanwhile.
    std::uint32_t msSince(std::int32_t tick) const {
        return static_cast<std::uint32_t>(ticks()) - static_cast<std::uint32_t>(tick);
    }
    /// Lets the window handle its events; returns when something has happened (an event, a character on
    /// the port) or when `untilTick` is reached. Other operations may run inside this call.
    virtual void run(std::int32_t untilTick) = 0;
};

}  // namespace quorvex
