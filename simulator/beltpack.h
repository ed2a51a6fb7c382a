#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/display_stream.h"
#include "simulator/unit.h"

namespace quorvex::sim {

/// A Beltpack: the 21 parameters 0x01 to 0x15 (five bytes in 0x01, 0x03 and 0x0E, one byte in all others)
/// and the radio module's values, one byte each:
///
///     0x38  RSSI threshold       Kirk only
///     0x39  receive adjust       Kirk only
///     0x3A  transmit adjust      Kirk only
///     0x3C  frequency accuracy   RM5: 0 to 15, 7 in the middle. Kirk: the Mid value
///     0x3D  FM deviation
///     0x3E  production flag
///
/// An RM5 Beltpack answers reads of what only a Kirk one has by "# 01BF".
///
/// Version request "! 0108"; live FM deviation "! 0207" + HH, which is not stored; calibration mode
/// "! 0309E803" and "! 03090000". With its display stream on it sends copies of its display as well.
class Beltpack : public Unit {
public:
    explicit Beltpack(RfModule module);

    /// The FM deviation last set live, 0 to 255; nothing before the first time.
    std::optional<int> liveFmDeviation() const { return liveFmDeviation_; }

    /// The copies of its display; start and stop them here.
    DisplayStream& displayStream() { return display_; }

private:
    bool handleOwnCommand(const Frame& frame, std::int64_t nowMs) override;
    std::optional<std::string> refusal(int number) const override;
    int midValue() const override;
    std::optional<std::int64_t> nextStreamMs() const override { return display_.nextMs(); }
    void stream() override;

    DisplayStream display_;
    std::optional<int> liveFmDeviation_;
};

}  // namespace quorvex::sim
