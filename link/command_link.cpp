#include "link/command_link.h"

#include <utility>

#include "link/operation.h"

namespace quorvex {

CommandLink::CommandLink(SerialPort& port, EventLoop& loop, Console& console)
    : port_(port), loop_(loop), console_(console) {}

void CommandLink::status(std::string_view text, Colour colour) {
    console_.status(text, colour);
}

void CommandLink::closePort() {
    for (auto operation = operations_.rbegin(); operation != operations_.rend(); ++operation)
        (*operation)->leaveMode();
    port_.close();
}

bool CommandLink::GetDataBuffer(int limitUnits, std::int32_t count, std::function<bool()> isWanted) {
    return dataBuffer_.capture(
        port_, loop_, limitUnits, count,
        [this, isWanted = std::move(isWanted), begun = begun_, connection = port_.connection()] {
            return begun == begun_ && connection == port_.connection() && isWanted();
        });
}

}  // namespace quorvex
