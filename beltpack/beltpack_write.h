#pragma once

#include <string>

#include "beltpack/settings_image.h"
#include "link/operation.h"

namespace quorvex {

class Transfer;

/// Writing the whole image to a Beltpack, each parameter verified by reading it back at once.
class BeltpackWrite {
public:
    BeltpackWrite(CommandLink& link, SettingsImage& image);

    void CommandWrite_Click() { write("write"); }
    /// The same; `name`: what it is called on record.
    void write(const std::string& name);

private:
    /// False when the unit did not answer a read-back, or the image no longer holds what was to be written.
    bool writeAll(const std::string& name);
    bool writeOne(Operation& operation, Transfer& transfer, int record);
    void reportNotVerified();

    CommandLink& link_;
    SettingsImage& image_;
};

}  // namespace quorvex
