#pragma once

#include "tool/command.h"
#include "tool/plain_window.h"

namespace quorvex::tool {

/// Runs `job` on the window's open port. A port that was lost meanwhile is told as that.
Result runJob(const UnitJob& job, PlainWindow& window);

/// Opens the port that the request names and runs the job. `stopSignal` becomes the signal that interrupted
/// it: the line on the wire is finished, nothing more is sent, and the result says how far it got. Throws
/// Failure where the port cannot be opened.
Result runOnPort(const Request& request, const UnitJob& job, int& stopSignal);

}  // namespace quorvex::tool
