#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex {

/// The waiting of one reader: for one character after the other, with the same limit each time.
class InputWait {
public:
    /// `limitMs`: the longest silence, 0 or more. 0 takes only what has arrived. `isWanted` is asked after
    /// each turn of the window; once it says no, nothing more is waited for or taken.
    InputWait(SerialPort& port, EventLoop& loop, std::int32_t limitMs, std::function<bool()> isWanted);

    /// The next character. Lets the window run until one has arrived; empty when the limit has passed since
    /// this call, the port is closed, or nothing is wanted any more. A line that never falls silent gets no
    /// wait, but the window its turn all the same. Throws "Overflow" where the 32-bit tick count ends before
    /// the limit; it does not wrap.
    std::optional<char> next();

private:
    void letWindowRun(std::int32_t untilTick);

    SerialPort& port_;
    EventLoop& loop_;
    std::int32_t limitMs_;
    std::function<bool()> isWanted_;
    std::int64_t windowRanAt_;
};

}  // namespace quorvex
