#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "calibration/cal_result.h"
#include "link/antenna_module.h"
#include "link/calibration_fields.h"
#include "link/operation.h"
#include "link/radio_module.h"

namespace quorvex {

/// The calibration dialog as a run sees it: created for the run, gone before the values are read back.
class CalibDialog {
public:
    virtual ~CalibDialog() = default;
    virtual void Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit,
                              std::int16_t receive, std::int16_t otherFm, const std::string& caption) = 0;
    virtual void ShowRssiThreshold() = 0;
    virtual TextField& rssiThreshold() = 0;
    virtual void StartCalTimer() = 0;
    /// Modal; returns when the dialog has closed.
    virtual void showModally() = 0;
};

/// What the runs need of the window.
class CalibNeighbours {
public:
    virtual ~CalibNeighbours() = default;
    /// A fresh dialog; writes `result`.
    virtual std::unique_ptr<CalibDialog> createDialog(CalResult& result) = 0;
};

/// The calibration runs of a Beltpack and of the two modules of an Active Antenna. Each throws "Overflow",
/// before anything is sent, when one of its fields holds a number outside 16 bits. A run that is asked for
/// while another one winds up (drains the line, reads its values back) begins as soon as that one has ended:
/// runs one after the other never pile up, and each starts from what the unit really holds.
class CalibRun {
public:
    CalibRun(CommandLink& link, RadioModule& module, CalibNeighbours& neighbours);

    void CommandCalibBp_Click(const CalibrationFields& fields, TextField& rssiThreshold);
    void CommandCalibAAA_Click(const CalibrationFields& fieldsA, const CalibrationFields& fieldsB);
    void CommandCalibAAB_Click(const CalibrationFields& fieldsA, const CalibrationFields& fieldsB);

private:
    struct Texts;

    void begin(std::function<void()> run);
    void calibrateBeltpack(const CalibrationFields& fields, TextField& rssiThreshold);
    void readBeltpack(Operation& operation, const CalibrationFields& fields, TextField& rssiThreshold);
    void calibrateModule(const Texts& texts, const AntennaModule& module, const CalibrationFields& fields,
                         const TextField& otherFmDeviation);
    void readModule(Operation& operation, const AntennaModule& module, const CalibrationFields& fields);

    /// A dialog filled with what the fields show; it writes `result`.
    std::unique_ptr<CalibDialog> filledDialog(const CalibrationFields& fields, std::int16_t otherFm,
                                              const char* caption, CalResult& result);
    /// Shows the threshold in `reply`, unless it is kError.
    static void showThreshold(const std::string& reply, CalibDialog& dialog);
    /// Shows the dialog until it has closed with its `result` and is gone, leaves calibration mode and tells
    /// the outcome. False: nothing is read back.
    bool tune(Operation& operation, std::unique_ptr<CalibDialog> dialog, const CalResult& result,
              const Texts& texts);
    bool tellOutcome(CalResult result, const Texts& texts);
    /// Takes in what a Kirk streamed last, until the line is silent for a second or another operation begins;
    /// not for good, if the unit goes on.
    void drain();

    CommandLink& link_;
    RadioModule& module_;
    CalibNeighbours& neighbours_;
    bool isWindingUp_ = false;
    std::function<void()> next_;  ///< the run to begin when this one has ended; empty for none
};

}  // namespace quorvex
