#include "beltpack/beltpack_read.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr int kDetectReplyLength = 6;
constexpr int kNumberReplyLength = 8;

int numberOf(const std::string& reply) {
    return static_cast<int>(hexValue(dataDigits(reply)));
}

}  // namespace

BeltpackRead::BeltpackRead(CommandLink& link, SettingsImage& image, SettingsEditors& editors,
                           BeltpackFields fields, BeltpackReadNeighbours& neighbours)
    : link_(link), image_(image), editors_(editors), fields_(fields), neighbours_(neighbours) {}

void BeltpackRead::CommandRdSettingsBp_Click() {
    editors_.refillLists();
    image_.clearValues();
    detectRfModule();
    link_.console().hourglass(true);
    link_.status("Reading settings from Beltpack...", kBlack);
    try {
        readParameters();
        readCalibration();
        showIdentity();
        readRssiThreshold();
        editors_.showImage();
        neighbours_.requestDectVersion();
    } catch (const NoReply&) {
        reportFailure();
        return;
    } catch (const RuntimeFault&) {
        reportFailure();
        return;
    }
    link_.console().hourglass(false);
    neighbours_.enableSettingsButtons();
    link_.status("Settings read from Beltpack successfully.", kSuccessGreen);
}

void BeltpackRead::detectRfModule() {
    // Only an RM5 answers just so; everything else, silence too, is taken for a Kirk.
    const bool rm5 = exchange("# 0139", kDetectReplyLength) == "# 01BF";
    if (rm5 && neighbours_.rfModuleType() == 1)
        neighbours_.changeRfModuleType(0);
    else if (!rm5 && neighbours_.rfModuleType() == 0)
        neighbours_.changeRfModuleType(1);
}

void BeltpackRead::readParameters() {
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        Parameter& parameter = image_[i];
        const std::string reply = exchange(parameter.readLine(), parameter.replyLength());
        if (reply != kError) {
            parameter.storeReply(reply);
            parameter.available = "1";
        } else if (i == SettingsImage::kPsn) {
            throw NoReply();
        } else {
            parameter.available = "0";
            parameter.value = "N/A";
            // The name is shown as the field holds it, its trailing blanks too.
            link_.status("Option " + parameter.name.str() + "unavailable!", kRed);
        }
    }
}

void BeltpackRead::readCalibration() {
    fields_.fmDeviation.setText(std::to_string(readNumber("# 013D")));
    const int accuracy = readNumber("# 013C");
    const bool isCode = neighbours_.rfModuleType() == 0;
    fields_.freqAccuracy.setText(std::to_string(isCode ? NibbleToOffset(accuracy) : accuracy));
    if (isKirk()) {
        fields_.freqAccuracyRx.setText(std::to_string(readNumber("# 0139")));
        fields_.freqAccuracyTx.setText(std::to_string(readNumber("# 013a")));  // lower case on the wire
    }
}

void BeltpackRead::showIdentity() {
    fields_.beltpackId.setText(image_.psnText());
    neighbours_.showSystemId(image_[SettingsImage::kSystemId].value.str());
    fields_.rfCarriers.setText(image_[SettingsImage::kRfCarrierMask].value.str());
    fields_.pli.setText(image_[SettingsImage::kSystemIdLength].value.str());
}

void BeltpackRead::readRssiThreshold() {
    if (!isKirk())
        return;
    const std::string reply = exchange("# 0138", kNumberReplyLength);
    if (reply != kError)  // the one read that may fail
        fields_.rssiThreshold.setText(std::to_string(numberOf(reply)));
}

void BeltpackRead::reportFailure() {
    link_.console().hourglass(false);
    link_.status("Error communicating with Beltpack.", kBlack);
    link_.console().messageBox("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.",
                               Icon::critical);
}

std::string BeltpackRead::exchange(const std::string& line, int replyLength) {
    link_.serialSendString(line);
    return link_.serialGetResponseChars(limit::kReply, replyLength);
}

int BeltpackRead::readNumber(const std::string& line) {
    const std::string reply = exchange(line, kNumberReplyLength);
    if (reply == kError)
        throw NoReply();
    return numberOf(reply);
}

}  // namespace quorvex
