#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulator/calibration_signal.h"
#include "simulator/fault.h"

namespace quorvex::sim {

/// The records that a Kirk unit sends by itself while it is in calibration mode. A Beltpack's calibration
/// on the line (an Active Antenna differs in the numbers, and enters with "! 0308E803"):
///
///     program   unit            what it is
///     # 0138                    RSSI threshold, for the dialog to show
///               # 02B848
///     ! 0309E803                calibration mode on; not answered
///               ! 0407D7FF51    a record: type 07, DC balance FFD7 (low byte first) = -41, RSSI 51
///               ! 0407DAFF50
///               ! 021200        a record of another type, every third time
///               ! 0407D6FF52
///     # 027903                  Receive, Transmit and Mid, moved together by the Mid slider;
///     # 027a03                  writes are not answered
///     # 027c05
///               ! 0407190050    one Mid step up: the DC balance moves by 64
///     ! 020722                  FM deviation, live; not answered
///     # 0102                    is anybody there? Reads are answered between the records
///               # 02821F
///     # 027d22                  what the dialog's OK stores
///     # 027c05
///     ! 03090000                calibration mode off; the records end
///     # 013D
///               # 02BD22
///
/// The digits after "! " count the payload bytes of a record.
class CalibrationStream {
public:
    /// Time from one record of type 07 to the next; at least 1 ms. From the next start on.
    void setIntervalMs(int intervalMs) { intervalMs_ = intervalMs; }

    CalibrationSignal& signal() { return signal_; }

    /// Starts the records, the first one interval after `nowMs`. Starting again starts afresh.
    void start(std::int64_t nowMs, FaultList& faults);
    void stop() { nextMs_.reset(); }

    /// When the next records are due; nothing while there are none.
    std::optional<std::int64_t> nextMs() const { return nextMs_; }

    /// What goes out at nextMs(), line ends included, with the module's Mid value at `mid`; moves nextMs()
    /// on. To be called only while nextMs() holds a time.
    std::vector<std::string> nextRecords(int mid, FaultList& faults);

private:
    std::string statusRecord(int mid, FaultList& faults);

    CalibrationSignal signal_;
    int intervalMs_ = 500;
    std::int64_t startedMs_ = 0;
    std::optional<std::int64_t> nextMs_;
    std::optional<int> stopAfter_;  ///< records of type 07
    int sent_ = 0;                  ///< records of type 07 since the start
};

}  // namespace quorvex::sim
