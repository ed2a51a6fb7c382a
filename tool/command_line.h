#pragma once

#include <QStringList>

#include "tool/command.h"

namespace quorvex::tool {

/// The words behind the program's name. Throws Failure that names what is wrong and what would be right.
Request parseCommandLine(const QStringList& words);

/// What --help prints: of a command, or of all.
QString helpText(const Command* command);

}  // namespace quorvex::tool
