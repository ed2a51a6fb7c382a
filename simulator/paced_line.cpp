#include "simulator/paced_line.h"

#include <algorithm>

namespace quorvex::sim {

namespace {

constexpr std::int64_t kNsPerMs = 1'000'000;
constexpr std::int64_t kNsPerSecond = 1'000'000'000;
constexpr std::int64_t kBitsPerByte = 10;  // start bit, eight data bits, stop bit

}  // namespace

PacedLine::PacedLine(LineEnd& unit, int baud)
    : unit_(unit), byteNs_(baud > 0 ? kBitsPerByte * kNsPerSecond / baud : 0) {}

void PacedLine::receive(std::string_view bytes, std::int64_t nowNs) {
    for (const char c : bytes) {
        toUnitFreeNs_ = std::max(toUnitFreeNs_, nowNs) + byteNs_;
        toUnit_.push_back({toUnitFreeNs_, c});
    }
}

std::string PacedLine::take(std::int64_t nowNs) {
    // In the order of time: what the unit says by itself before a byte arrives goes out before its answer.
    while (true) {
        const std::optional<std::int64_t> unitNs = unitEventNs();
        const bool byteDue = !toUnit_.empty() && toUnit_.front().atNs <= nowNs;
        const bool unitDue = unitNs && *unitNs <= nowNs;
        if (unitDue && (!byteDue || *unitNs <= toUnit_.front().atNs)) {
            collect(*unitNs);
        } else if (byteDue) {
            const Byte byte = toUnit_.front();
            toUnit_.pop_front();
            unit_.receive(std::string_view(&byte.value, 1), byte.atNs / kNsPerMs);
            collect(byte.atNs);
        } else {
            break;
        }
    }
    std::string bytes;
    while (!toProgram_.empty() && toProgram_.front().atNs <= nowNs) {
        bytes += toProgram_.front().value;
        toProgram_.pop_front();
    }
    return bytes;
}

std::optional<std::int64_t> PacedLine::nextEventNs() const {
    std::optional<std::int64_t> next = unitEventNs();
    for (const std::deque<Byte>* queue : {&toUnit_, &toProgram_}) {
        if (!queue->empty() && (!next || queue->front().atNs < *next))
            next = queue->front().atNs;
    }
    return next;
}

void PacedLine::collect(std::int64_t nowNs) {
    for (const char c : unit_.take(nowNs / kNsPerMs)) {
        toProgramFreeNs_ = std::max(toProgramFreeNs_, nowNs) + byteNs_;
        toProgram_.push_back({toProgramFreeNs_, c});
    }
}

std::optional<std::int64_t> PacedLine::unitEventNs() const {
    const std::optional<std::int64_t> nextMs = unit_.nextEventMs();
    if (!nextMs)
        return std::nullopt;
    return *nextMs * kNsPerMs;
}

}  // namespace quorvex::sim
