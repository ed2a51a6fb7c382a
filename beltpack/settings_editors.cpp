#include "beltpack/settings_editors.h"

#include "link/number_text.h"

namespace quorvex {

SettingsEditors::SettingsEditors(SettingsImage& image, OptionGroup& mic, CheckField& batteryAlarm,
                                 OneItemList& hwRevision, OneItemList& regulations)
    : image_(image),
      mic_(mic),
      batteryAlarm_(batteryAlarm),
      hwRevision_(hwRevision),
      regulations_(regulations) {}

void SettingsEditors::selectMic(int type) {
    mic_.select(type);
    image_[SettingsImage::kMicType].value = HexPad(type, 2);
}

void SettingsEditors::optionMICBal_Click() {
    selectMic(0);
}

void SettingsEditors::optionMICUnBal_Click() {
    selectMic(1);
}

void SettingsEditors::optionMICElectret_Click() {
    selectMic(2);
}

void SettingsEditors::checkBattAlarm_Click() {
    const bool on = batteryAlarm_.value() != 0;  // a greyed box counts as checked
    image_[SettingsImage::kLowBatteryAlarm].value = on ? "01" : "00";
    batteryAlarm_.setValue(on ? 1 : 0);
}

void SettingsEditors::BPHWRevision_Scroll() {
    const int revision = hwRevision_.topIndex();
    Parameter& featureMap = image_[SettingsImage::kFeatureMap];
    if (revision <= featureMap.highest)
        featureMap.value = HexPad(revision, 2);
    else
        hwRevision_.setTopIndex(0);
}

void SettingsEditors::BPRegulations_Scroll() {
    const int regulation = regulations_.topIndex();
    Parameter& fcc = image_[SettingsImage::kFccEnabled];
    if (regulation >= 0 && regulation <= fcc.highest)
        fcc.value = HexPad(regulation, 2);
}

void SettingsEditors::refillLists() {
    hwRevision_.refill({"RV 4417", "MX 318825", "MX 318825XT"});
    regulations_.refill({"STANDARD - EUROPE", "FCC - USA", "JDECT - JAPAN"});
}

int SettingsEditors::decimal(int record) const {
    return toInt16(decimalValue(image_[record].value.str()));
}

void SettingsEditors::showImage() {
    Parameter& fcc = image_[SettingsImage::kFccEnabled];
    if (fcc.isAvailable()) {
        int regulation = decimal(SettingsImage::kFccEnabled);
        if (regulation > fcc.highest) {
            regulation = 0;
            fcc.value = "00";
        }
        if (regulation >= 0)
            regulations_.setTopIndex(regulation);
    }

    // A microphone type that the unit does not have counts as 0: balanced.
    switch (decimal(SettingsImage::kMicType)) {
        case 0:
            optionMICBal_Click();
            break;
        case 1:
            optionMICUnBal_Click();
            break;
        case 2:
            optionMICElectret_Click();
            break;
        default:
            break;
    }

    const int revision = decimal(SettingsImage::kFeatureMap);
    const Parameter& featureMap = image_[SettingsImage::kFeatureMap];
    if (featureMap.isAvailable() && revision >= 0 && revision <= featureMap.highest)
        hwRevision_.setTopIndex(revision);

    batteryAlarm_.setValue(decimal(SettingsImage::kLowBatteryAlarm));
}

}  // namespace quorvex
