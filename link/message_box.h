#pragma once

#include <string_view>

#include "link/console.h"

namespace quorvex {

/// Shows a modal box with an OK button over the window in use; returns when it is closed. An empty title
/// means the program's own.
void showMessageBox(std::string_view text, Icon icon, std::string_view title = {});

}  // namespace quorvex
