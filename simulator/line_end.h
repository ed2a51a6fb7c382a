#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/transcript.h"

namespace quorvex::sim {

/// Whatever is at the other end of the serial line. It takes the bytes that the program sends and gives back
/// those that are sent to it, nothing more: time is an argument and never read, so a test may let a minute
/// pass in one call. Times are milliseconds from any start, never going back.
class LineEnd {
public:
    virtual ~LineEnd() = default;

    /// A program has opened the port.
    virtual void opened(std::int64_t /*nowMs*/) {}
    /// Bytes from the program, arrived at `nowMs`.
    virtual void receive(std::string_view bytes, std::int64_t nowMs) = 0;
    /// Everything that was put on the line by `nowMs` and not taken before.
    virtual std::string take(std::int64_t nowMs) = 0;
    /// When there is next something to say if nobody speaks; nothing if there never is.
    virtual std::optional<std::int64_t> nextEventMs() const = 0;
    /// Calls `transcript` with every complete line received and everything taken, as it happens.
    virtual void setTranscript(Transcript transcript) = 0;
};

}  // namespace quorvex::sim
