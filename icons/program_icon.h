#pragma once

#include <QIcon>

namespace quorvex {

/// The program's icon. A size is decoded when it is first shown.
QIcon programIcon();

}  // namespace quorvex
