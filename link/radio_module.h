#pragma once

#include <cstdint>
#include <string>

#include "link/number_text.h"

namespace quorvex {

/// The radio module that the unit carries, as operations see it.
class RadioModule {
public:
    static constexpr std::int16_t kRm5 = 0;   ///< Plextek RM5
    static constexpr std::int16_t kKirk = 1;  ///< Kirk KRM 1800

    virtual ~RadioModule() = default;
    /// kRm5 or kKirk; another number where one was stored by hand.
    virtual std::int16_t type() const = 0;
    /// Holds and stores `type` and lays the calibration controls out for it.
    virtual void change(std::int16_t type) = 0;

    bool isKirk() const { return type() == kKirk; }
    /// How a frequency accuracy byte is shown: an RM5 holds a code for a signed offset, others the value
    /// itself.
    std::string frequencyText(int byte) const {
        return std::to_string(type() == kRm5 ? NibbleToOffset(byte) : byte);
    }
};

}  // namespace quorvex
