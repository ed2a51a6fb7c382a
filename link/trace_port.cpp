#include "link/trace_port.h"

#include <array>
#include <cstdio>
#include <utility>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::size_t kLongestRun = 128;
constexpr std::uint32_t kPauseMs = 50;

std::string inHex(char c) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {kDigits[byte / 16], kDigits[byte % 16]};
}

std::string printable(char c) {
    return c < ' ' || c > '~' || c == '\\' ? "\\x" + inHex(c) : std::string(1, c);
}

std::string stamp(std::int32_t atMs, char mark) {
    const auto ms = static_cast<std::uint32_t>(atMs);  // the count goes on below 0
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%9u.%03u %c ", ms / 1000, ms % 1000, mark);
    return text.data();
}

}  // namespace

TracePort::TracePort(SerialPort& port, const EventLoop& loop, std::function<void(const std::string&)> line)
    : port_(port), loop_(loop), line_(std::move(line)), isAtWork_(port.isOpen()) {}

void TracePort::openDevice(int number) {
    const std::string name = "open COM" + std::to_string(number);
    endRun();
    try {
        port_.open(number);
    } catch (const RuntimeFault& fault) {
        note(name + " failed: " + fault.description());
        throw;
    }
    note(name);
    isAtWork_ = true;
}

void TracePort::close() {
    if (std::exchange(isAtWork_, false))
        note(isOpen() ? "close" : "lost");  // which the one who closes it may be the first to notice
    port_.close();
}

void TracePort::lost() {
    if (std::exchange(isAtWork_, false))
        note("lost");
}

void TracePort::discardInput() {
    dropWaiting();
    port_.discardInput();
}

std::optional<char> TracePort::read() {
    const std::optional<char> c = port_.read();
    if (c)
        received(*c, '<');
    return c;
}

void TracePort::write(char c) {
    port_.write(c);
    sent_ += c;
}

void TracePort::flush() {
    endRun();
    if (!sent_.empty())
        bytes(loop_.ticks(), '>', std::exchange(sent_, {}));
    port_.flush();
}

void TracePort::silence(std::int32_t ms) {
    note("silence of " + std::to_string(ms) + " ms");
}

void TracePort::dropWaiting() {
    for (std::size_t left = port_.waiting(); left > 0; --left) {
        if (const std::optional<char> c = port_.read())
            received(*c, '~');
    }
    endRun();
}

void TracePort::received(char c, char mark) {
    const std::int32_t now = loop_.ticks();
    if (mark != runMark_ || loop_.msSince(lastByteMs_) > kPauseMs)
        endRun();
    if (run_.empty())
        runBeganMs_ = now;
    runMark_ = mark;
    lastByteMs_ = now;
    run_ += c;
    if (c == '\n' || run_.size() == kLongestRun)
        endRun();
}

void TracePort::endRun() {
    if (!run_.empty())
        bytes(runBeganMs_, runMark_, std::exchange(run_, {}));
}

void TracePort::note(const std::string& text) {
    endRun();
    line_(stamp(loop_.ticks(), '*') + text);
}

void TracePort::bytes(std::int32_t atMs, char mark, std::string_view bytes) {
    std::string text = stamp(atMs, mark);
    std::string hex;
    for (const char c : bytes) {
        text += printable(c);
        hex += " " + inHex(c);
    }
    line_(text + " |" + hex);
}

}  // namespace quorvex
