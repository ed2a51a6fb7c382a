#pragma once

#include <cstdint>
#include <string>

#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// Giving a Beltpack its serial number, entered in decimal.
class PsnUpdate {
public:
    static constexpr std::int32_t kHighest = 0xFFFFF;  ///< that a Beltpack takes; the field takes larger ones
    /// What a Beltpack with the serial number `psn` (0 or more) holds: 10 digits up to kHighest.
    static std::string digitsOf(std::int32_t psn);

    PsnUpdate(CommandLink& link, SettingsImage& image, TextField& beltpackId);

    void CommandSetBpId_Click();
    /// After each typed character has passed the filter; Enter runs the update.
    void TextBeltpackId_KeyPress(char16_t key);

private:
    CommandLink& link_;
    SettingsImage& image_;
    TextField& beltpackId_;
};

}  // namespace quorvex
