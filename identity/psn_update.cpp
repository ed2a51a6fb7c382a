#include "identity/psn_update.h"

#include <cmath>
#include <limits>

#include "identity/verified_update.h"
#include "link/number_text.h"

namespace quorvex {

namespace {

constexpr int kReplyLength = 16;

bool canBeSent(double number) {
    return number >= 0 && std::nearbyint(number) <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

PsnUpdate::PsnUpdate(CommandLink& link, SettingsImage& image, TextField& beltpackId)
    : link_(link), image_(image), beltpackId_(beltpackId) {}

void PsnUpdate::CommandSetBpId_Click() {
    const std::string text = beltpackId_.text();
    const double number = decimalValue(text);
    if (text.empty()) {
        link_.console().beep();
        return;
    }
    if (!canBeSent(number)) {
        link_.console().messageBox("The PSN must be a whole number from 0 to 2147483647.", Icon::critical);
        return;
    }
    const std::string reply =
        writeAndReadBack(link_, "Sending PSN to Beltpack...", "# 064100443" + HexPad(toInt32(number), 5),
                         "# 0101", kReplyLength);
    // Compared unrounded: a fraction is sent rounded and then reported as not updated, as intended.
    if (reply != kError && static_cast<double>(hexValue(middle(reply, 12, 5))) == number) {
        image_[SettingsImage::kPsn].storeReply(reply);
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
