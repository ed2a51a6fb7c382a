#pragma once

#include <string>
#include <string_view>

#include "link/command_link.h"

namespace quorvex {

// What the single-value updates have in common: write, read back, tell.

/// Shows `sending` in the status line and the hourglass while it sends both lines and collects the reply to
/// the second, `replyLength` characters. kError after 2 s of silence.
std::string writeAndReadBack(CommandLink& link, std::string_view sending, const std::string& writeLine,
                             const std::string& readLine, int replyLength);

/// Tells that the value was not read back; `status` says what could not be updated.
void reportNotReadBack(CommandLink& link, std::string_view status);

}  // namespace quorvex
