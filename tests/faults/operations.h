#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/workshop.h"

namespace quorvex {

/// One thing that a technician can start.
struct TestedOperation {
    enum class Kind { exchange, calibration, display };

    std::string name;
    UnitKind unit;
    Kind kind;
    std::function<void(Workshop&)> fill;  ///< what the technician has typed
    std::function<void(Workshop&)> run;
    const char* success;  ///< the status text of a run that went well, as the journal has it; empty for none
    int probe = -1;  ///< the reply, from 0, without which the unit is taken for one with the other module
    /// How it is told as failed where a fault is raised in its waits: the last status text and the boxes, as
    /// the journal has them. Empty where the fault comes out and ends the program.
    std::vector<std::string> atFault{};
    bool endsAtFirst = false;  ///< whether one in its first wait comes out all the same
};

const std::vector<TestedOperation>& testedOperations();

/// A text that an operation may end with, and the word for it on the page. "*" stands for any text.
struct EndText {
    const char* word;
    const char* entry;
};
const std::vector<EndText>& statusTexts();
const std::vector<EndText>& boxTexts();

}  // namespace quorvex
