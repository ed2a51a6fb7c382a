#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace quorvex {

/// What a status record of a Kirk module tells, and when it came.
struct Reading {
    static constexpr int kBalanceLimit = 100;  ///< the balance is shown from minus this to this
    static constexpr int kGreenBalance = 25;   ///< the green zone of its scale, likewise

    std::int32_t tick = 0;                        ///< EventLoop::ticks
    int rssi = 0;                                 ///< 0 to 255
    std::optional<int> dcBalance = std::nullopt;  ///< as shown; none while there is no connection
};

/// The readings of the last minute: the latest one and those at most kSpanMs older, the oldest first.
class Readings {
public:
    static constexpr std::int32_t kSpanMs = 60'000;
    /// More than come in that time, one each 400 ms. If there are more all the same, the oldest go early.
    static constexpr std::size_t kMost = 160;

    void add(const Reading& reading);
    bool isEmpty() const { return count_ == 0; }
    std::size_t size() const { return count_; }
    /// 0 is the oldest one.
    const Reading& operator[](std::size_t index) const { return ring_[(first_ + index) % kMost]; }

    // Of these there must be at least one.
    const Reading& latest() const { return (*this)[count_ - 1]; }
    /// How much older than the latest one it is, in milliseconds.
    std::int32_t ageMs(const Reading& reading) const;
    /// The one whose age comes closest to `wantedMs`.
    const Reading& closestTo(std::int32_t wantedMs) const;

private:
    std::array<Reading, kMost> ring_{};
    std::size_t first_ = 0, count_ = 0;
};

}  // namespace quorvex
