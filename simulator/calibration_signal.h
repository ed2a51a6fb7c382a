#pragma once

#include <cstdint>

namespace quorvex::sim {

/// What a Kirk module in calibration mode hears from the test set: a carrier whose DC balance follows the
/// module's Mid value, drifts slowly with its temperature and is noisy. The same calls give the same
/// readings, so a test can rely on them.
class CalibrationSignal {
public:
    struct Reading {
        int dcBalance = 0;  ///< -32768 to 32767; about -40 when the module is on the carrier, 0 without one
        int rssi = 0;       ///< 0 to 255
    };

    /// The Mid value, 0 to 255, at which the module sits on the carrier. Each step away moves the DC
    /// balance by 64.
    void setCentre(int mid) { centre_ = mid; }

    /// Whether a test set is there to be heard at all.
    void setCarrierPresent(bool present) { carrierPresent_ = present; }

    /// The reading `elapsedMs` after calibration began, with the module's Mid value at `mid`.
    Reading read(std::int64_t elapsedMs, int mid);

private:
    int noise(int amplitude);

    int centre_ = 4;
    bool carrierPresent_ = true;
    std::uint32_t noiseState_ = 1;
};

}  // namespace quorvex::sim
