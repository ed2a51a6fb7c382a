#pragma once

#include <QStringList>

namespace quorvex::tool {

/// Does what the words behind the program's name ask for, and prints what comes of it. The exit status.
int runTool(const QStringList& words);

}  // namespace quorvex::tool
