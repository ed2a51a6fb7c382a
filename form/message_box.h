#pragma once

#include <string_view>

#include "link/console.h"

namespace quorvex {

/// The caption of the main window, and the title of every box that has none of its own. It is not set as the
/// application's display name: the toolkit would add that to the titles of all dialogs.
inline constexpr std::string_view kProgramTitle = "Quorvex Config";

/// Shows a modal box with an OK button over the window in use; returns when it is closed. An empty title
/// means the program's own.
void showMessageBox(std::string_view text, Icon icon, std::string_view title = {});

}  // namespace quorvex
