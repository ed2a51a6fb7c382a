#pragma once

#include "tool/command.h"

namespace quorvex::tool {

/// version beltpack|antenna
UnitJob prepareVersion(const Request& request);

}  // namespace quorvex::tool
