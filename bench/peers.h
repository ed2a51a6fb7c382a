#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "tests/support/pseudo_terminal.h"

namespace quorvex::bench {

/// A unit that answers every line at once with the same reply: a thread at a pseudo-terminal's far end.
class InstantPeer {
public:
    /// `reply` is sent as it is, line end included.
    explicit InstantPeer(std::string reply) : reply_(std::move(reply)) {}

    const PseudoTerminal& terminal() const { return terminal_; }

private:
    void answer(const std::stop_token& end) const;

    PseudoTerminal terminal_;
    std::string reply_;
    std::jthread thread_{[this](const std::stop_token& end) { answer(end); }};
};

/// A Beltpack that sends its display without a pause, as fast as a line of 19200 baud carries it: a thread at
/// a pseudo-terminal's far end. Each frame differs from the one before.
class DisplayLine {
public:
    const PseudoTerminal& terminal() const { return terminal_; }
    /// From here on it sends. To be called once.
    void start() {
        thread_ = std::jthread([this](const std::stop_token& end) { send(end); });
    }

    /// Whole frames sent so far.
    int framesSent() const { return framesSent_; }
    /// Processor time of the thread, in seconds; 0 before the start.
    double cpuUsed();

private:
    void send(const std::stop_token& end);

    PseudoTerminal terminal_;
    std::atomic<int> framesSent_ = 0;
    std::jthread thread_;
};

}  // namespace quorvex::bench
