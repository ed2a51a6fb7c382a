#pragma once

#include "tool/command.h"

namespace quorvex::tool {

/// screen FILE.bmp [--frames N]
UnitJob prepareScreen(const Request& request);
QStringList savesOfScreen(const Request& request);

}  // namespace quorvex::tool
