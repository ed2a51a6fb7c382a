#pragma once

#include <string>

#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// Writing a Beltpack's Park Length Indicator.
class PliUpdate {
public:
    PliUpdate(CommandLink& link, SettingsImage& image, TextField& pli);

    /// Ends quietly for a value that does not fit 16 bits.
    void CmdUpdatePli_Click();
    /// After each typed character has passed the filter; Enter runs the update.
    void TextPli_KeyPress(char16_t key);

private:
    void update();

    CommandLink& link_;
    SettingsImage& image_;
    TextField& pli_;
};

}  // namespace quorvex
