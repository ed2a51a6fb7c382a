#pragma once

#include <vector>

#include "tool/shares.h"

namespace quorvex::tool {

/// Does the shares all at once, each by a process of its own, and waits for all of them. What they say is
/// passed on, each line marked by its port. The result is the table of what became of them; its status is the
/// worst of theirs. Signals are passed on; `stopSignal` becomes the one by which one of them was interrupted.
Result runSideBySide(const std::vector<Share>& shares, int& stopSignal);

}  // namespace quorvex::tool
