#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvex::sim {

enum class FaultKind {
    kNoReply,
    kLate,
    kCut,
    kGarbled,
    kEcho,
    kNoise,
    kChatter,
    kOtherValue,
    kGoneAfter,
    kNoVersion,
    kNoTbr6Ack,
    kStreamStops,
    kHalfRecords,
    kDisplayBrokenMarker,
    kDisplayShort,
    kDisplayGarbage,
    kDisplayInnerMarker,
};

/// Something a unit does wrong, at which step, and whether the first time only.
///
/// Written `NAME[=NN][:AMOUNT][,once|,always]`, for example "no-reply=39", "late=0D:500,once" or
/// "display-short:100": NN is a register number of two hexadecimal digits (without it the fault strikes at
/// every one), AMOUNT a decimal number whose meaning is the fault's own.
struct Fault {
    FaultKind kind = FaultKind::kNoReply;
    std::optional<int> number;  ///< strikes at this register only
    int amount = 0;             ///< ms, characters, lines, records or bytes, see faultTable()
    bool once = false;          ///< the first time only
};

/// What may be written for one kind of fault.
struct FaultRule {
    FaultKind kind;
    std::string_view name;
    enum class Number { kNone, kOptional, kRequired } number;
    bool takesAmount;
    int amount;  ///< when none is written
    int least;
    int most;
    bool mayBeOnce;
    std::string_view help;  ///< what the unit does, for people; "N" is the amount
};

/// Every fault there is, in the order in which help lists them.
std::span<const FaultRule> faultTable();

/// The fault that `text` describes. Throws std::invalid_argument with a sentence that says what is wrong.
Fault parseFault(std::string_view text);

}  // namespace quorvex::sim
