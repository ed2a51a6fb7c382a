#include "simulator/beltpack.h"

#include <array>
#include <string_view>
#include <utility>

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr int kVersionCode = 0x08;
constexpr int kCalibrationCode = 0x09;
constexpr int kLiveFmCode = 0x07;

constexpr int kMasterVolume = 0x0B;
constexpr int kRssiThreshold = 0x38;
constexpr int kReceive = 0x39;
constexpr int kTransmit = 0x3A;
constexpr int kFrequency = 0x3C;
constexpr int kFmDeviation = 0x3D;
constexpr int kProductionFlag = 0x3E;

// What a Beltpack in service might hold, by parameter number from 0x01 on.
constexpr std::array<std::string_view, 21> kParameters{
    "0044303039", "1F", "100ECE1000", "30", "00", "01", "01", "02", "03", "00", "10",
    "01",         "00", "03FF000000", "00", "00", "00", "01", "00", "00", "02"};

}  // namespace

Beltpack::Beltpack(RfModule module) : Unit(module, {kVersionCode, kCalibrationCode}) {
    int number = 1;
    for (const std::string_view digits : kParameters)
        registers().define(number++, digits);
    registers().define(kFmDeviation, "21");
    registers().define(kProductionFlag, "00");
    if (module == RfModule::kRm5) {
        registers().define(kFrequency, "0A");
    } else {
        registers().define(kFrequency, "04");
        registers().define(kReceive, "03");
        registers().define(kTransmit, "02");
        registers().define(kRssiThreshold, "48");
    }
}

bool Beltpack::handleOwnCommand(const Frame& frame, std::int64_t /*nowMs*/) {
    if (frame.number != kLiveFmCode || frame.length != 2)
        return false;
    liveFmDeviation_ = parseHex(frame.data);
    return true;
}

std::optional<std::string> Beltpack::refusal(int number) const {
    const bool kirkOnly = number == kRssiThreshold || number == kReceive || number == kTransmit;
    if (module() == RfModule::kRm5 && kirkOnly)
        return "# 01BF";
    return std::nullopt;
}

int Beltpack::midValue() const {
    return *parseHex(value(kFrequency));
}

void Beltpack::stream() {
    const std::int64_t dueMs = *display_.nextMs();
    std::string frame = display_.nextFrame(*parseHex(value(kMasterVolume)), faults());
    const std::string shown = "display frame, " + std::to_string(frame.size()) + " bytes";
    send(std::move(frame), shown, dueMs);
}

}  // namespace quorvex::sim
