#pragma once

#include <optional>
#include <vector>

#include "simulator/fault.h"

namespace quorvex::sim {

/// The faults that a unit has been given, and which of the "once" ones have struck.
class FaultList {
public:
    void add(const Fault& fault);
    void clear();

    /// Asks at a step whether a fault of `kind` strikes there. `number` is the register that the step is
    /// about; without one, only faults that name no register strike. A fault meant for once is gone with
    /// the answer, so ask exactly when it would show.
    std::optional<Fault> strike(FaultKind kind, std::optional<int> number = std::nullopt);

private:
    std::vector<Fault> faults_;
};

}  // namespace quorvex::sim
