#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "beltpack/settings_image.h"
#include "link/operation.h"

namespace quorvex {

// What the single-value updates have in common: write, read back, tell.

/// Shows `sending` in the status line and the hourglass while it writes `data` to the parameter `record` and
/// collects the reply to reading it back; kError after 2 s of silence. Nothing when the unit or the image is
/// another one by then, so that the update has failed whatever it makes of a reply.
std::optional<std::string> writeAndReadBack(CommandLink& link, const SettingsImage& image, int record,
                                            std::string_view sending, std::string_view data);

/// Tells that the value was not read back; `status` says what could not be updated.
void reportNotReadBack(CommandLink& link, std::string_view status);

}  // namespace quorvex
