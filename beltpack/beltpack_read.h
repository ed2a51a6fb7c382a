#pragma once

#include <string>

#include "beltpack/settings_editors.h"
#include "beltpack/settings_image.h"
#include "link/calibration_fields.h"
#include "link/operation.h"
#include "link/radio_module.h"

namespace quorvex {

class Transfer;

/// What reading a Beltpack needs of its neighbours.
class BeltpackReadNeighbours {
public:
    virtual ~BeltpackReadNeighbours() = default;
    /// Shows a PARK B of 10 characters in the System ID fields, or empties them. What the operator must know
    /// of one that cannot be shown; empty for nothing.
    virtual std::string showSystemId(const std::string& parkB) = 0;
    virtual void requestDectVersion(Operation& read) = 0;
    /// Enables saving, the summary and writing.
    virtual void enableSettingsButtons() = 0;
};

/// The fields that a read fills besides the editing controls.
struct BeltpackFields {
    TextField& beltpackId;
    TextField& rfCarriers;
    TextField& pli;
    CalibrationFields calibration;
    TextField& rssiThreshold;
};

/// Reading a Beltpack's whole configuration into the image and the window.
class BeltpackRead {
public:
    BeltpackRead(CommandLink& link, SettingsImage& image, RadioModule& module, SettingsEditors& editors,
                 BeltpackFields fields, BeltpackReadNeighbours& neighbours);

    void CommandRdSettingsBp_Click();

private:
    /// False when the unit did not answer where it must. `systemIdProblem` as showSystemId returns it.
    bool readAll(std::string& systemIdProblem);
    void detectRfModule(Operation& operation);
    // Each of these throws "No reply".
    void demandFilled() const;
    void readParameters(Operation& operation, Transfer& transfer);
    void readCalibration(Operation& operation);
    void readRssiThreshold(Operation& operation);
    int readNumber(Operation& operation, const char* line);
    std::string showIdentity();

    CommandLink& link_;
    SettingsImage& image_;
    RadioModule& module_;
    SettingsEditors& editors_;
    BeltpackFields fields_;
    BeltpackReadNeighbours& neighbours_;
};

}  // namespace quorvex
