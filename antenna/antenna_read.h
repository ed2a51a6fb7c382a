#pragma once

#include <string>

#include "link/antenna_module.h"
#include "link/calibration_fields.h"
#include "link/operation.h"
#include "link/radio_module.h"

namespace quorvex {

/// Reading an Active Antenna's calibration values, and putting it into TBR6 test mode afterwards.
class AntennaRead {
public:
    AntennaRead(CommandLink& link, RadioModule& module, CalibrationFields fieldsA, CalibrationFields fieldsB);

    // False when the antenna did not answer where it must.
    bool CommandRdSettingsAA_Click() { return ReadActiveAntennaSettings(false); }
    bool CommandSetTbr6_Click() { return ReadActiveAntennaSettings(true); }

private:
    bool ReadActiveAntennaSettings(bool setTbr6);
    // These throw "No reply" where the antenna does not answer as it must.
    void readAll(Operation& operation);
    void setTbr6Mode(Operation& operation);
    void detectModule(Operation& operation);

    void readFrequencies(Operation& operation, const AntennaModule& module, const CalibrationFields& fields);
    /// The data byte of a register; throws "No reply".
    int readByte(Operation& operation, const AntennaRegister& from);
    void showByte(Operation& operation, const AntennaRegister& from, TextField& field);

    CommandLink& link_;
    RadioModule& module_;
    CalibrationFields fieldsA_, fieldsB_;
};

}  // namespace quorvex
