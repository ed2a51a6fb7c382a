#pragma once

#include <functional>

#include "simulator/line_end.h"
#include "simulator/options.h"

namespace quorvex::sim {

/// Lets `unit` serve on a pseudo-terminal as `options` say (link, pace, traffic) until SIGINT, SIGTERM or
/// SIGHUP. Calls `dump` then and at each SIGUSR1. Throws std::runtime_error with a sentence if the port
/// cannot be made.
void serve(LineEnd& unit, const Options& options, const std::function<void()>& dump);

}  // namespace quorvex::sim
