#pragma once

#include "link/stop_signals.h"

namespace quorvex {

/// Lets SIGTERM, SIGINT, SIGHUP and the end of the desktop session end the program as "&Exit" does, from the
/// event loop, however deep operations wait inside each other. Made once, behind the application.
class EndSignals : public StopSignals {
public:
    EndSignals();
};

}  // namespace quorvex
