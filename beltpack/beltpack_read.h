#pragma once

#include <string>

#include "beltpack/settings_editors.h"
#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// What reading a Beltpack needs of its neighbours.
class BeltpackReadNeighbours {
public:
    virtual ~BeltpackReadNeighbours() = default;
    /// 0: Plextek RM5, 1: Kirk KRM 1800.
    virtual int rfModuleType() const = 0;
    /// Holds and stores a detected type and lays the calibration controls out for it.
    virtual void changeRfModuleType(int type) = 0;
    /// Shows a PARK B of 10 characters in the System ID fields.
    virtual void showSystemId(const std::string& parkB) = 0;
    virtual void requestDectVersion() = 0;
    /// Enables saving, the summary and writing.
    virtual void enableSettingsButtons() = 0;
};

/// The fields that a read fills besides the editing controls.
struct BeltpackFields {
    TextField& beltpackId;
    TextField& rfCarriers;
    TextField& pli;
    TextField& fmDeviation;
    TextField& freqAccuracy;
    TextField& freqAccuracyRx;
    TextField& freqAccuracyTx;
    TextField& rssiThreshold;
};

/// Reading a Beltpack's whole configuration into the image and the window.
class BeltpackRead {
public:
    BeltpackRead(CommandLink& link, SettingsImage& image, SettingsEditors& editors, BeltpackFields fields,
                 BeltpackReadNeighbours& neighbours);

    void CommandRdSettingsBp_Click();

private:
    /// A unit that does not answer where it must; ends the read in its failure box.
    struct NoReply {};

    void detectRfModule();
    void readParameters();
    void readCalibration();
    void showIdentity();
    void readRssiThreshold();
    void reportFailure();

    /// The reply to `line`, kError after 2 s of silence.
    std::string exchange(const std::string& line, int replyLength);
    /// The number in the reply to `line`; throws NoReply.
    int readNumber(const std::string& line);
    bool isKirk() const { return neighbours_.rfModuleType() == 1; }

    CommandLink& link_;
    SettingsImage& image_;
    SettingsEditors& editors_;
    BeltpackFields fields_;
    BeltpackReadNeighbours& neighbours_;
};

}  // namespace quorvex
