#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/block_capture.h"
#include "link/console.h"
#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex {

/// What a reader returns when no complete reply came in time. Never data.
inline constexpr std::string_view kError = "Error";
inline constexpr char kCarriageReturn = '\r';

/// The largest silence a reader bears, in the reader's own unit.
namespace limit {
inline constexpr int kArrivedOnly = 0;        ///< only what is there already
inline constexpr int kLine = 1;               ///< serialGetResponse: 2 s
inline constexpr int kCalibrationRecord = 5;  ///< serialGetResponse: 10 s
inline constexpr int kFirstAntennaLine = 6;   ///< serialGetResponse: 12 s
inline constexpr int kDrain = 1;              ///< serialGetResponseChars: 1 s
inline constexpr int kReply = 2;              ///< serialGetResponseChars: 2 s
}  // namespace limit

/// Exchanges with the unit: one command line out, one reply line back. Waiting keeps the window alive, so
/// another operation may start inside a wait and share the port; nothing here locks against that.
class CommandLink {
public:
    CommandLink(SerialPort& port, EventLoop& loop, Console& console);

    /// Drops waiting input, sends `command`, then carriage return and line feed. A port fault ends it
    /// silently; the reader that follows finds out.
    void serialSendString(std::string_view command);

    /// One reply from its start character ("#", "!" or "^") up to, not including, `terminator`. At most
    /// `limitUnits` x 2000 ms of silence. kError when the line stays incomplete or the port is closed.
    std::string serialGetResponse(int limitUnits, char terminator);

    /// Exactly `count` printable characters from the start character on; control characters are dropped.
    /// At most `limitUnits` x 1000 ms of silence. kError as above.
    std::string serialGetResponseChars(int limitUnits, int count);

    /// The first of at most 11 reply lines that contains `expected`, else kError. 12 s of silence for the
    /// first line, 2 s for the others.
    std::string GetActiveAntennaResponse(std::string_view expected);

    /// Skips to the sync marker and fills the data buffer with up to `count` bytes; see BlockCapture. Ends
    /// early when a command has been sent or another port chosen meanwhile: what follows answers that one, or
    /// comes from another unit.
    void GetDataBuffer(int limitUnits, std::int32_t count);
    /// Another port may have been chosen.
    void portChosen() { ++interruptions_; }
    /// Number of characters that have arrived and were not read; 0 on a closed port.
    std::size_t waitingCharacters() { return port_.waiting(); }
    const BlockCapture& dataBuffer() const { return dataBuffer_; }

    /// Shows `text` in the status line.
    void status(std::string_view text, Colour colour);

    /// Kept as an empty method for callers that probe the link.
    void testFunc() {}

    Console& console() { return console_; }

private:
    SerialPort& port_;
    EventLoop& loop_;
    Console& console_;
    BlockCapture dataBuffer_;
    std::uint32_t interruptions_ = 0;  ///< of a block that is being captured
};

}  // namespace quorvex
