#include "bench/display_line.h"

#include <pthread.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "bench/counting_port.h"
#include "bench/figures.h"

namespace quorvex::bench {

namespace {

constexpr int kDisplayBytes = 512;
constexpr auto kPiece = std::chrono::milliseconds(2);  // a serial adapter gathers that much at least

std::string frame(int number) {
    std::string bytes = "sync";
    for (int i = 0; i < kDisplayBytes; ++i)
        bytes += static_cast<char>((i * 5 + number * 11) % 97);
    return bytes;
}

}  // namespace

DisplayLine::~DisplayLine() {
    ended_ = true;
    if (thread_.joinable())
        thread_.join();
}

void DisplayLine::start() {
    thread_ = std::thread([this] { send(); });
}

double DisplayLine::cpuUsed() {
    clockid_t clock{};
    timespec used{};
    if (!thread_.joinable() || ::pthread_getcpuclockid(thread_.native_handle(), &clock) != 0 ||
        ::clock_gettime(clock, &used) != 0)
        return 0;
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

void DisplayLine::send() {
    const double begun = nowSeconds();
    std::string bytes = frame(0);
    std::size_t sentBefore = 0;  // the bytes of whole frames
    std::size_t sent = 0;        // of the one on its way
    while (!ended_) {
        const auto due = static_cast<std::size_t>((nowSeconds() - begun) * kBaud / kBitsPerByte) - sentBefore;
        const std::size_t count = std::min(due, bytes.size()) - sent;
        const ssize_t written = count > 0 ? ::write(terminal_.master(), bytes.data() + sent, count) : 0;
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
