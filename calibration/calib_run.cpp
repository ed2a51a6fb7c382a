#include "calibration/calib_run.h"

#include <utility>

#include "link/held.h"
#include "link/reply.h"

namespace quorvex {

namespace {

constexpr int kReplyLength = 8;
constexpr int kRoom = 4;                          ///< its own operation, the two of the dialog and a button's
constexpr std::int32_t kLongestDrainMs = 15'000;  ///< a unit that did not take the command streams on

std::int16_t valueOf(const TextField& field) {
    return toInt16(decimalValue(field.text()));
}

/// Shows the value of `reply` unless it is kError.
void showNumber(const std::string& reply, TextField& field) {
    if (reply != kError)
        field.setText(std::to_string(dataByte(reply)));
}

/// The same for a frequency accuracy.
void showFrequency(const std::string& reply, const RadioModule& module, TextField& field) {
    if (reply != kError)
        field.setText(module.frequencyText(dataByte(reply)));
}

std::string readRegister(Operation& operation, const AntennaRegister& from) {
    operation.serialSendString(from.readLine);
    return operation.GetActiveAntennaResponse(from.reply);
}

}  // namespace

struct CalibRun::Texts {
    const char* caption;
    const char *enterMode, *leaveMode;  ///< calibration mode, which only a Kirk has
    const char *cancelled, *confirmed, *failed;
};

CalibRun::CalibRun(CommandLink& link, RadioModule& module, CalibNeighbours& neighbours)
    : link_(link), module_(module), neighbours_(neighbours) {}

void CalibRun::CommandCalibBp_Click(const CalibrationFields& fields, TextField& rssiThreshold) {
    begin([this, fields, &rssiThreshold] { calibrateBeltpack(fields, rssiThreshold); });
}

void CalibRun::CommandCalibAAA_Click(const CalibrationFields& fieldsA, const CalibrationFields& fieldsB) {
    static constexpr Texts kTexts{kCalibrateModuleA,
                                  "! 0308E803",
                                  "! 03080000",
                                  "Active Antenna calibration cancelled.",
                                  "Active Antenna calibrated successfully.",
                                  "Error occured during Active Antenna calibration."};
    begin(
        [this, fieldsA, fieldsB] { calibrateModule(kTexts, kAntennaModuleA, fieldsA, fieldsB.fmDeviation); });
}

void CalibRun::CommandCalibAAB_Click(const CalibrationFields& fieldsA, const CalibrationFields& fieldsB) {
    // These texts speak of the FM deviation although all values are calibrated, as intended.
    static constexpr Texts kTexts{kCalibrateModuleB,
                                  "! 0308E803",
                                  "! 03080000",
                                  "Active Antenna FM Deviation calibration Cancelled.",
                                  "Active Antenna FM Deviation calibrated successfully.",
                                  "Error occured during Active Antenna FM Deviation calibration."};
    begin(
        [this, fieldsA, fieldsB] { calibrateModule(kTexts, kAntennaModuleB, fieldsB, fieldsA.fmDeviation); });
}

void CalibRun::begin(std::function<void()> run) {
    next_ = std::move(run);
    if (isWindingUp_)
        return;
    while (next_)
        std::exchange(next_, {})();
}

void CalibRun::calibrateBeltpack(const CalibrationFields& fields, TextField& rssiThreshold) {
    static constexpr Texts kTexts{kCalibrateBeltpack,
                                  "! 0309E803",
                                  "! 03090000",
                                  "Beltpack Calibration Cancelled.",
                                  "Beltpack Calibrated successfully.",
                                  "Error occured during Beltpack Calibration."};
    Operation operation(link_, {}, kRoom);
    CalResult result = CalResult::none;
    auto dialog = filledDialog(fields, 0, kTexts.caption, result);
    if (module_.isKirk())
        showThreshold(operation.exchange("# 0138", kReplyLength), *dialog);
    if (module_.isKirk())  // asked anew: the type may have been changed in the wait above
        operation.enterMode(kTexts.enterMode, kTexts.leaveMode);
    if (!tune(operation, std::move(dialog), result, kTexts))
        return;
    const Held windingUp(isWindingUp_, true);
    if (module_.isKirk())
        drain();
    readBeltpack(operation, fields, rssiThreshold);
}

void CalibRun::readBeltpack(Operation& operation, const CalibrationFields& fields, TextField& rssiThreshold) {
    showNumber(operation.exchange("# 013D", kReplyLength), fields.fmDeviation);
    showFrequency(operation.exchange("# 013c", kReplyLength), module_, fields.freqAccuracy);
    if (module_.isKirk()) {
        showNumber(operation.exchange("# 0139", kReplyLength), fields.freqAccuracyRx);
        showNumber(operation.exchange("# 013a", kReplyLength), fields.freqAccuracyTx);
        showNumber(operation.exchange("# 0138", kReplyLength), rssiThreshold);
    }
}

void CalibRun::calibrateModule(const Texts& texts, const AntennaModule& module,
                               const CalibrationFields& fields, const TextField& otherFmDeviation) {
    Operation operation(link_, {}, kRoom);
    CalResult result = CalResult::none;
    auto dialog = filledDialog(fields, valueOf(otherFmDeviation), texts.caption, result);
    if (module_.isKirk()) {
        operation.enterMode(texts.enterMode, texts.leaveMode);
        operation.serialSendString("# 010B");
        showThreshold(operation.GetActiveAntennaResponse("# 028B"), *dialog);
    }
    if (!tune(operation, std::move(dialog), result, texts))
        return;
    const Held windingUp(isWindingUp_, true);
    readModule(operation, module, fields);
}

void CalibRun::readModule(Operation& operation, const AntennaModule& module,
                          const CalibrationFields& fields) {
    showNumber(readRegister(operation, module.fmDeviation), fields.fmDeviation);
    showFrequency(readRegister(operation, module.freqAccuracy), module_, fields.freqAccuracy);
    if (module_.isKirk()) {
        showNumber(operation.exchange(module.freqAdjustRx.readLine, kReplyLength), fields.freqAccuracyRx);
        showNumber(operation.exchange(module.freqAdjustTx.readLine, kReplyLength), fields.freqAccuracyTx);
    }
}

std::unique_ptr<CalibDialog> CalibRun::filledDialog(const CalibrationFields& fields, std::int16_t otherFm,
                                                    const char* caption, CalResult& result) {
    const std::int16_t fm = valueOf(fields.fmDeviation);
    const std::int16_t frequency = valueOf(fields.freqAccuracy);
    const std::int16_t transmit = valueOf(fields.freqAccuracyTx);
    const std::int16_t receive = valueOf(fields.freqAccuracyRx);
    auto dialog = neighbours_.createDialog(result);
    dialog->Set_Cal_Data(fm, frequency, transmit, receive, otherFm, caption);
    return dialog;
}

void CalibRun::showThreshold(const std::string& reply, CalibDialog& dialog) {
    if (reply != kError)
        dialog.ShowRssiThreshold();
    showNumber(reply, dialog.rssiThreshold());
}

bool CalibRun::tune(Operation& operation, std::unique_ptr<CalibDialog> dialog, const CalResult& result,
                    const Texts& texts) {
    dialog->StartCalTimer();
    dialog->showModally();
    dialog.reset();
    operation.leaveMode();
    return tellOutcome(result, texts);
}

bool CalibRun::tellOutcome(CalResult result, const Texts& texts) {
    switch (result) {
        case CalResult::none:
            link_.status(texts.failed, kBlack);
            return false;
        case CalResult::cancelled:
            link_.status(texts.cancelled, kBlack);
            break;
        case CalResult::confirmed:
            link_.status(texts.confirmed, kBlack);
            break;
    }
    return true;
}

void CalibRun::drain() {
    Operation operation(link_, [this, &operation, isInTime = link_.untilPassed(kLongestDrainMs)] {
        return !next_ && operation.isLatest() && isInTime();
    });
    operation.hourglass();
    while (operation.serialGetResponseChars(limit::kDrain, kReplyLength) != kError) {
    }
}

}  // namespace quorvex
