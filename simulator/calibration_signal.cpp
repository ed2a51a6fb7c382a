#include "simulator/calibration_signal.h"

#include <algorithm>
#include <cstdlib>

namespace quorvex::sim {

namespace {

constexpr int kOnCarrier = -40;
constexpr int kDcPerStep = 64;
constexpr int kDcNoise = 4;
constexpr int kRssiOnCarrier = 80;
constexpr int kRssiPerStep = 6;
constexpr int kRssiNoise = 2;
constexpr int kRssiSilence = 4;

/// A triangle between -12 and 12, once a minute, beginning at 0.
int drift(std::int64_t elapsedMs) {
    constexpr int kAmplitude = 12;
    constexpr std::int64_t kQuarterMs = 15'000;
    const std::int64_t phase = elapsedMs % (4 * kQuarterMs);
    const std::int64_t fromPeak = std::abs((phase + kQuarterMs) % (4 * kQuarterMs) - 2 * kQuarterMs);
    return static_cast<int>(kAmplitude * (kQuarterMs - fromPeak) / kQuarterMs);
}

}  // namespace

CalibrationSignal::Reading CalibrationSignal::read(std::int64_t elapsedMs, int mid) {
    if (!carrierPresent_)
        return {0, kRssiSilence + noise(kRssiNoise)};
    const int steps = mid - centre_;
    const int dcBalance = kOnCarrier + kDcPerStep * steps + drift(elapsedMs) + noise(kDcNoise);
    const int rssi = kRssiOnCarrier - kRssiPerStep * std::abs(steps) + noise(kRssiNoise);
    return {std::clamp(dcBalance, -32768, 32767), std::clamp(rssi, 0, 255)};
}

int CalibrationSignal::noise(int amplitude) {
    noiseState_ = noiseState_ * 1'664'525U + 1'013'904'223U;
    const auto span = static_cast<std::uint32_t>(2 * amplitude + 1);
    return static_cast<int>((noiseState_ >> 16U) % span) - amplitude;
}

}  // namespace quorvex::sim
