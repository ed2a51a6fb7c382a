#include "calibration/rf_module.h"

namespace quorvex {

namespace {

CalibLayout layoutFor(bool kirk, const char* frameSuffix) {
    if (kirk)
        return {std::string("Calibrate Kirk Module") + frameSuffix, true, {1080}, {1320}, {1020}};
    return {std::string("Calibrate RM5 Module") + frameSuffix, false, {1920}, {960}, {1000}};
}

}  // namespace

RfModule::RfModule(SettingsStore& store, CalibFrames frames) : store_(store), frames_(frames) {}

std::int16_t RfModule::stored() const {
    return store_.number(kRfModuleKey, "0");
}

void RfModule::load() {
    type_ = stored();
    SetupCalibLayout(type_);
}

void RfModule::change(std::int16_t type) {
    type_ = type;
    store_.save(kRfModuleKey, std::to_string(type_));
    SetupCalibLayout(type_);
}

void RfModule::mnuRfModule_Click(RfModuleDialog& dialog) {
    bool kirk = stored() != 0;
    if (dialog.pick(kirk))
        type_ = kirk ? kKirk : kRm5;
    change(type_);  // stored and laid out anew after a cancel too, as intended
}

void RfModule::SetupCalibLayout(std::int16_t type) {
    const bool kirk = type == kKirk;
    frames_.beltpack.apply(layoutFor(kirk, ""));
    frames_.moduleA.apply(layoutFor(kirk, " A"));
    frames_.moduleB.apply(layoutFor(kirk, " B"));
}

}  // namespace quorvex
