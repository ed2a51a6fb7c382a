#include "identity/rf_carriers_update.h"

#include "identity/verified_update.h"
#include "link/reply.h"

namespace quorvex {

namespace {
constexpr std::size_t kMaskLength = 10;
}

RfCarriersUpdate::RfCarriersUpdate(CommandLink& link, SettingsImage& image, TextField& mask)
    : link_(link), image_(image), mask_(mask) {}

void RfCarriersUpdate::CmdSetRfCarrs_Click() {
    const std::string mask = mask_.text();
    if (mask.size() != kMaskLength) {
        link_.console().beep();
        return;
    }
    const auto reply = writeAndReadBack(link_, image_, SettingsImage::kRfCarrierMask,
                                        "Sending RF Carrier Mask to Beltpack...", mask);
    // The two texts differ in the case of "mask", as intended.
    if (!reply || dataDigits(*reply) != mask) {
        reportNotReadBack(link_, "Beltpack's RF Carrier mask could not be updated.");
    } else {
        image_[SettingsImage::kRfCarrierMask].value = mask;
        link_.status("Beltpack's RF Carrier Mask updated successfully.", kBlack);
    }
}

}  // namespace quorvex
