#pragma once

#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// Giving a Beltpack its serial number, entered in decimal.
class PsnUpdate {
public:
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
