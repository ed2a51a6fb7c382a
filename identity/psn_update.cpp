#include "identity/psn_update.h"

#include <cmath>
#include <limits>

#include "identity/verified_update.h"
#include "link/number_text.h"

namespace quorvex {

namespace {

/// Why `number` cannot be a PSN; empty when it can.
std::string objectionTo(double number) {
    if (number < 0)
        return "it is below 0";
    if (std::nearbyint(number) > std::numeric_limits<std::int32_t>::max())
        return "it is above " + std::to_string(std::numeric_limits<std::int32_t>::max());
    return {};
}

}  // namespace

PsnUpdate::PsnUpdate(CommandLink& link, SettingsImage& image, TextField& beltpackId)
    : link_(link), image_(image), beltpackId_(beltpackId) {}

std::string PsnUpdate::digitsOf(std::int32_t psn) {
    return "00443" + HexPad(psn, 5);
}

void PsnUpdate::CommandSetBpId_Click() {
    const std::string text = beltpackId_.text();
    const double number = decimalValue(text);
    if (text.empty()) {
        link_.console().beep();
        return;
    }
    if (const std::string objection = objectionTo(number); !objection.empty()) {
        link_.console().messageBox("\"" + printable(text) + "\" cannot be sent as PSN: " + objection + ".",
                                   Icon::critical);
        return;
    }
    const auto reply = writeAndReadBack(link_, image_, SettingsImage::kPsn, "Sending PSN to Beltpack...",
                                        digitsOf(toInt32(number)));
    // Compared unrounded: a fraction is sent rounded and then reported as not updated, as intended.
    if (reply && *reply != kError && static_cast<double>(hexValue(middle(*reply, 12, 5))) == number) {
        image_[SettingsImage::kPsn].storeReply(*reply);
        link_.status("Beltpack's PSN updated successfully.", kBlack);
    } else {
        reportNotReadBack(link_, "Beltpack's PSN could not be updated.");
    }
}

void PsnUpdate::TextBeltpackId_KeyPress(char16_t key) {
    if (key == kEnter)
        CommandSetBpId_Click();
    link_.status("", kBlack);  // after every key, so after the update's own text too
}

}  // namespace quorvex
