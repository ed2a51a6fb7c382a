#include "identity/system_id.h"

#include <algorithm>

#include "identity/verified_update.h"
#include "link/number_text.h"

namespace quorvex {

namespace {

constexpr std::size_t kParkBLength = 10;
constexpr std::size_t kEicLength = 4;
constexpr std::size_t kFpnLength = 4;
constexpr std::size_t kFpsLength = 1;

bool isHexOrBlank(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || isHexDigit(c); });
}

bool isHex(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isHexDigit);
}

std::string rewritten(std::string_view digits, int width) {
    return HexPad(static_cast<std::uint32_t>(hexValue(digits)), width);
}

std::string fpnOf(std::string_view parkB) {
    return std::string("*") + parkB[5] + "*" + parkB[6];
}

}  // namespace

SystemId::SystemId(CommandLink& link, SettingsImage& image, SystemIdFields fields)
    : link_(link), image_(image), fields_(fields) {}

void SystemId::composeParkB() {
    const std::string eic = fields_.eic.text();
    const std::string fpn = fields_.fpn.text();
    const std::string fps = fields_.fps.text();
    if (eic.size() != kEicLength || fpn.size() != kFpnLength || fps.size() != kFpsLength)
        return;
    const std::string before = fields_.parkB.text();
    const bool keepsEnds = before.size() == kParkBLength;
    const std::string lead = keepsEnds ? before.substr(0, 1) : "1";
    const std::string trail = keepsEnds ? before.substr(8, 2) : "00";
    fields_.parkB.setText(lead + eic + fpn[1] + fpn[3] + fps + trail);
}

void SystemId::TextParkB_KeyUp() {
    const std::string parkB = fields_.parkB.text();
    if (parkB.size() == kParkBLength)
        setComponents(parkB.substr(1, 4), fpnOf(parkB), parkB.substr(7, 1));
}

std::string SystemId::showParkB(const std::string& parkB) {
    const std::string_view eic = middle(parkB, 2, kEicLength);
    const std::string_view fps = middle(parkB, 8, kFpsLength);
    if (parkB.size() == kParkBLength && isHexOrBlank(eic) && isHexOrBlank(fps)) {
        setComponents(rewritten(eic, kEicLength), fpnOf(parkB), rewritten(fps, kFpsLength));
        return {};
    }
    // Another unit's System ID must not stay there, ready to be sent to this one.
    setComponents("", "", "");
    fields_.parkB.setText("");
    const std::string_view shown = trimmedRight(parkB);
    if (shown == kNotAvailable)
        return {};
    return "\"" + printable(shown) + "\" is not a valid System Id.\r\nThe System ID fields were emptied.";
}

std::string SystemId::pari() const {
    const std::string eic = fields_.eic.text();
    const std::string fpn = fields_.fpn.text();
    const std::string fps = fields_.fps.text();
    if (eic.size() != kEicLength || fpn.size() != kFpnLength || fps.size() != kFpsLength)
        return {};
    if (!isHex(eic) || !isHex(fps))
        return {};
    return "1" + rewritten(eic, kEicLength) + fpn[1] + fpn[3] + rewritten(fps, kFpsLength) + "00";
}

void SystemId::CommandDefault_Click() {
    showParkB("100ECE1000");
}

void SystemId::CommandHpPari_Click() {
    // The test set takes the PARI without its last two digits, doubled, with one "0" behind.
    const std::string digits = pari().substr(0, 8);
    if (digits.empty() || !isHex(digits)) {
        reportIncomplete();
        return;
    }
    const auto doubled = static_cast<std::uint32_t>(hexValue(digits) * 2);
    link_.console().messageBox("HP Test Set Fixed Part PARI:\r\r" + HexPad(doubled, 8) + "0",
                               Icon::information);
}

void SystemId::CommandSetSysID_Click() {
    const std::string parkB = fields_.parkB.text();
    if (parkB.empty()) {
        reportIncomplete();
        return;
    }
    const auto reply =
        writeAndReadBack(link_, image_, SettingsImage::kSystemId, "Sending System Id to Beltpack...", parkB);
    // The PARK B goes out, the PARI is looked for: one with other ends than "1" and "00" fails, and with
    // incomplete components (an empty PARI) every reply passes. Both are intended.
    if (reply && reply->find(pari()) != std::string::npos) {
        image_[SettingsImage::kSystemId].storeReply(*reply);
        link_.status("Beltpack's System Id updated succesfully.", kBlack);
    } else {
        reportNotReadBack(link_, "Beltpack's System Id could not be updated.");
    }
}

void SystemId::reportIncomplete() {
    link_.console().messageBox("EIC, FPN or FPS were not entered correctly!", Icon::critical);
}

void SystemId::setComponents(std::string_view eic, std::string_view fpn, std::string_view fps) {
    // Every field set counts as a change of its own, the same text too.
    fields_.eic.setText(eic);
    TextEic_Change();
    fields_.fpn.setText(fpn);
    TextFpn_Change();
    fields_.fps.setText(fps);
    TextFps_Change();
}

}  // namespace quorvex
