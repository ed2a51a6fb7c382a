#pragma once

#include <vector>

#include "tour/visitor.h"

namespace quorvex::tour {

/// One thing that the visitor does and checks. After it a picture is taken under its name, so it ends with
/// something worth seeing: an open menu or dialog may be left to the next step.
struct Step {
    const char* name;  ///< lower-case words joined by "-"
    void (*take)(Visitor&);
};

/// The tour, in order; each step finds the window as the one before has left it. A further step is a
/// function in steps.cpp and a line in this list.
const std::vector<Step>& allSteps();

}  // namespace quorvex::tour
