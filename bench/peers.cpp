#include "bench/peers.h"

#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "bench/counting_port.h"
#include "bench/figures.h"

namespace quorvex::bench {

namespace {

constexpr int kDisplayBytes = 512;
constexpr auto kPiece = std::chrono::milliseconds(2);  // a serial adapter gathers that much at least
constexpr int kLookForEndMs = 50;

std::string frame(int number) {
    std::string bytes = "sync";
    for (int i = 0; i < kDisplayBytes; ++i)
        bytes += static_cast<char>((i * 5 + number * 11) % 97);
    return bytes;
}

}  // namespace

void InstantPeer::answer(const std::stop_token& end) const {
    std::array<char, 256> bytes{};
    while (!end.stop_requested()) {
        pollfd watched{terminal_.farEnd(), POLLIN, 0};
        if (::poll(&watched, 1, kLookForEndMs) <= 0)
            continue;
        const ssize_t count = ::read(terminal_.farEnd(), bytes.data(), bytes.size());
        const auto lines = std::count(bytes.data(), bytes.data() + std::max<ssize_t>(count, 0), '\n');
        for (auto i = lines; i > 0; --i) {
            if (::write(terminal_.farEnd(), reply_.data(), reply_.size()) < 0)
                return;
        }
    }
}

double DisplayLine::cpuUsed() {
    clockid_t clock{};
    if (!thread_.joinable() || ::pthread_getcpuclockid(thread_.native_handle(), &clock) != 0)
        return 0;
    return clockSeconds(clock);
}

void DisplayLine::send(const std::stop_token& end) {
    const double begun = nowSeconds();
    std::string bytes = frame(0);
    std::size_t sentBefore = 0;  // the bytes of whole frames
    std::size_t sent = 0;        // of the one on its way
    while (!end.stop_requested()) {
        const auto due = static_cast<std::size_t>((nowSeconds() - begun) * kBaud / kBitsPerByte) - sentBefore;
        const std::size_t count = std::min(due, bytes.size()) - sent;
        const ssize_t written = count > 0 ? ::write(terminal_.farEnd(), bytes.data() + sent, count) : 0;
        sent += written > 0 ? static_cast<std::size_t>(written) : 0;
        if (sent == bytes.size()) {
            sentBefore += sent;
            sent = 0;
            bytes = frame(++framesSent_);
        }
        std::this_thread::sleep_for(kPiece);
    }
}

}  // namespace quorvex::bench
