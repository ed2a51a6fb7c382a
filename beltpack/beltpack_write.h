#pragma once

#include <string>

#include "beltpack/settings_image.h"
#include "link/operation.h"

namespace quorvex {

/// Writing the whole image to a Beltpack, each parameter verified by reading it back at once.
class BeltpackWrite {
public:
    BeltpackWrite(CommandLink& link, SettingsImage& image);

    void CommandWrite_Click();

private:
    /// False when the unit did not answer a read-back, or the image no longer holds what was to be written.
    bool writeAll();
    bool writeOne(Operation& operation, const Parameter& parameter);
    void reportNotVerified();

    CommandLink& link_;
    SettingsImage& image_;
};

}  // namespace quorvex
