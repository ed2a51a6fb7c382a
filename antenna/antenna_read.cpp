#include "antenna/antenna_read.h"

#include <string>

#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

/// Whether the antenna answers the probe as one with a Kirk does.
bool answersAsKirk(Operation& operation) {
    operation.serialSendString(kAntennaModuleA.freqAdjustRx.readLine);
    // One line is waited for; two more are taken if they are there already.
    for (const int limitUnits : {limit::kLine, limit::kArrivedOnly, limit::kArrivedOnly}) {
        const std::string reply = operation.serialGetResponse(limitUnits, kCarriageReturn);
        if (reply == kError)
            return false;
        if (reply.find(kAntennaModuleA.freqAdjustRx.reply) != std::string::npos)
            return true;
    }
    return false;
}

}  // namespace

AntennaRead::AntennaRead(CommandLink& link, RadioModule& module, CalibrationFields fieldsA,
                         CalibrationFields fieldsB)
    : link_(link), module_(module), fieldsA_(fieldsA), fieldsB_(fieldsB) {}

bool AntennaRead::ReadActiveAntennaSettings(bool setTbr6) {
    try {
        Operation operation(link_);
        operation.hourglass();
        readAll(operation);
        if (setTbr6)
            setTbr6Mode(operation);
        else
            link_.status("Settings read from Active Antenna", kBlack);
        return true;
    } catch (const RuntimeFault&) {
        link_.console().messageBox("No Response from Active Antenna!", Icon::critical);
        link_.status("Error communicating with Active Antenna.", kBlack);
        return false;
    }
}

void AntennaRead::readAll(Operation& operation) {
    link_.status("Reading FM Deviation...", kBlack);
    showByte(operation, kAntennaModuleA.fmDeviation, fieldsA_.fmDeviation);
    showByte(operation, kAntennaModuleB.fmDeviation, fieldsB_.fmDeviation);
    link_.status("Detecting RF module type...", kBlack);
    detectModule(operation);
    link_.status("Reading Frequency Accuracy...", kBlack);
    readFrequencies(operation, kAntennaModuleA, fieldsA_);
    readFrequencies(operation, kAntennaModuleB, fieldsB_);
    // No request follows: the version has a button of its own, and the next text replaces this one.
    link_.status("Reading DECT version...", kBlack);
}

void AntennaRead::detectModule(Operation& operation) {
    const std::int16_t detected = answersAsKirk(operation) ? RadioModule::kKirk : RadioModule::kRm5;
    if (detected != module_.type() && !operation.isOver())
        module_.change(detected);
}

void AntennaRead::readFrequencies(Operation& operation, const AntennaModule& module,
                                  const CalibrationFields& fields) {
    const int accuracy = readByte(operation, module.freqAccuracy);
    fields.freqAccuracy.setText(module_.frequencyText(accuracy));
    if (module_.isKirk()) {
        showByte(operation, module.freqAdjustRx, fields.freqAccuracyRx);
        showByte(operation, module.freqAdjustTx, fields.freqAccuracyTx);
    }
}

void AntennaRead::setTbr6Mode(Operation& operation) {
    link_.status("Setting TBR6 mode...", kBlack);
    operation.serialSendString("! 0E030002100ECE00001503FF000000");
    if (operation.GetActiveAntennaResponse("^ 020002") == kError)
        throw RuntimeFault::noReply();
    link_.status("Active Antenna is in TBR6 Mode", kBlack);
}

int AntennaRead::readByte(Operation& operation, const AntennaRegister& from) {
    operation.serialSendString(from.readLine);
    const std::string reply = operation.GetActiveAntennaResponse(from.reply);
    if (reply == kError)
        throw RuntimeFault::noReply();
    return dataByte(reply);
}

void AntennaRead::showByte(Operation& operation, const AntennaRegister& from, TextField& field) {
    field.setText(std::to_string(readByte(operation, from)));
}

}  // namespace quorvex
