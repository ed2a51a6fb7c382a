#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "bench/pseudo_terminal.h"

namespace quorvex::bench {

/// A Beltpack that sends its display without a pause, as fast as a line of 19200 baud carries it: a thread on
/// a pseudo-terminal's master side. Each frame differs from the one before.
class DisplayLine {
public:
    DisplayLine() = default;
    ~DisplayLine();
    DisplayLine(const DisplayLine&) = delete;
    DisplayLine& operator=(const DisplayLine&) = delete;

    const std::string& devicePath() const { return terminal_.devicePath(); }
    /// From here on it sends. To be called once.
    void start();

    /// Whole frames sent so far.
    int framesSent() const { return framesSent_; }
    /// Processor time of the thread, in seconds; 0 before the start.
    double cpuUsed();

private:
    void send();

    PseudoTerminal terminal_;
    std::atomic<bool> ended_ = false;
    std::atomic<int> framesSent_ = 0;
    std::thread thread_;
};

}  // namespace quorvex::bench
