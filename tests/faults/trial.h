#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "tests/faults/operations.h"
#include "tests/faults/workshop.h"

namespace quorvex {

// What every run of an operation in the workshop has to go through.

/// The workshop as before any operation, what the technician types, and what will go wrong on the line.
void begin(Workshop& shop, const TestedOperation& operation, FaultyPort::Plan plan);
/// How a run came to an end.
struct End {
    QString thrown;        ///< the fault that came out; empty for none
    bool isStuck = false;  ///< no end until the cable was pulled
    /// What is wrong with that; empty for nothing.
    QString problem() const { return isStuck ? "no end" : thrown.isEmpty() ? "" : "thrown: " + thrown; }
};
End run(Workshop& shop, const TestedOperation& operation);
/// Lets `ms` pass with nobody at the window.
void pass(Workshop& shop, FakeLoop::Tick ms);
/// What must hold at the end of every run, with or without a fault.
QStringList leftBehind(const Workshop& shop);
/// Whether a value says that there is none.
bool isMissing(const std::string& value);

}  // namespace quorvex
