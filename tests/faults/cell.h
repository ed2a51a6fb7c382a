#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "tests/faults/faults.h"
#include "tests/faults/operations.h"

namespace quorvex {

/// How one run of an operation ended, in plain words.
struct Outcome {
    QString told;    ///< the last status text and the boxes, by their words
    QString became;  ///< of the image, the fields and the unit, against a clean run; the worst of it
    QString text() const { return told + "; " + became; }
    bool operator==(const Outcome&) const = default;
};

/// One operation without a fault: what the others are measured by.
class CleanRun {
public:
    explicit CleanRun(const TestedOperation& operation);

    const TestedOperation& operation() const { return *operation_; }
    int count(FaultyPort::Place place) const;
    const std::vector<std::string>& lines() const { return lines_; }
    /// What was there before and after it.
    const Workshop::Values& before() const { return before_; }
    const Workshop::Values& after() const { return after_; }
    const Outcome& outcome() const { return outcome_; }
    /// How long the program waits for the reply number `index` of its place.
    FakeLoop::Tick limitMs(FaultyPort::Place place, int index) const;
    /// Whether the program waits for that reply, and for nothing else meanwhile.
    bool isAwaited(int reply) const { return limits_[static_cast<std::size_t>(reply)] > 0; }
    /// When the reply or record came, from the start of the operation.
    FakeLoop::Tick atMs(FaultyPort::Place place, int index) const;
    FakeLoop::Tick longestMs() const;

private:
    const TestedOperation* operation_;
    std::vector<std::string> lines_;
    std::vector<FakeLoop::Tick> repliedAt_, streamedAt_;
    Workshop::Values before_, after_;
    Outcome outcome_;
    std::vector<FakeLoop::Tick> limits_;  ///< of the replies; 0 for one that is not waited for
};

/// One fault at one place of one operation.
struct Cell {
    const CleanRun& clean;
    const TestedFault& fault;
    FaultyPort::Place place;
    int first = 0;
    bool once = true;
    FakeLoop::Tick startTick = 0;
};

struct CellResult {
    Outcome outcome;
    QStringList end;         ///< the last status text and the boxes, as the journal has them
    QString thrown;          ///< the fault that came out, which ends the program; empty for none
    QStringList complaints;  ///< what no outcome may be like; empty if nothing is wrong
    FakeLoop::Tick tookMs = 0;
};

/// Runs the operation with the fault, then once more without it.
CellResult runCell(const Cell& cell);

}  // namespace quorvex
