#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "link/command_link.h"

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

/// Thrown where an operation cannot begin; the operator has been told.
struct OperationRefused {};

/// One operation that talks to a unit, for as long as it lasts. It belongs to the port that was open when it
/// began: once that one is closed or lost or another one was opened, the operation is over. It sends nothing
/// more then, and each of its readers returns kError at once, so that it ends the way it ends when a unit
/// falls silent, and nothing of it reaches another unit.
class Operation {
public:
    /// As many as this may wait inside each other; a further one is refused.
    static constexpr int kMostAtOnce = 32;

    /// `isWanted`: asked after each wait; once it says no, the operation is over. `room`: how many there will
    /// be with those that it begins itself. Throws OperationRefused when there is no room for all of them, so
    /// that none is refused half way.
    explicit Operation(CommandLink& link, std::function<bool()> isWanted = {}, int room = 1);
    /// Takes down what it put up: its hourglass, its progress, the unit's mode.
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    bool isOver() const { return !isPortThere_() || !isWanted(); }
    /// False once it was replaced by something that the operator did in its wait.
    bool isWanted() const { return !isWanted_ || isWanted_(); }
    /// Whether no other operation has begun since.
    bool isLatest() const { return number_ == link_.begun_; }

    /// Puts the hourglass pointer up until the operation ends.
    void hourglass();
    /// Shows how far it is, until it ends.
    void progress(int done, int total);
    /// Sends `enter`, which puts the unit into a mode, and `leave` when the operation ends, if not before.
    /// The program may end with a fault; the unit must not stay in the mode.
    void enterMode(std::string_view enter, std::string_view leave);
    void leaveMode();

    /// Drops waiting input, sends `command`, then carriage return and line feed. A port fault ends it
    /// silently, and so does one that has no room for all of it; the reader that follows finds out.
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

    /// The reply of `count` characters to `line`, kError after 2 s of silence.
    std::string exchange(std::string_view line, int count);

    /// Whether some of a reply had come when a reader gave up last.
    bool hasHeardPart() const { return hasHeardPart_; }

private:
    /// What a reader returns that did not get a whole reply.
    std::string givenUp(std::string_view part);

    CommandLink& link_;
    std::function<bool()> isWanted_;
    std::function<bool()> isPortThere_;
    std::uint32_t number_;
    bool hourglass_ = false;
    bool progress_ = false;
    bool hasHeardPart_ = false;
    std::string leave_;  ///< empty outside a mode
};

}  // namespace quorvex
