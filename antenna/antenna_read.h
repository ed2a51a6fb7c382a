#pragma once

#include <string>

#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// What reading an Active Antenna needs of its neighbours.
class AntennaReadNeighbours {
public:
    virtual ~AntennaReadNeighbours() = default;
    /// 0: RM5, 1: Kirk.
    virtual int rfModuleType() const = 0;
    /// Holds and stores a detected type and lays the calibration controls out for it.
    virtual void changeRfModuleType(int type) = 0;
};

/// The calibration fields of one module of the antenna.
struct AntennaModuleFields {
    TextField &fmDeviation, &freqAccuracy, &freqAdjustRx, &freqAdjustTx;
};

/// Reading an Active Antenna's calibration values, and putting it into TBR6 test mode afterwards.
class AntennaRead {
public:
    AntennaRead(CommandLink& link, AntennaModuleFields moduleA, AntennaModuleFields moduleB,
                AntennaReadNeighbours& neighbours);

    void CommandRdSettingsAA_Click() { ReadActiveAntennaSettings(false); }
    void CommandSetTbr6_Click() { ReadActiveAntennaSettings(true); }

private:
    /// An antenna that does not answer where it must; ends the read in its failure box.
    struct NoReply {};

    bool isKirk() const { return neighbours_.rfModuleType() == 1; }
    void ReadActiveAntennaSettings(bool setTbr6);
    void readAll();
    bool detectKirk();
    void setTbr6Mode();
    void reportFailure();

    /// The data byte of the reply to `line`, from the line that contains `expected`; throws NoReply.
    int readByte(const char* line, const char* expected);
    void showByte(const char* line, const char* expected, TextField& field);
    void showFrequency(const char* line, const char* expected, TextField& field);

    CommandLink& link_;
    AntennaModuleFields moduleA_;
    AntennaModuleFields moduleB_;
    AntennaReadNeighbours& neighbours_;
};

}  // namespace quorvex
