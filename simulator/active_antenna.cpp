#include "simulator/active_antenna.h"

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr int kVersionCode = 0x07;
constexpr int kCalibrationCode = 0x08;
constexpr int kLiveFmCode = 0x06;
constexpr int kTestModeCode = 0x03;
constexpr std::string_view kTbr6Data = "0002100ECE00001503FF000000";

constexpr int kFmDeviationA = 0x01;
constexpr int kFmDeviationB = 0x02;
constexpr int kFrequencyA = 0x05;
constexpr int kFrequencyB = 0x06;
constexpr int kReceiveA = 0x07;
constexpr int kReceiveB = 0x08;
constexpr int kTransmitA = 0x09;
constexpr int kTransmitB = 0x0A;
constexpr int kRssiThreshold = 0x0B;

}  // namespace

ActiveAntenna::ActiveAntenna(RfModule module) : Unit(module, {kVersionCode, kCalibrationCode}) {
    registers().define(kFmDeviationA, "21");
    registers().define(kFmDeviationB, "28");
    if (module == RfModule::kRm5) {
        registers().define(kFrequencyA, "0C");
        registers().define(kFrequencyB, "03");
        return;
    }
    registers().define(kFrequencyA, "04");
    registers().define(kFrequencyB, "03");
    registers().define(kReceiveA, "03");
    registers().define(kReceiveB, "05");
    registers().define(kTransmitA, "02");
    registers().define(kTransmitB, "06");
    registers().define(kRssiThreshold, "48");
}

std::optional<int> ActiveAntenna::liveFmDeviation(Module module) const {
    return module == Module::kA ? liveFmA_ : liveFmB_;
}

bool ActiveAntenna::handleOwnCommand(const Frame& frame, std::int64_t nowMs) {
    if (frame.number == kLiveFmCode && frame.length == 3) {
        liveFmA_ = parseHex(frame.data.substr(0, 2));
        liveFmB_ = parseHex(frame.data.substr(2, 2));
        return true;
    }
    if (frame.number == kTestModeCode && frame.data == kTbr6Data) {
        inTbr6Mode_ = true;
        if (faults().strike(FaultKind::kNoTbr6Ack))
            note("fault: no TBR6 acknowledgement", nowMs);
        else
            reply("^ 020002", std::nullopt, nowMs);
        return true;
    }
    return false;
}

std::optional<std::string> ActiveAntenna::refusal(int number) const {
    const bool kirkOnly = number >= kReceiveA && number <= kRssiThreshold;
    if (refusesKirkReads_ && module() == RfModule::kRm5 && kirkOnly)
        return "# 01BF";
    return std::nullopt;
}

int ActiveAntenna::midValue() const {
    return *parseHex(value(heard_ == Module::kA ? kFrequencyA : kFrequencyB));
}

void ActiveAntenna::written(int number) {
    if (number == kRssiThreshold)
        return;  // belongs to both modules
    heard_ = number % 2 == 1 ? Module::kA : Module::kB;
}

}  // namespace quorvex::sim
