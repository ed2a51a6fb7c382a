#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/bench.h"

namespace quorvex {

using Fill = std::pair<const char*, const char*>;

/// One button of the main window that talks to a unit.
struct Deal {
    const char* name;
    bool isAntenna;
    sim::RfModule module;
    const char* button;
    std::vector<Fill> fills;  ///< fields and what is typed into them before
    bool readFirst;
    QString box;      ///< of the failure; empty for none
    QString failure;  ///< where it ends: the status line, or the version
    QString success;
    const char* version;  ///< the field that tells the outcome; null: the status line does
};

const std::vector<Deal>& deals();
/// The same of calibrations, with a Kirk. Each opens its dialog.
const std::vector<Deal>& calibrations();
/// A unit for it, as it is at first.
std::unique_ptr<sim::Unit> unitFor(const Deal& deal);

}  // namespace quorvex
