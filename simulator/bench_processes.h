#pragma once

#include <functional>
#include <vector>

#include "simulator/options.h"

namespace quorvex::sim {

/// Plays each of `units` by `play` in a process of its own; `play` returns the exit status. SIGINT, SIGTERM,
/// SIGHUP and SIGUSR1 are passed on. One that ends with a status other than 0 ends all; one that was killed
/// is gone, as if its cable had been pulled. Returns when all have ended: 0, or the status of the first that
/// failed.
int playBench(const std::vector<Options>& units, const std::function<int(const Options&)>& play);

}  // namespace quorvex::sim
