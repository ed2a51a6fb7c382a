#pragma once

#include "tool/command.h"

namespace quorvex::tool {

/// antenna [--tbr6]
UnitJob prepareAntenna(const Request& request);

}  // namespace quorvex::tool
