#include "simulator/fault.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "fuzz/input.h"
#include "simulator/hex.h"

// The parser of the simulator's faults. Input: one fault as it is written.

namespace quorvex::fuzz {

namespace {

using sim::Fault;
using sim::FaultRule;

const FaultRule& ruleOf(const Fault& fault) {
    const auto rules = sim::faultTable();
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&](const FaultRule& rule) { return rule.kind == fault.kind; });
    require(found != rules.end(), "the fault is in the table");
    return *found;
}

std::string written(const Fault& fault, const FaultRule& rule) {
    std::string text(rule.name);
    if (fault.number)
        text += "=" + sim::hexByte(*fault.number);
    if (rule.takesAmount)
        text += ":" + std::to_string(fault.amount);
    return text + (fault.once ? ",once" : "");
}

void check(const Fault& fault) {
    const FaultRule& rule = ruleOf(fault);
    require(!fault.number || (*fault.number >= 1 && *fault.number <= 0x3F), "a register's number");
    require(!fault.number || rule.number != FaultRule::Number::kNone, "a number where there may be one");
    require(fault.number || rule.number != FaultRule::Number::kRequired, "a number where there must be one");
    require(fault.amount >= rule.least && fault.amount <= rule.most, "the amount is in its range");
    require(!fault.once || rule.mayBeOnce, "once where that may be");
    const Fault again = sim::parseFault(written(fault, rule));
    require(again.kind == fault.kind && again.number == fault.number && again.amount == fault.amount &&
                again.once == fault.once,
            "a fault that is written reads back");
    sim::FaultList faults;
    faults.add(fault);
    require(faults.strike(fault.kind, fault.number).has_value(), "it strikes");
    require(faults.strike(fault.kind, fault.number).has_value() != fault.once, "it strikes once or always");
}

}  // namespace

void tryInput(Input input) {
    try {
        check(sim::parseFault(input.rest()));
    } catch (const std::invalid_argument& error) {
        require(std::string_view(error.what()).starts_with("Fault \""), "the sentence names the fault");
    }
}

}  // namespace quorvex::fuzz
