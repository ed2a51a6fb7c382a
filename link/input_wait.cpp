#include "link/input_wait.h"

#include <limits>
#include <utility>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {
constexpr std::int64_t kWindowTurnMs = 20;
}

InputWait::InputWait(SerialPort& port, EventLoop& loop, std::int32_t limitMs, std::function<bool()> isWanted)
    : port_(port),
      loop_(loop),
      limitMs_(limitMs),
      isWanted_(std::move(isWanted)),
      // The first wait of each reader gives the window its turn: one short line after another is a line
      // that never falls silent, too.
      windowRanAt_(std::int64_t{loop.ticks()} - kWindowTurnMs) {}

std::optional<char> InputWait::next() {
    if (!isWanted_())
        return std::nullopt;
    const std::int32_t now = loop_.ticks();
    if (now > std::numeric_limits<std::int32_t>::max() - limitMs_)
        throw RuntimeFault::overflow();
    if (now - windowRanAt_ >= kWindowTurnMs)
        letWindowRun(now);
    // A turn of the window may last beyond the end of the count.
    while (isWanted_() && port_.isOpen() && port_.waiting() == 0 &&
           loop_.msSince(now) < static_cast<std::uint32_t>(limitMs_))
        letWindowRun(now + limitMs_);
    if (!isWanted_())
        return std::nullopt;
    const std::optional<char> c = port_.read();
    if (!c && limitMs_ > 0 && port_.isOpen())
        port_.silence(limitMs_);
    return c;
}

void InputWait::letWindowRun(std::int32_t untilTick) {
    loop_.run(untilTick);
    windowRanAt_ = loop_.ticks();
}

}  // namespace quorvex
