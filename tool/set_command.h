#pragma once

#include "tool/command.h"

namespace quorvex::tool {

/// set psn|system-id|pli|rf-carriers VALUE
UnitJob prepareSet(const Request& request);

}  // namespace quorvex::tool
