#pragma once

#include <functional>
#include <vector>

#include "tool/result.h"

namespace quorvex::tool {

class PlainWindow;

/// Runs an operation that writes the parameters `written` of the Beltpack just read, then reads the Beltpack
/// again. Tells what has changed, what is otherwise than it was written, and, where the unit fell silent, how
/// far it got.
Result writeAndCompare(PlainWindow& window, const std::vector<int>& written,
                       const std::function<void()>& operation);

}  // namespace quorvex::tool
