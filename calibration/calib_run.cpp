#include "calibration/calib_run.h"

#include <utility>

#include "link/number_text.h"

namespace quorvex {

namespace {

constexpr int kReplyLength = 8;

std::int16_t valueOf(const TextField& field) {
    return toInt16(decimalValue(field.text()));
}

int valueOf(const std::string& reply) {
    return static_cast<int>(hexValue(middle(reply, 7, 2)));
}

}  // namespace

struct CalibRun::Texts {
    const char *enterMode, *leaveMode;
    const char *cancelled, *confirmed, *failed;
};

struct CalibRun::Module {
    const char* caption;
    Texts texts;
    const char *readFm, *fmReply;
    const char *readFreq, *freqReply;
    const char *readRx, *readTx;
};

/// Calibration mode of the unit, which only a Kirk module has. Left in any case once it was entered, also
/// when a fault ends the run: the program may end with it, the unit must not go on streaming.
class CalibRun::Mode {
public:
    Mode(CalibRun& run, const Texts& texts) : run_(run), texts_(texts) {}
    ~Mode() { leave(); }
    Mode(const Mode&) = delete;
    Mode& operator=(const Mode&) = delete;

    void enter() {
        run_.link_.serialSendString(texts_.enterMode);
        run_.modes_.push_back(this);
    }
    void leave() {
        if (std::erase(run_.modes_, this) > 0)
            run_.link_.serialSendString(texts_.leaveMode);
    }

private:
    CalibRun& run_;
    const Texts& texts_;
};

CalibRun::CalibRun(CommandLink& link, CalibNeighbours& neighbours) : link_(link), neighbours_(neighbours) {}

void CalibRun::leaveCalibrationMode() {
    while (!modes_.empty())
        modes_.back()->leave();
}

std::unique_ptr<CalibDialog> CalibRun::openDialog(const CalibFields& fields, std::int16_t otherFm,
                                                  const char* caption, CalResult& result) {
    const std::int16_t fm = valueOf(fields.fmDeviation);
    const std::int16_t frequency = valueOf(fields.freqAccuracy);
    const std::int16_t transmit = valueOf(fields.freqAccuracyTx);
    const std::int16_t receive = valueOf(fields.freqAccuracyRx);
    auto dialog = neighbours_.createDialog(result);
    dialog->Set_Cal_Data(fm, frequency, transmit, receive, otherFm, caption);
    return dialog;
}

void CalibRun::CommandCalibBp_Click(const CalibFields& fields, TextField& rssiThreshold) {
    static constexpr Texts kTexts{"! 0309E803", "! 03090000", "Beltpack Calibration Cancelled.",
                                  "Beltpack Calibrated successfully.",
                                  "Error occured during Beltpack Calibration."};
    CalResult result = CalResult::none;
    auto dialog = openDialog(fields, 0, kCalibrateBeltpack, result);
    Mode mode(*this, kTexts);
    if (isKirk()) {
        const std::string threshold = exchange("# 0138");
        if (threshold != kError) {
            dialog->ShowRssiThreshold();
            showNumber(threshold, dialog->rssiThreshold());
        }
    }
    if (isKirk())  // asked anew: the type may have been changed in the wait above
        mode.enter();
    if (!tune(std::move(dialog), result, mode, kTexts))
        return;
    if (isKirk())
        drain();
    showNumber(exchange("# 013D"), fields.fmDeviation);
    showFrequency(exchange("# 013c"), fields.freqAccuracy);
    if (isKirk()) {
        showNumber(exchange("# 0139"), fields.freqAccuracyRx);
        showNumber(exchange("# 013a"), fields.freqAccuracyTx);
        showNumber(exchange("# 0138"), rssiThreshold);
    }
}

void CalibRun::CommandCalibAAA_Click(const CalibFields& moduleA, const CalibFields& moduleB) {
    static constexpr Module kModule{
        kCalibrateModuleA,
        {"! 0308E803", "! 03080000", "Active Antenna calibration cancelled.",
         "Active Antenna calibrated successfully.", "Error occured during Active Antenna calibration."},
        "# 0101",
        "# 0281",
        "# 0105",
        "# 0285",
        "# 0107",
        "# 0109"};
    calibrateModule(kModule, moduleA, moduleB.fmDeviation);
}

void CalibRun::CommandCalibAAB_Click(const CalibFields& moduleA, const CalibFields& moduleB) {
    // These texts speak of the FM deviation although all values are calibrated, as intended.
    static constexpr Module kModule{
        kCalibrateModuleB,
        {"! 0308E803", "! 03080000", "Active Antenna FM Deviation calibration Cancelled.",
         "Active Antenna FM Deviation calibrated successfully.",
         "Error occured during Active Antenna FM Deviation calibration."},
        "# 0102",
        "# 0282",
        "# 0106",
        "# 0286",
        "# 0108",
        "# 010a"};
    calibrateModule(kModule, moduleB, moduleA.fmDeviation);
}

void CalibRun::calibrateModule(const Module& module, const CalibFields& fields, TextField& otherFmDeviation) {
    CalResult result = CalResult::none;
    auto dialog = openDialog(fields, valueOf(otherFmDeviation), module.caption, result);
    Mode mode(*this, module.texts);
    if (isKirk()) {
        mode.enter();
        link_.serialSendString("# 010B");
        const std::string threshold = link_.GetActiveAntennaResponse("# 028B");
        if (threshold != kError) {
            dialog->ShowRssiThreshold();
            showNumber(threshold, dialog->rssiThreshold());
        }
    }
    if (!tune(std::move(dialog), result, mode, module.texts))
        return;
    link_.serialSendString(module.readFm);
    showNumber(link_.GetActiveAntennaResponse(module.fmReply), fields.fmDeviation);
    link_.serialSendString(module.readFreq);
    showFrequency(link_.GetActiveAntennaResponse(module.freqReply), fields.freqAccuracy);
    if (isKirk()) {
        showNumber(exchange(module.readRx), fields.freqAccuracyRx);
        showNumber(exchange(module.readTx), fields.freqAccuracyTx);
    }
}

bool CalibRun::tune(std::unique_ptr<CalibDialog> dialog, const CalResult& result, Mode& mode,
                    const Texts& texts) {
    dialog->StartCalTimer();
    dialog->showModally();
    dialog.reset();
    mode.leave();
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
    // What the Kirk streamed last, until the line is silent for a second.
    while (link_.serialGetResponseChars(limit::kDrain, kReplyLength) != kError) {
    }
}

std::string CalibRun::exchange(const char* line) {
    link_.serialSendString(line);
    return link_.serialGetResponseChars(limit::kReply, kReplyLength);
}

void CalibRun::showNumber(const std::string& reply, TextField& field) {
    if (reply != kError)
        field.setText(std::to_string(valueOf(reply)));
}

void CalibRun::showFrequency(const std::string& reply, TextField& field) {
    if (reply == kError)
        return;
    const int value = valueOf(reply);
    field.setText(std::to_string(neighbours_.rfModuleType() == 0 ? NibbleToOffset(value) : value));
}

}  // namespace quorvex
