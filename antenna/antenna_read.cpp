#include "antenna/antenna_read.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

AntennaRead::AntennaRead(CommandLink& link, AntennaModuleFields moduleA, AntennaModuleFields moduleB,
                         AntennaReadNeighbours& neighbours)
    : link_(link), moduleA_(moduleA), moduleB_(moduleB), neighbours_(neighbours) {}

void AntennaRead::ReadActiveAntennaSettings(bool setTbr6) {
    link_.console().hourglass(true);
    try {
        readAll();
        if (setTbr6)
            setTbr6Mode();
        else
            link_.status("Settings read from Active Antenna", kBlack);
        link_.console().hourglass(false);
    } catch (const NoReply&) {
        reportFailure();
    }
}

void AntennaRead::readAll() {
    link_.status("Reading FM Deviation...", kBlack);
    showByte("# 0101", "# 0281", moduleA_.fmDeviation);
    showByte("# 0102", "# 0282", moduleB_.fmDeviation);

    link_.status("Detecting RF module type...", kBlack);
    const int detected = detectKirk() ? 1 : 0;
    if (detected != neighbours_.rfModuleType())
        neighbours_.changeRfModuleType(detected);

    link_.status("Reading Frequency Accuracy...", kBlack);
    showFrequency("# 0105", "# 0285", moduleA_.freqAccuracy);
    if (isKirk()) {
        showByte("# 0107", "# 0287", moduleA_.freqAdjustRx);
        showByte("# 0109", "# 0289", moduleA_.freqAdjustTx);
    }
    showFrequency("# 0106", "# 0286", moduleB_.freqAccuracy);
    if (isKirk()) {
        showByte("# 0108", "# 0288", moduleB_.freqAdjustRx);
        showByte("# 010a", "# 028A", moduleB_.freqAdjustTx);  // sent in lower case, answered in upper
    }
    // No request follows: the version has a button of its own, and the next text replaces this one.
    link_.status("Reading DECT version...", kBlack);
}

bool AntennaRead::detectKirk() {
    link_.serialSendString("# 0107");
    // One line is waited for; two more are taken if they are there already.
    for (const int limitUnits : {limit::kLine, limit::kArrivedOnly, limit::kArrivedOnly}) {
        const std::string reply = link_.serialGetResponse(limitUnits, kCarriageReturn);
        if (reply == kError)
            return false;
        if (reply.find("# 0287") != std::string::npos)
            return true;
    }
    return false;
}

void AntennaRead::setTbr6Mode() {
    link_.status("Setting TBR6 mode...", kBlack);
    link_.serialSendString("! 0E030002100ECE00001503FF000000");
    if (link_.GetActiveAntennaResponse("^ 020002") == kError)
        throw NoReply();
    link_.status("Active Antenna is in TBR6 Mode", kBlack);
}

void AntennaRead::reportFailure() {
    link_.console().hourglass(false);
    link_.console().messageBox("No Response from Active Antenna!", Icon::critical);
    link_.status("Error communicating with Active Antenna.", kBlack);
}

int AntennaRead::readByte(const char* line, const char* expected) {
    link_.serialSendString(line);
    const std::string reply = link_.GetActiveAntennaResponse(expected);
    if (reply == kError)
        throw NoReply();
    return static_cast<int>(hexValue(middle(reply, 7, 2)));
}

void AntennaRead::showByte(const char* line, const char* expected, TextField& field) {
    field.setText(std::to_string(readByte(line, expected)));
}

void AntennaRead::showFrequency(const char* line, const char* expected, TextField& field) {
    const int value = readByte(line, expected);
    field.setText(std::to_string(neighbours_.rfModuleType() == 0 ? NibbleToOffset(value) : value));
}

}  // namespace quorvex
