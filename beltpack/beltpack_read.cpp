#include "beltpack/beltpack_read.h"

#include <functional>

#include "beltpack/transfer_log.h"
#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr int kDetectReplyLength = 6;
constexpr int kNumberReplyLength = 8;

/// What has not been read by now belongs to a unit that is gone, or to an image that a file has replaced.
void demandGoingOn(const Operation& operation) {
    if (operation.isOver())
        throw RuntimeFault::noReply();
}

}  // namespace

BeltpackRead::BeltpackRead(CommandLink& link, SettingsImage& image, RadioModule& module,
                           SettingsEditors& editors, BeltpackFields fields,
                           BeltpackReadNeighbours& neighbours)
    : link_(link),
      image_(image),
      module_(module),
      editors_(editors),
      fields_(fields),
      neighbours_(neighbours) {}

void BeltpackRead::CommandRdSettingsBp_Click() {
    std::string systemIdProblem;
    if (!readAll(systemIdProblem)) {
        link_.status("Error communicating with Beltpack.", kBlack);
        link_.console().messageBox("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.",
                                   Icon::critical);
        return;
    }
    neighbours_.enableSettingsButtons();
    link_.status("Settings read from Beltpack successfully.", kSuccessGreen);
    if (!systemIdProblem.empty())
        link_.console().messageBox(systemIdProblem, Icon::critical);
}

bool BeltpackRead::readAll(std::string& systemIdProblem) {
    Operation operation(link_, image_.untilFile());
    editors_.refillLists();
    const SettingsImage::Filling filling(image_);
    Transfer transfer(operation, image_, Transfer::Kind::read, "read");
    detectRfModule(operation);
    operation.hourglass();
    link_.status("Reading settings from Beltpack...", kBlack);
    try {
        readParameters(operation, transfer);
        readCalibration(operation);
        systemIdProblem = showIdentity();
        readRssiThreshold(operation);
        editors_.showImage();
        neighbours_.requestDectVersion(operation);
        demandGoingOn(operation);
        demandFilled();
        transfer.done();
        return true;
    } catch (const RuntimeFault&) {
        return false;
    }
}

void BeltpackRead::detectRfModule(Operation& operation) {
    // Only an RM5 answers just so; everything else, silence too, is taken for a Kirk.
    const std::string reply = operation.exchange("# 0139", kDetectReplyLength);
    if (operation.isOver() || (reply == kError && !operation.isLatest()))
        return;  // nothing was learned: another operation, too, may have dropped the reply
    const bool rm5 = isRefusal(reply);
    if (rm5 && module_.type() == RadioModule::kKirk)
        module_.change(RadioModule::kRm5);
    else if (!rm5 && module_.type() == RadioModule::kRm5)
        module_.change(RadioModule::kKirk);
}

void BeltpackRead::readParameters(Operation& operation, Transfer& transfer) {
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        Parameter& parameter = image_[i];
        operation.progress(i, SettingsImage::kParameters);
        const std::function<bool()> isAlone = image_.untilReplaced();
        const std::string reply = operation.exchange(parameter.readLine(), parameter.replyLength());
        if (reply != kError) {
            transfer.answered(i, reply);
            parameter.storeReply(reply);
            parameter.available = "1";
        } else if (i == SettingsImage::kPsn || !operation.isWanted()) {
            throw RuntimeFault::noReply();
        } else if (isAlone()) {  // a read in this wait has found out whether the unit has it
            if (operation.hasHeardPart())
                transfer.answered(i, {});  // the unit has it
            else
                transfer.lacks(i);
            parameter.available = "0";
            parameter.value = kNotAvailable;
            // The name is shown as the field holds it, its trailing blanks too.
            link_.status("Option " + parameter.name.str() + "unavailable!", kRed);
        }
    }
    operation.progress(SettingsImage::kParameters, SettingsImage::kParameters);
    demandFilled();
}

void BeltpackRead::demandFilled() const {
    if (!image_.isFilled())  // a read in one of the waits has blanked it and found no unit
        throw RuntimeFault::noReply();
}

void BeltpackRead::readCalibration(Operation& operation) {
    const CalibrationFields& fields = fields_.calibration;
    fields.fmDeviation.setText(std::to_string(readNumber(operation, "# 013D")));
    const int accuracy = readNumber(operation, "# 013C");
    fields.freqAccuracy.setText(module_.frequencyText(accuracy));
    if (module_.isKirk()) {
        fields.freqAccuracyRx.setText(std::to_string(readNumber(operation, "# 0139")));
        fields.freqAccuracyTx.setText(std::to_string(readNumber(operation, "# 013a")));  // sent in lower case
    }
}

std::string BeltpackRead::showIdentity() {
    fields_.beltpackId.setText(image_.psnText());
    std::string problem = neighbours_.showSystemId(image_[SettingsImage::kSystemId].value.str());
    fields_.rfCarriers.setText(image_[SettingsImage::kRfCarrierMask].value.str());
    fields_.pli.setText(image_[SettingsImage::kSystemIdLength].value.str());
    return problem;
}

void BeltpackRead::readRssiThreshold(Operation& operation) {
    if (!module_.isKirk())
        return;
    const std::string reply = operation.exchange("# 0138", kNumberReplyLength);
    demandGoingOn(operation);
    if (reply != kError)  // the one read that may fail
        fields_.rssiThreshold.setText(std::to_string(dataByte(reply)));
}

int BeltpackRead::readNumber(Operation& operation, const char* line) {
    const std::string reply = operation.exchange(line, kNumberReplyLength);
    if (reply == kError)
        throw RuntimeFault::noReply();
    return dataByte(reply);
}

}  // namespace quorvex
