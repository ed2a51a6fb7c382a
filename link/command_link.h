#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "link/block_capture.h"
#include "link/console.h"
#include "link/event_loop.h"
#include "link/link_listener.h"
#include "link/serial_port.h"

namespace quorvex {

class Operation;

/// The line to the unit: its port and what every operation on it shares. An Operation sends and reads;
/// waiting keeps the window alive, so another operation may begin inside a wait and share the port.
class CommandLink {
public:
    CommandLink(SerialPort& port, EventLoop& loop, Console& console);

    /// Shows `text` in the status line.
    void status(std::string_view text, Colour colour);
    Console& console() { return console_; }
    /// From now on `listener` hears every operation; null for none. It must outlive them.
    void listen(LinkListener* listener) { listener_ = listener; }

    /// Whether an operation is under way, so that what arrives is for it.
    bool isBusy() const { return !operations_.empty(); }
    /// For what belongs to the port that is open now: true until it is closed or lost, or another one was
    /// opened.
    std::function<bool()> untilPortGone() const;
    /// True for `ms` from now on.
    std::function<bool()> untilPassed(std::int32_t ms) const;
    /// Lets the operations under way take the unit out of the modes they put it into, then closes the port.
    void closePort();

    /// Skips to the sync marker and fills the data buffer with up to `count` bytes, at most `limitUnits` x
    /// 1000 ms between two; see BlockCapture. Gives way: it ends when an operation has begun, another port
    /// was opened or `isWanted` says no, for what follows does not belong to the block then. True for a whole
    /// block.
    bool GetDataBuffer(int limitUnits, std::int32_t count, std::function<bool()> isWanted);
    const BlockCapture& dataBuffer() const { return dataBuffer_; }
    /// Number of characters that have arrived and were not read; 0 on a closed port.
    std::size_t waitingCharacters() { return port_.waiting(); }
    /// EventLoop::ticks
    std::int32_t ticks() const { return loop_.ticks(); }

    /// Kept as an empty method for callers that probe the link.
    void testFunc() {}

private:
    friend class Operation;

    SerialPort& port_;
    EventLoop& loop_;
    Console& console_;
    LinkListener* listener_ = nullptr;
    BlockCapture dataBuffer_;
    std::vector<Operation*> operations_;  ///< under way, the oldest first
    std::uint32_t begun_ = 0;             ///< number of operations so far
};

}  // namespace quorvex
