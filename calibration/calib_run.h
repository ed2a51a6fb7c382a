#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "calibration/cal_result.h"
#include "link/command_link.h"
#include "link/controls.h"

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
    /// 0: Plextek RM5, 1: Kirk KRM 1800.
    virtual int rfModuleType() const = 0;
    /// A fresh dialog; writes `result`.
    virtual std::unique_ptr<CalibDialog> createDialog(CalResult& result) = 0;
};

/// The fields of one frame with calibration values.
struct CalibFields {
    TextField &fmDeviation, &freqAccuracy, &freqAccuracyTx, &freqAccuracyRx;
};

/// The calibration runs of a Beltpack and of the two modules of an Active Antenna. Each throws "Overflow",
/// before anything is sent, when one of its fields holds a number outside 16 bits.
class CalibRun {
public:
    CalibRun(CommandLink& link, CalibNeighbours& neighbours);

    void CommandCalibBp_Click(const CalibFields& fields, TextField& rssiThreshold);
    void CommandCalibAAA_Click(const CalibFields& moduleA, const CalibFields& moduleB);
    void CommandCalibAAB_Click(const CalibFields& moduleA, const CalibFields& moduleB);

    /// Tells the unit to leave calibration mode if a run has it there: for the program's end, which may come
    /// in the middle of a run.
    void leaveCalibrationMode();

private:
    class Mode;
    struct Texts;
    struct Module;

    bool isKirk() const { return neighbours_.rfModuleType() == 1; }
    std::unique_ptr<CalibDialog> openDialog(const CalibFields& fields, std::int16_t otherFm,
                                            const char* caption, CalResult& result);
    void calibrateModule(const Module& module, const CalibFields& fields, TextField& otherFmDeviation);
    /// Shows the dialog until it has closed with its `result` and is gone, leaves calibration mode and tells
    /// the outcome. False: nothing is read back.
    bool tune(std::unique_ptr<CalibDialog> dialog, const CalResult& result, Mode& mode, const Texts& texts);
    bool tellOutcome(CalResult result, const Texts& texts);
    void drain();

    std::string exchange(const char* line);
    /// Shows the value of `reply` unless it is kError.
    void showNumber(const std::string& reply, TextField& field);
    /// The same for a frequency accuracy, which an RM5 holds as a code.
    void showFrequency(const std::string& reply, TextField& field);

    CommandLink& link_;
    CalibNeighbours& neighbours_;
    std::vector<Mode*> modes_;  ///< entered and not yet left, by runs inside each other's waits
};

}  // namespace quorvex
