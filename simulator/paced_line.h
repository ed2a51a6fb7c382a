#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/line_end.h"

namespace quorvex::sim {

/// The line between the program and a unit, with the time that bytes take on it: ten bits each, both ways
/// at once. A byte from the program reaches the unit one byte time after it was sent, or after the one
/// before it; a byte from the unit reaches the program likewise. So a reply begins after the last byte of
/// its command has arrived in full.
///
/// Times are nanoseconds from any start, never going back; the unit is given them in whole milliseconds.
class PacedLine {
public:
    /// `baud` bits a second, or 0 for a line that takes no time. The unit must outlive the line.
    PacedLine(LineEnd& unit, int baud);

    /// Bytes that the program has sent at `nowNs`.
    void receive(std::string_view bytes, std::int64_t nowNs);

    /// The bytes that have reached the program by `nowNs` and were not taken before.
    std::string take(std::int64_t nowNs);

    /// When take() can next have something new to do; nothing if it never has unless the program sends.
    std::optional<std::int64_t> nextEventNs() const;

private:
    struct Byte {
        std::int64_t atNs;
        char value;
    };

    void collect(std::int64_t nowNs);
    std::optional<std::int64_t> unitEventNs() const;

    LineEnd& unit_;
    std::int64_t byteNs_;
    std::deque<Byte> toUnit_;
    std::deque<Byte> toProgram_;
    std::int64_t toUnitFreeNs_ = 0;
    std::int64_t toProgramFreeNs_ = 0;
};

}  // namespace quorvex::sim
