#include "simulator/calibration_stream.h"

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr int kOtherRecordEvery = 3;

std::string otherRecord(int count) {
    return "! 0212" + hexByte(count & 0xFF) + kLineEnd;
}

}  // namespace

void CalibrationStream::start(std::int64_t nowMs, FaultList& faults) {
    startedMs_ = nowMs;
    sent_ = 0;
    stopAfter_.reset();
    nextMs_ = nowMs + intervalMs_;
    if (const auto fault = faults.strike(FaultKind::kStreamStops)) {
        stopAfter_ = fault->amount;
        if (fault->amount == 0)
            stop();
    }
}

std::vector<std::string> CalibrationStream::nextRecords(int mid, FaultList& faults) {
    std::vector<std::string> records;
    if (sent_ % kOtherRecordEvery == kOtherRecordEvery - 1)
        records.push_back(otherRecord(sent_ / kOtherRecordEvery));
    records.push_back(statusRecord(mid, faults));
    ++sent_;
    *nextMs_ += intervalMs_;
    if (stopAfter_ && sent_ >= *stopAfter_)
        stop();
    return records;
}

std::string CalibrationStream::statusRecord(int mid, FaultList& faults) {
    const CalibrationSignal::Reading reading = signal_.read(*nextMs_ - startedMs_, mid);
    const int bits = reading.dcBalance & 0xFFFF;
    std::string record = "! 0407" + hexByte(bits & 0xFF) + hexByte(bits >> 8) + hexByte(reading.rssi);
    if (sent_ % 2 == 1) {
        if (const auto fault = faults.strike(FaultKind::kHalfRecords))
            return record.substr(0, static_cast<std::size_t>(fault->amount));
    }
    return record + kLineEnd;
}

}  // namespace quorvex::sim
