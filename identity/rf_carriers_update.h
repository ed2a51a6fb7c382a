#pragma once

#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// Writing a Beltpack's RF carrier mask, 10 hexadecimal digits, as typed.
class RfCarriersUpdate {
public:
    RfCarriersUpdate(CommandLink& link, SettingsImage& image, TextField& mask);

    /// Only beeps for a mask that is not 10 characters long.
    void CmdSetRfCarrs_Click();

private:
    CommandLink& link_;
    SettingsImage& image_;
    TextField& mask_;
};

}  // namespace quorvex
