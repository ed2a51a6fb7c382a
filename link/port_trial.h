#pragma once

#include "link/port_device.h"

namespace quorvex {

/// What a port's state is by what the toolkit says when it opens it, and closes it at once. A port that this
/// program has open counts as in use.
PortState tryPort(const PortDevice& device);

}  // namespace quorvex
