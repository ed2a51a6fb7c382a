#include "identity/system_id.h"

#include <algorithm>

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

std::string rewritten(std::string_view digits, int width) {
    return HexPad(static_cast<std::uint32_t>(hexValue(digits)), width);
}

std::string fpnOf(std::string_view parkB) {
    return std::string("*") + parkB[5] + "*" + parkB[6];
}

}  // namespace

SystemId::SystemId(CommandLink& link, SystemIdFields fields) : link_(link), fields_(fields) {}

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

void SystemId::showParkB(const std::string& parkB) {
    const std::string_view eic = middle(parkB, 2, kEicLength);
    const std::string_view fps = middle(parkB, 8, kFpsLength);
    if (parkB.size() != kParkBLength || !isHexOrBlank(eic) || !isHexOrBlank(fps)) {
        link_.console().messageBox("\"" + std::string(trimmedRight(parkB)) +
                                       "\" is not a valid System Id.\r\nThe System ID fields were not changed.",
                                   Icon::critical);
        return;
    }
    setComponents(rewritten(eic, kEicLength), fpnOf(parkB), rewritten(fps, kFpsLength));
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
