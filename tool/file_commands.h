#pragma once

#include "tool/command.h"

namespace quorvex::tool {

// The commands that work on settings files alone.

Result showFile(const Request& request);
Result checkFile(const Request& request);
Result diffFiles(const Request& request);

}  // namespace quorvex::tool
