#include "bench/counting_port.h"

namespace quorvex::bench {

namespace {

bool isStart(char c) {
    return c == '#' || c == '!' || c == '^';
}

}  // namespace

void CountingPort::discardInput() {
    exchanges_.emplace_back();  // every command begins with this
    port_.discardInput();
}

std::optional<char> CountingPort::read() {
    const std::optional<char> c = port_.read();
    if (c && !exchanges_.empty() && (exchanges_.back().awaited > 0 || isStart(*c)))
        ++exchanges_.back().awaited;
    return c;
}

void CountingPort::write(char c) {
    if (!exchanges_.empty())
        exchanges_.back().line += c;
    port_.write(c);
}

double wireSeconds(const std::vector<CountedExchange>& exchanges) {
    std::size_t bytes = 0;
    for (const CountedExchange& exchange : exchanges)
        bytes += exchange.line.size() + exchange.awaited;
    return static_cast<double>(bytes) * kBitsPerByte / kBaud;
}

}  // namespace quorvex::bench
