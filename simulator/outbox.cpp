#include "simulator/outbox.h"

#include <algorithm>
#include <utility>

namespace quorvex::sim {

void Outbox::push(Piece piece) {
    if (!pieces_.empty())
        piece.dueMs = std::max(piece.dueMs, pieces_.back().dueMs);
    pieces_.push_back(std::move(piece));
}

std::optional<Outbox::Piece> Outbox::pop(std::int64_t nowMs) {
    if (pieces_.empty() || pieces_.front().dueMs > nowMs)
        return std::nullopt;
    Piece piece = std::move(pieces_.front());
    pieces_.pop_front();
    return piece;
}

std::optional<std::int64_t> Outbox::nextMs() const {
    if (pieces_.empty())
        return std::nullopt;
    return pieces_.front().dueMs;
}

}  // namespace quorvex::sim
