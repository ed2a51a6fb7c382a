#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/fault.h"

namespace quorvex::sim {

/// The copies of its display that a Beltpack sends by itself: the marker "sync" and the 512 bytes of a
/// Screen, again and again. Off until it is started.
class DisplayStream {
public:
    /// Starts the frames, the first one at `nowMs`, the others `intervalMs` (at least 1) apart.
    void start(std::int64_t nowMs, int intervalMs);
    void stop() { nextMs_.reset(); }

    /// When the next frame is due; nothing while the stream is off.
    std::optional<std::int64_t> nextMs() const { return nextMs_; }

    /// The frame due at nextMs(), with the Master Volume at `volume`; moves nextMs() on. To be called only
    /// while nextMs() holds a time.
    std::string nextFrame(int volume, FaultList& faults);

private:
    std::optional<std::int64_t> nextMs_;
    int intervalMs_ = 0;
    int pictures_ = 0;
};

}  // namespace quorvex::sim
