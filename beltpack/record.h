#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "beltpack/transfer_log.h"
#include "link/late_work.h"

namespace quorvex {

/// What was read from Beltpacks and written to them, in a folder that several programs may share:
///
///     100001/2026-11-22T081530-as-found.bpc    what a read has found; 100001 is the PSN
///     100001/2026-11-22T081533-as-left.bpc     what a write has left
///     journal.csv                              a line for each of both: time, port, PSN, operation, outcome,
///                                              differences
///
/// Times are local. A second file within a second gets "_2" behind the time. Files and lines are written
/// whole or not at all, on a thread of its own, so that no disk holds up an operation.
class Record {
public:
    /// The folder is made if need be. `tell` gets a sentence, once, when something cannot be kept. It is
    /// called on any thread and must return at once; not after finish.
    Record(const QString& folder, std::function<void(const QString&)> tell);
    /// Finishes, too.
    ~Record();
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    /// Returns at once.
    void keep(const TransferEntry& entry);
    /// Waits for a slow disk, some seconds at most; what was not kept by then is told and lost.
    void finish();

private:
    class Place;
    std::shared_ptr<Place> place_;
    LateWork work_;
    bool isFinished_ = false;
};

}  // namespace quorvex
