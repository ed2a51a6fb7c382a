#include "simulator/fault_list.h"

#include <algorithm>

namespace quorvex::sim {

void FaultList::add(const Fault& fault) {
    faults_.push_back(fault);
}

void FaultList::clear() {
    faults_.clear();
}

std::optional<Fault> FaultList::strike(FaultKind kind, std::optional<int> number) {
    const auto found = std::ranges::find_if(faults_, [&](const Fault& fault) {
        return fault.kind == kind && (!fault.number || fault.number == number);
    });
    if (found == faults_.end())
        return std::nullopt;
    const Fault struck = *found;
    if (struck.once)
        faults_.erase(found);
    return struck;
}

}  // namespace quorvex::sim
