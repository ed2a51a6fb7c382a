#include "simulator/serve.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <optional>
#include <stdexcept>

#include "simulator/paced_line.h"
#include "simulator/pty_port.h"

namespace quorvex::sim {

namespace {

constexpr std::int64_t kNsPerSecond = 1'000'000'000;
constexpr std::int64_t kMsPerSecond = 1000;
constexpr std::int64_t kNsPerMs = kNsPerSecond / kMsPerSecond;

volatile sig_atomic_t endRequested = 0;
volatile sig_atomic_t dumpRequested = 0;

void requestEnd(int /*signal*/) {
    endRequested = 1;
}
void requestDump(int /*signal*/) {
    dumpRequested = 1;
}

/// Keeps the signals away except while waiting, so that none can come between looking and waiting.
/// Returns the mask to wait with.
sigset_t setUpSignals() {
    sigset_t held;
    sigset_t whileWaiting;
    sigemptyset(&held);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
        sigaddset(&held, number);
    sigprocmask(SIG_BLOCK, &held, &whileWaiting);
    struct sigaction action {};
    action.sa_handler = requestEnd;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaction(number, &action, nullptr);
    action.sa_handler = requestDump;
    sigaction(SIGUSR1, &action, nullptr);
    // Whoever reads the traffic may leave first; the link is to be removed all the same.
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
        sigdelset(&whileWaiting, number);
    return whileWaiting;
}

std::int64_t monotonicNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kNsPerSecond + now.tv_nsec;
}

void printEntry(const TranscriptEntry& entry) {
    constexpr std::array<char, 3> kMarks{'>', '<', '*'};
    std::printf("%6" PRId64 ".%03" PRId64 " %c %s\n", entry.atMs / kMsPerSecond, entry.atMs % kMsPerSecond,
                kMarks.at(static_cast<std::size_t>(entry.kind)), entry.text.c_str());
    std::fflush(stdout);
}

/// Sleeps until the program speaks, one opens or closes the port, a signal comes or `deadlineNs` is reached
/// (nothing: no deadline).
void waitForWork(std::array<pollfd, 2>& watched, std::optional<std::int64_t> deadlineNs,
                 const sigset_t& mask) {
    timespec rest{};
    if (deadlineNs) {
        const std::int64_t restNs = std::max<std::int64_t>(*deadlineNs - monotonicNs(), 0);
        rest.tv_sec = restNs / kNsPerSecond;
        rest.tv_nsec = restNs % kNsPerSecond;
    }
    if (ppoll(watched.data(), watched.size(), deadlineNs ? &rest : nullptr, &mask) < 0) {
        for (pollfd& entry : watched)
            entry.revents = 0;
        if (errno != EINTR)
            throw std::runtime_error("Cannot wait for the port.");
    }
}

/// Until a signal ends it.
void serveOn(PtyPort& port, LineEnd& unit, const Options& options, const std::function<void()>& dump,
             const sigset_t& mask) {
    const std::int64_t startNs = monotonicNs();
    PacedLine line(unit, options.baud);
    std::array<pollfd, 2> watched{{{port.userDescriptor(), POLLIN, 0}, {port.dataDescriptor(), POLLIN, 0}}};
    while (endRequested == 0) {
        std::optional<std::int64_t> deadlineNs = line.nextEventNs();
        if (deadlineNs)
            *deadlineNs += startNs;
        waitForWork(watched, deadlineNs, mask);
        // First of all: what a program sends must not meet what was left for the one before.
        const bool isOpened = watched[0].revents != 0 && port.handleUsers();
        const std::int64_t nowNs = monotonicNs() - startNs;
        if (isOpened)
            unit.opened(nowNs / kNsPerMs);
        if (watched[1].revents != 0)
            line.receive(port.read(), nowNs);
        const std::string bytes = line.take(nowNs);
        if (!bytes.empty() && !port.write(bytes) && options.traffic)
            printEntry({nowNs / kNsPerMs, TranscriptEntry::Kind::kNote, "nobody reads; bytes are lost"});
        if (dumpRequested != 0) {
            dumpRequested = 0;
            dump();
        }
    }
    dump();
}

}  // namespace

void serve(LineEnd& unit, const Options& options, const std::function<void()>& dump) {
    const sigset_t mask = setUpSignals();
    if (options.traffic)
        unit.setTranscript(printEntry);
    // The default of 50 us would add up over the bytes of a reply.
    prctl(PR_SET_TIMERSLACK, 1UL);
    PtyPort port(options.linkPath);
    std::printf("%s ready on %s (%s)\n", describe(options).c_str(), options.linkPath.c_str(),
                port.devicePath().c_str());
    std::fflush(stdout);
    serveOn(port, unit, options, dump, mask);
}

}  // namespace quorvex::sim
