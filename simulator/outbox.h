#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace quorvex::sim {

/// What a unit will put on the line, and when. First in, first out: a late reply holds up what comes
/// after it, as it does on a line with one sender.
class Outbox {
public:
    struct Piece {
        std::int64_t dueMs = 0;
        std::string bytes;
        std::string shown;  ///< for the transcript
    };

    /// Queues a piece for `dueMs`, or for the time of the piece before it if that is later.
    void push(Piece piece);

    /// The next piece if it is due at `nowMs`.
    std::optional<Piece> pop(std::int64_t nowMs);

    /// When the next piece is due; nothing when there is none.
    std::optional<std::int64_t> nextMs() const;

private:
    std::deque<Piece> pieces_;
};

}  // namespace quorvex::sim
