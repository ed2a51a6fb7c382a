#pragma once

#include "tool/command.h"

namespace quorvex::tool {

// The commands that work on all parameters of a Beltpack.

UnitJob prepareRead(const Request& request);
UnitJob prepareWrite(const Request& request);
UnitJob prepareVerify(const Request& request);
UnitJob prepareProductionValues(const Request& request);
QStringList savesOfRead(const Request& request);
QStringList identitiesOfWrite(const Request& request);

}  // namespace quorvex::tool
