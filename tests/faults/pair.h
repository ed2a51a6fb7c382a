#pragma once

#include <QStringList>

#include "tests/faults/cell.h"
#include "tests/faults/second.h"

namespace quorvex {

struct PairResult {
    int cells = 0;
    QStringList complaints;  ///< what no cell may end like; empty if nothing is wrong
};

/// Runs the first operation once for each of its waits, in which the second begins, and for each way in which
/// the reply that the first waits for can come then. Afterwards the first one is run again, and `read`, which
/// is a read of the same unit.
PairResult runPair(const CleanRun& first, const CleanRun& read, const Second& second);

}  // namespace quorvex
