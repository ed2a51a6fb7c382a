#pragma once

#include <cstdint>

#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex {

/// The waiting of one reader: for the next character, with the same limit each time.
class InputWait {
public:
    /// `limitMs`: the longest silence, 0 or more. 0 takes only what has arrived.
    InputWait(SerialPort& port, EventLoop& loop, std::int32_t limitMs);

    /// Lets the window run until a character waits, the port closes, or the limit has passed since this
    /// call. A line that never falls silent gets no wait, but the window its turn all the same.
    /// Throws "Overflow" where the 32-bit tick count ends before the limit; it does not wrap.
    void forNext();

private:
    SerialPort& port_;
    EventLoop& loop_;
    std::int32_t limitMs_;
    std::int64_t windowRanAt_;
};

}  // namespace quorvex
