#pragma once

#include <functional>

#include "link/runtime_fault.h"

namespace quorvex {

/// The number of the run-time fault that `deed` ends with, 0 for none.
inline int faultOf(const std::function<void()>& deed) {
    try {
        deed();
    } catch (const RuntimeFault& fault) {
        return fault.number();
    }
    return 0;
}

}  // namespace quorvex
