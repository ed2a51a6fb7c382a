#include "beltpack/beltpack_write.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

BeltpackWrite::BeltpackWrite(CommandLink& link, SettingsImage& image) : link_(link), image_(image) {}

void BeltpackWrite::CommandWrite_Click() {
    if (!image_.isFilled()) {
        link_.console().messageBox(
            "File must be loaded or Beltpack read before the settings can be written.\r\n\r\n"
            "Use the 'Update' buttons to write the Sytem and Beltpack IDs individually.",
            Icon::critical);
        return;
    }
    link_.console().hourglass(true);
    link_.status("Writing settings to Beltpack...", kBlack);
    bool answered = false;
    try {
        answered = writeAll();
    } catch (const RuntimeFault&) {
        answered = false;  // told as a unit that does not answer
    }
    link_.console().hourglass(false);
    if (answered)
        link_.status("Settings written to Beltpack successfully!", kSuccessGreen);
    else
        reportFailure();
}

bool BeltpackWrite::writeAll() {
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const Parameter& parameter = image_[i];
        // Before the first read of a Beltpack the field holds no number: a fault, and nothing is sent.
        if (strictNumber(parameter.available.str()) != 1)
            continue;
        if (!writeOne(parameter))
            return false;
    }
    return true;
}

bool BeltpackWrite::writeOne(const Parameter& parameter) {
    const std::string written = parameter.writeLine();
    const int replyLength = parameter.replyLength();
    const auto digits = static_cast<std::size_t>(parameter.dataDigits());
    link_.serialSendString(written);
    link_.serialSendString(parameter.readLine());
    const std::string reply = link_.serialGetResponseChars(limit::kReply, replyLength);
    if (reply == kError)
        return false;
    if (dataDigits(reply).substr(0, digits) != dataDigits(written).substr(0, digits))
        reportNotVerified();  // neither stops the loop nor changes the outcome, as intended
    return true;
}

void BeltpackWrite::reportNotVerified() {
    link_.console().messageBox("Rd Error", Icon::none);
    link_.console().messageBox("Error occured while verifying settings written to Beltpack!", Icon::critical);
}

void BeltpackWrite::reportFailure() {
    link_.console().messageBox(
        "Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.",
        Icon::critical);
    link_.status("Error communicating with Beltpack.", kBlack);
}

}  // namespace quorvex
