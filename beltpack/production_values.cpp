#include "beltpack/production_values.h"

#include <cmath>

#include "link/number_text.h"

namespace quorvex {

namespace {

using Image = SettingsImage;

struct Row {
    int record;
    const char* revision0And1;  ///< null: unchanged. Both revisions get the same values, as intended.
    const char* revision2;
};

constexpr Row kValues[] = {
    {Image::kHeadsetLimit, "30", "24"},    {Image::kRssiWarningAlarm, "00", "00"},
    {Image::kLowBatteryAlarm, "00", "00"}, {Image::kMicType, "01", "01"},
    {Image::kMicGain, "02", "08"},         {Image::kHeadphoneOffLevel, "03", "03"},
    {Image::kSidetoneVolume, "00", "00"},  {Image::kMasterVolume, nullptr, "13"},
    {Image::kProgrammingMode, "01", "01"}, {Image::kPageChangeMode, "00", "00"},
    {Image::kMicNoiseGate, "00", "00"},
};

}  // namespace

ProductionValues::ProductionValues(CommandLink& link, SettingsImage& image, BeltpackWrite& write)
    : link_(link), image_(image), write_(write) {}

void ProductionValues::buttonSetProdSettiings_Click() {
    fill();
    const auto isPortThere = link_.untilPortGone();
    write_.write("production-values");
    // Sent whatever became of the write, as intended.
    Operation(link_, isPortThere).serialSendString("# 027E" + HexPad(1, 2));
}

void ProductionValues::fill() {
    const Operation refusedHere(link_);  // if at all: before a value is set
    const Parameter& featureMap = image_[Image::kFeatureMap];
    if (!featureMap.isAvailable() || image_.isBeingFilled())
        return;
    const double revision = std::nearbyint(decimalValue(featureMap.value.str()));
    if (revision < 0 || revision > 2)
        return;
    for (const Row& row : kValues) {
        if (const char* value = revision == 2 ? row.revision2 : row.revision0And1)
            image_[row.record].value = value;
    }
}

}  // namespace quorvex
