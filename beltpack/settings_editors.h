#pragma once

#include "beltpack/settings_image.h"
#include "link/controls.h"

namespace quorvex {

/// The controls that edit single parameters of the image. Each change is stored at once; nothing is sent.
class SettingsEditors {
public:
    SettingsEditors(SettingsImage& image, OptionGroup& mic, CheckField& batteryAlarm, OneItemList& hwRevision,
                    OneItemList& regulations);

    // Each turns its own option on and stores it.
    void optionMICBal_Click();
    void optionMICUnBal_Click();
    void optionMICElectret_Click();

    void checkBattAlarm_Click();
    // After a person has scrolled.
    void BPHWRevision_Scroll();
    void BPRegulations_Scroll();

    /// Fills both lists with their three items.
    void refillLists();
    /// Positions the controls from the image. Values count as decimal text here: "0A" is 0 and "1F" is 1.
    /// Throws "Invalid property value" for a battery alarm that the check box cannot show, and "Type
    /// mismatch" before the first read of a Beltpack.
    void showImage();

private:
    void selectMic(int type);
    int decimal(int record) const;

    SettingsImage& image_;
    OptionGroup& mic_;
    CheckField& batteryAlarm_;
    OneItemList& hwRevision_;
    OneItemList& regulations_;
};

}  // namespace quorvex
