#include "link/command_link.h"

#include <utility>

#include "link/operation.h"

namespace quorvex {

CommandLink::CommandLink(SerialPort& port, EventLoop& loop, Console& console)
    : port_(port), loop_(loop), console_(console) {}

void CommandLink::status(std::string_view text, Colour colour) {
    console_.status(text, colour);
}

std::function<bool()> CommandLink::untilPortGone() const {
    return [this, connection = port_.connection()] { return connection == port_.connection(); };
}

std::function<bool()> CommandLink::untilPassed(std::int32_t ms) const {
    return [this, begun = loop_.ticks(), ms = static_cast<std::uint32_t>(ms)] {
        return loop_.msSince(begun) < ms;
    };
}

void CommandLink::closePort() {
    for (auto operation = operations_.rbegin(); operation != operations_.rend(); ++operation)
        (*operation)->leaveMode();
    port_.close();
}

bool CommandLink::GetDataBuffer(int limitUnits, std::int32_t count, std::function<bool()> isWanted) {
    return dataBuffer_.capture(
        port_, loop_, limitUnits, count,
        [this, begun = begun_, isPortThere = untilPortGone(), isWanted = std::move(isWanted)] {
            return begun == begun_ && isPortThere() && isWanted();
        });
}

}  // namespace quorvex
