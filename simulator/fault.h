#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

/// The faults that a unit has been given, and which of the "once" ones have struck.
class FaultList {
public:
    void add(const Fault& fault) { faults_.push_back(fault); }
    void clear() { faults_.clear(); }

    /// Asks at a step whether a fault of `kind` strikes there. `number` is the register that the step is
    /// about; without one, only faults that name no register strike. A fault meant for once is gone with
    /// the answer, so ask exactly when it would show.
    std::optional<Fault> strike(FaultKind kind, std::optional<int> number = std::nullopt);

private:
    std::vector<Fault> faults_;
};

}  // namespace quorvex::sim
