#pragma once

#include "beltpack/beltpack_write.h"
#include "beltpack/settings_image.h"
#include "link/command_link.h"

namespace quorvex {

/// "Set Production Values": fills the image with the factory values of its hardware revision and writes it.
class ProductionValues {
public:
    ProductionValues(CommandLink& link, SettingsImage& image, BeltpackWrite& write);

    /// Throws "Type mismatch" before the first read of a Beltpack; nothing is set or sent then.
    void buttonSetProdSettiings_Click();

private:
    /// Only the hardware revisions 0, 1 and 2 have values.
    void fill();

    CommandLink& link_;
    SettingsImage& image_;
    BeltpackWrite& write_;
};

}  // namespace quorvex
