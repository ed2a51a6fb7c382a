#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/workshop.h"

namespace quorvex {

/// What happens in the wait of an operation: another one, or something that is none.
struct Second {
    enum class Kind {
        operation,
        port,  ///< a port is chosen; the operation may send nothing more
        file,  ///< an OtherFile takes the image's place
        end,   ///< what the end of the program does to the port
    };

    std::string name;
    Kind kind;
    std::function<void(Workshop&)> fill;  ///< what the technician types before
    bool isFilledEarly = false;           ///< before the first operation: fields that nobody can type into
    std::function<void(Workshop&)> run;
    std::string
        success{};  ///< the status text of a run that went well, as the journal has it; empty for none
    bool beltpackOnly = false;
    bool kirkOnly = false;
    bool forAntennas = false;  ///< on a Beltpack its lines mean other registers

    bool fits(UnitKind unit) const;
    /// The program may end behind a dialog, too; for anything else its window has to be reached.
    bool needsWindow() const { return kind != Kind::end; }
};

/// Each button once, then the events.
const std::vector<Second>& seconds();

}  // namespace quorvex
