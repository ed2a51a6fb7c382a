#include "simulator/fault.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

using Number = FaultRule::Number;

constexpr int kNoLimit = 1'000'000;
constexpr int kFrameBytes = 512;

constexpr std::array<FaultRule, 17> kRules{{
    {FaultKind::kNoReply, "no-reply", Number::kOptional, false, 0, 0, 0, true,  //
     "the command is obeyed but not answered"},
    {FaultKind::kLate, "late", Number::kOptional, true, 500, 1, kNoLimit, true,
     "the reply comes N ms late and holds up what follows"},
    {FaultKind::kCut, "cut", Number::kOptional, true, 5, 0, kNoLimit, true,
     "the reply ends after N characters, without a line end"},
    {FaultKind::kGarbled, "garbled", Number::kOptional, false, 0, 0, 0, true,
     "every second character of the reply arrives as \"?\""},
    {FaultKind::kEcho, "echo", Number::kOptional, false, 0, 0, 0, true,
     "the command comes back before the reply"},
    {FaultKind::kNoise, "noise", Number::kOptional, true, 5, 1, 1000, true,
     "N stray characters come before the reply"},
    {FaultKind::kChatter, "chatter", Number::kOptional, true, 1, 1, 100, true,
     "N unrelated lines come before the reply"},
    {FaultKind::kOtherValue, "other-value", Number::kOptional, false, 0, 0, 0, true,
     "a value that was written reads back with every digit inverted"},
    {FaultKind::kGoneAfter, "gone-after", Number::kRequired, false, 0, 0, 0, false,
     "silent for good after answering a read of NN or taking a write of it"},
    {FaultKind::kNoVersion, "no-version", Number::kNone, false, 0, 0, 0, true,
     "unrelated lines are sent, but no version line after them"},
    {FaultKind::kNoTbr6Ack, "no-tbr6-ack", Number::kNone, false, 0, 0, 0, true,
     "TBR6 mode is entered but not acknowledged"},
    {FaultKind::kStreamStops, "stream-stops", Number::kNone, true, 3, 0, kNoLimit, true,
     "the calibration records stop after N of them"},
    {FaultKind::kHalfRecords, "half-records", Number::kNone, true, 7, 1, 11, true,
     "every second calibration record ends after N characters, without a line end"},
    {FaultKind::kDisplayBrokenMarker, "display-broken-marker", Number::kNone, false, 0, 0, 0, true,
     "the marker breaks off after three characters and starts anew"},
    {FaultKind::kDisplayShort, "display-short", Number::kNone, true, 300, 0, kFrameBytes - 1, true,
     "a frame has only N of its 512 bytes"},
    {FaultKind::kDisplayGarbage, "display-garbage", Number::kNone, true, 20, 1, 1000, true,
     "N stray bytes come before a frame"},
    {FaultKind::kDisplayInnerMarker, "display-inner-marker", Number::kNone, true, 100, 0, kFrameBytes - 4,
     true, "the four characters of the marker stand in the picture from byte N on"},
}};

[[noreturn]] void refuse(std::string_view text, const std::string& why) {
    throw std::invalid_argument("Fault \"" + std::string(text) + "\": " + why);
}

/// Cuts `rest` at the first `mark` and returns what stood behind it; nothing if there is no mark.
std::optional<std::string_view> cutAt(std::string_view& rest, char mark) {
    const std::size_t at = rest.find(mark);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view behind = rest.substr(at + 1);
    rest = rest.substr(0, at);
    return behind;
}

std::optional<int> readNumber(std::string_view text, const FaultRule& rule,
                              std::optional<std::string_view> digits) {
    if (!digits) {
        if (rule.number == Number::kRequired)
            refuse(text, "it needs a register number, as in " + std::string(rule.name) + "=0D.");
        return std::nullopt;
    }
    if (rule.number == Number::kNone)
        refuse(text, std::string(rule.name) + " takes no register number.");
    const std::optional<int> number = parseHex(*digits);
    constexpr int kLastRegister = 0x3F;
    if (digits->size() != 2 || !number || *number < 1 || *number > kLastRegister)
        refuse(text,
               "\"" + std::string(*digits) + "\" is no register number (two hexadecimal digits, 01 to 3F).");
    return number;
}

int readAmount(std::string_view text, const FaultRule& rule, std::optional<std::string_view> digits) {
    if (!digits)
        return rule.amount;
    if (!rule.takesAmount)
        refuse(text, std::string(rule.name) + " takes no amount.");
    return parseNumber("Fault \"" + std::string(text) + "\"", *digits, rule.least, rule.most);
}

bool readOnce(std::string_view text, const FaultRule& rule, std::optional<std::string_view> word) {
    if (!word || *word == "always")
        return false;
    if (*word != "once")
        refuse(text, "\"" + std::string(*word) + "\" is neither \"once\" nor \"always\".");
    if (!rule.mayBeOnce)
        refuse(text, std::string(rule.name) + " is for good; it cannot be \"once\".");
    return true;
}

}  // namespace

std::span<const FaultRule> faultTable() {
    return kRules;
}

Fault parseFault(std::string_view text) {
    std::string_view name = text;
    const std::optional<std::string_view> word = cutAt(name, ',');
    const std::optional<std::string_view> amount = cutAt(name, ':');
    const std::optional<std::string_view> number = cutAt(name, '=');
    const auto rule = std::ranges::find(kRules, name, &FaultRule::name);
    if (rule == kRules.end())
        refuse(text, "there is no fault named \"" + std::string(name) + "\".");
    return Fault{rule->kind, readNumber(text, *rule, number), readAmount(text, *rule, amount),
                 readOnce(text, *rule, word)};
}

std::optional<Fault> FaultList::strike(FaultKind kind, std::optional<int> number) {
    const auto found = std::ranges::find_if(faults_, [&](const Fault& fault) {
        return fault.kind == kind && (!fault.number || fault.number == number);
    });
    if (found == faults_.end())
        return std::nullopt;
    const Fault struck = *found;
    if (struck.once)
        faults_.erase(found);
    return struck;
}

}  // namespace quorvex::sim
