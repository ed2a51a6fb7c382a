#pragma once

#include <string>

#include "beltpack/settings_image.h"
#include "link/command_link.h"

namespace quorvex {

/// Writing the whole image to a Beltpack, each parameter verified by reading it back at once.
class BeltpackWrite {
public:
    BeltpackWrite(CommandLink& link, SettingsImage& image);

    void CommandWrite_Click();

private:
    /// False when the unit did not answer the read-back.
    bool writeAll();
    bool writeOne(const Parameter& parameter);
    void reportNotVerified();
    void reportFailure();

    CommandLink& link_;
    SettingsImage& image_;
};

}  // namespace quorvex
