#include "identity/pli_update.h"

#include "identity/verified_update.h"
#include "link/number_text.h"
#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

PliUpdate::PliUpdate(CommandLink& link, SettingsImage& image, TextField& pli)
    : link_(link), image_(image), pli_(pli) {}

void PliUpdate::CmdUpdatePli_Click() {
    try {
        update();
    } catch (const RuntimeFault&) {  // NOLINT(bugprone-empty-catch): it ends quietly, as intended
    }
}

void PliUpdate::update() {
    const std::int16_t length = toInt16(static_cast<double>(hexValue(pli_.text())));
    const auto reply = writeAndReadBack(link_, image_, SettingsImage::kSystemIdLength,
                                        "Sending PLI to Beltpack...", HexPad(length, 2));
    if (reply && *reply != kError && dataByte(*reply) == length) {
        // The PLI lands in the carrier mask's field, over the stored mask, as intended.
        image_[SettingsImage::kRfCarrierMask].storeReply(*reply);
        link_.status("Beltpack's PLI updated successfully.", kBlack);
    } else {
        reportNotReadBack(link_, "Beltpack's PLI could not be updated.");
    }
}

void PliUpdate::TextPli_KeyPress(char16_t key) {
    if (key == kEnter)
        CmdUpdatePli_Click();
}

}  // namespace quorvex
