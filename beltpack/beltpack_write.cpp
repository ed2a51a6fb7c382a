#include "beltpack/beltpack_write.h"

#include "beltpack/transfer_log.h"
#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

BeltpackWrite::BeltpackWrite(CommandLink& link, SettingsImage& image) : link_(link), image_(image) {}

void BeltpackWrite::write(const std::string& name) {
    if (!image_.isFilled()) {
        link_.console().messageBox(
            "File must be loaded or Beltpack read before the settings can be written.\r\n\r\n"
            "Use the 'Update' buttons to write the Sytem and Beltpack IDs individually.",
            Icon::critical);
        return;
    }
    if (writeAll(name)) {
        link_.status("Settings written to Beltpack successfully!", kSuccessGreen);
        return;
    }
    link_.console().messageBox(
        "Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.",
        Icon::critical);
    link_.status("Error communicating with Beltpack.", kBlack);
}

bool BeltpackWrite::writeAll(const std::string& name) {
    Operation operation(link_, image_.untilReplaced());
    Transfer transfer(operation, image_, Transfer::Kind::write, name);
    operation.hourglass();
    link_.status("Writing settings to Beltpack...", kBlack);
    if (image_.isBeingFilled())
        return false;
    try {
        for (int i = 0; i < SettingsImage::kParameters; ++i) {
            operation.progress(i, SettingsImage::kParameters);
            // Before the first read of a Beltpack this is a fault, and nothing is sent.
            if (image_[i].isAvailable() && !writeOne(operation, transfer, i))
                return false;
        }
        transfer.done();
        return true;
    } catch (const RuntimeFault&) {
        return false;  // told as a unit that does not answer
    }
}

bool BeltpackWrite::writeOne(Operation& operation, Transfer& transfer, int record) {
    const Parameter& parameter = image_[record];
    const std::string written = parameter.writeLine();
    const auto digits = static_cast<std::size_t>(parameter.digits());
    transfer.writes(record, parameter.value.str());
    operation.serialSendString(written);
    const std::string reply = operation.exchange(parameter.readLine(), parameter.replyLength());
    if (reply == kError)
        return false;
    transfer.answered(record, reply);
    if (dataDigits(reply).substr(0, digits) != dataDigits(written).substr(0, digits))
        reportNotVerified();  // neither stops the loop nor changes the outcome, as intended
    return true;
}

void BeltpackWrite::reportNotVerified() {
    link_.console().messageBox("Rd Error", Icon::none);
    link_.console().messageBox("Error occured while verifying settings written to Beltpack!", Icon::critical);
}

}  // namespace quorvex
