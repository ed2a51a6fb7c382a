#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/unit.h"

namespace quorvex::sim {

/// An Active Antenna with its two radio modules, A and B. One byte in each register:
///
///     value                A     B
///     FM deviation        0x01  0x02
///     frequency           0x05  0x06   RM5: 0 to 15, 7 in the middle. Kirk: the Mid value
///     receive adjust      0x07  0x08   Kirk only
///     transmit adjust     0x09  0x0A   Kirk only
///     RSSI threshold      0x0B         Kirk only, both modules
///
/// Version request "! 0107"; live FM deviation "! 0306" + A + B, which is not stored; calibration mode
/// "! 0308E803" and "! 03080000"; TBR6 mode "! 0E030002100ECE00001503FF000000", acknowledged by "^ 020002".
/// In calibration mode the records come from the module that was written to last, A before any write.
class ActiveAntenna : public Unit {
public:
    enum class Module { kA, kB };

    explicit ActiveAntenna(RfModule module);

    /// Whether an RM5 antenna answers the reads that only a Kirk one can serve by "# 01BF" instead of not
    /// at all.
    void setRefusesKirkReads(bool refuses) { refusesKirkReads_ = refuses; }

    /// The FM deviation last set live, 0 to 255; nothing before the first time.
    std::optional<int> liveFmDeviation(Module module) const;
    bool inTbr6Mode() const { return inTbr6Mode_; }

private:
    bool handleOwnCommand(const Frame& frame, std::int64_t nowMs) override;
    std::optional<std::string> refusal(int number) const override;
    int midValue() const override;
    void written(int number) override;

    bool refusesKirkReads_ = false;
    bool inTbr6Mode_ = false;
    Module heard_ = Module::kA;
    std::optional<int> liveFmA_;
    std::optional<int> liveFmB_;
};

}  // namespace quorvex::sim
