#include <QCoreApplication>
#include <stdexcept>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"
#include "link/operation.h"
#include "tests/support/pseudo_terminal.h"

namespace quorvex::bench {

namespace {

constexpr int kReplyLength = 8;
constexpr std::int32_t kLimitMs = 2000;
constexpr double kMostShare = 0.01;

/// The share of one core that this process uses while `wait` runs.
double shareWhile(WindowAtWork& window, void (*wait)(WindowAtWork&)) {
    const double begun = nowSeconds();
    const double usedBefore = ownCpuSeconds();
    window.operate([&] { wait(window); });
    return (ownCpuSeconds() - usedBefore) / (nowSeconds() - begun);
}

void waitInLink(WindowAtWork& window) {
    if (Operation(window.link()).serialGetResponseChars(limit::kReply, kReplyLength) != kError)
        throw std::runtime_error("Something came from a device on which nobody answers.");
}

/// The same wait as a loop that asks again and again and never sleeps.
void waitSpinning(WindowAtWork& window) {
    const std::int32_t deadline = window.loop().ticks() + kLimitMs;
    while (window.port().waiting() == 0 && window.loop().ticks() < deadline)
        QCoreApplication::processEvents();
}

}  // namespace

std::vector<Row> waitRows() {
    const PseudoTerminal nobody;
    BenchTop top;
    nobody.linkAs(top.portPath());
    WindowAtWork window;
    const double share = shareWhile(window, waitInLink);
    const double spinning = shareWhile(window, waitSpinning);
    return {shareRow("CPU while waiting 2 s for nothing", share, "spinning loop " + percent(spinning),
                     kMostShare)};
}

}  // namespace quorvex::bench
