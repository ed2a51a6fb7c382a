#pragma once

#include <string>
#include <vector>

#include "tests/faults/faulty_port.h"

namespace quorvex {

/// One thing that goes wrong on the line.
struct TestedFault {
    /// What it may not spoil.
    enum class Promise {
        none,
        noMixture,      ///< where all seems well, no value is another than the unit's
        harmlessAlone,  ///< nothing, while the unit says nothing else
        harmless,       ///< nothing, on any unit
    };

    std::string name;
    FaultyPort::Place place;
    FaultyPort::Strike strike;
    Promise promise = Promise::none;
    /// Whether it is also tried at all lines from one on.
    bool mayStay = true;
    /// Whether it fits what the unit sends by itself, too.
    bool fitsStream = true;
    /// At the place none: before the operation begins.
    bool closedAtStart = false;
};

const std::vector<TestedFault>& testedFaults();

}  // namespace quorvex
