#include "calibration/readings.h"

#include <cstdlib>

namespace quorvex {

void Readings::add(const Reading& reading) {
    const auto dropOldest = [this] {
        first_ = (first_ + 1) % kMost;
        --count_;
    };
    if (count_ == kMost)
        dropOldest();
    ring_[(first_ + count_++) % kMost] = reading;
    while (ageMs((*this)[0]) > kSpanMs)
        dropOldest();
}

std::int32_t Readings::ageMs(const Reading& reading) const {
    // Unsigned, because the count of ticks may begin anew between the two.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(latest().tick) -
                                     static_cast<std::uint32_t>(reading.tick));
}

const Reading& Readings::closestTo(std::int32_t wantedMs) const {
    std::size_t closest = count_ - 1;
    for (std::size_t i = closest; i-- > 0;) {
        if (std::abs(ageMs((*this)[i]) - wantedMs) < std::abs(ageMs((*this)[closest]) - wantedMs))
            closest = i;
    }
    return (*this)[closest];
}

}  // namespace quorvex
