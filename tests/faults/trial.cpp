#include "tests/faults/trial.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "link/number_text.h"

namespace quorvex {

namespace {

using Tick = FakeLoop::Tick;

constexpr Tick kLongestPauseMs = 25;
constexpr Tick kForeverMs = 900'000;

struct Watch {
    bool ended = false, stuck = false;
};

/// Whether the program has sent the unit out of calibration mode since it sent it in.
bool hasLeft(const FaultyPort& port) {
    const auto last = std::find_if(port.lines().rbegin(), port.lines().rend(), [](const std::string& line) {
        return line.starts_with("! 0308") || line.starts_with("! 0309");
    });
    return last == port.lines().rend() || last->ends_with("0000");
}

}  // namespace

void pass(Workshop& shop, Tick ms) {
    const Tick end = shop.loop.now() + ms;
    while (shop.loop.now() < end) {
        shop.port.waiting();
        shop.loop.runUntil(end);
    }
}

void begin(Workshop& shop, const TestedOperation& operation, FaultyPort::Plan plan) {
    shop.prepare();
    operation.fill(shop);
    shop.port.plan(std::move(plan));
}

End run(Workshop& shop, const TestedOperation& operation) {
    const auto watch = std::make_shared<Watch>();
    shop.loop.at(shop.loop.now() + kForeverMs, [&shop, watch] {
        watch->stuck = !watch->ended;
        if (watch->stuck)
            shop.port.pull();
    });
    try {
        operation.run(shop);
    } catch (const std::exception& fault) {
        watch->ended = true;
        return {fault.what(), watch->stuck};
    }
    watch->ended = true;
    return {{}, watch->stuck};
}

QStringList leftBehind(const Workshop& shop) {
    QStringList complaints;
    if (shop.console.isHourglassUp())
        complaints << "the hourglass is up";
    if (shop.link.isBusy())
        complaints << "an operation is under way";
    if (shop.dialogsOpen() != 0)
        complaints << "a dialog is open";
    if (!shop.port.wasLost() && !hasLeft(shop.port))
        complaints << "the unit was left in calibration mode";
    if (shop.loop.longestPause() > kLongestPauseMs)
        complaints << QString("the window waited for %1 ms").arg(shop.loop.longestPause());
    return complaints;
}

bool isMissing(const std::string& value) {
    const std::string_view text = trimmedRight(value);
    return text.empty() || text == "N/A" || text == "Unavailable" || text == "nothing" ||
           text.ends_with("not available");
}

}  // namespace quorvex
