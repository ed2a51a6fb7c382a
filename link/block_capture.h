#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex {

/// A buffer of received bytes, and the capture that fills it from a block behind the marker "sync".
class BlockCapture {
public:
    static constexpr std::int32_t kCapacity = 10001;

    /// Skips to the marker without waiting, then stores up to `count` bytes from index 0 on, as long as
    /// each comes within `limitUnits` x 1000 ms of the one before. Without a marker in what has arrived, or
    /// with nothing waiting behind it, nothing is stored. Entries past the block keep what they held.
    /// Asked after each wait, `isWanted` may end the capture, because the characters that come now no longer
    /// belong to the block. True when all `count` bytes were stored. Throws "Subscript out of range" for a
    /// byte past the buffer's end.
    bool capture(SerialPort& port, EventLoop& loop, int limitUnits, std::int32_t count,
                 std::function<bool()> isWanted);

    /// Number of bytes that the last capture stored.
    std::int32_t count() const { return count_; }
    /// Every entry is a byte value, 0 to 255; all 0 before the first capture.
    const std::array<std::int16_t, kCapacity>& bytes() const { return bytes_; }

private:
    /// False if the marker is not in what has arrived, or not in the first few thousand characters of it.
    static bool synchronise(SerialPort& port);

    std::array<std::int16_t, kCapacity> bytes_{};
    std::int32_t count_ = 0;
};

}  // namespace quorvex
