#include "tests/support/fake_port.h"

#include <utility>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr int kMostOfFlood = 1'000'000;
constexpr std::string_view kLineEnd = "\r\n";

std::string name(char c) {
    switch (c) {
        case '\r':
            return "\\r";
        case '\n':
            return "\\n";
        default:
            return {c};
    }
}

/// Counts down; true when the last one of a limited number is used up.
bool usedUp(std::optional<int>& left) {
    return left && --*left == 0;
}

RuntimeFault deviceFault() {
    return {8020, "Error reading or writing the device"};
}

}  // namespace

void FakePort::openDevice(int number) {
    const std::string what = "open COM" + std::to_string(number);
    if (isOpen_ || refused_.contains(number)) {
        journal_.note(what + (isOpen_ ? " while open" : " failed"));
        throw RuntimeFault(8005, "The port cannot be opened");
    }
    journal_.note(what);
    isOpen_ = true;
    received_.clear();
}

void FakePort::close() {
    if (!isOpen_)
        return;
    journal_.note("close");
    isOpen_ = false;
    received_.clear();
}

std::size_t FakePort::waiting() {
    if (!isOpen_)
        return 0;
    return flood_.empty() ? received_.size() : received_.size() + 1;
}

void FakePort::discardInput() {
    demandOpen();
    calls_.append(QStringLiteral("discard"));
    received_.clear();
}

std::optional<char> FakePort::read() {
    if (readsFail_)
        throw deviceFault();
    if (waiting() == 0)
        return std::nullopt;
    ++readCount_;
    char c;
    if (received_.empty()) {
        c = nextOfFlood();
    } else {
        c = received_.front();
        received_.erase(0, 1);
    }
    if (usedUp(readsLeft_))
        unplug();
    return c;
}

void FakePort::write(char c) {
    demandOpen();
    if (writesBeforeFault_ && *writesBeforeFault_ == 0)
        throw deviceFault();
    if (writesBeforeFault_)
        --*writesBeforeFault_;
    calls_.append(fromLatin1("write " + name(c)));
    written_ += c;
    if (usedUp(writesLeft_))
        unplug();
}

void FakePort::flush() {
    demandOpen();
    if (flushFails_)
        throw deviceFault();
    calls_.append(QStringLiteral("flush"));
    for (const char c : std::exchange(written_, {})) {
        sentBytes_ += c;
        line_ += c;
        if (line_.ends_with(kLineEnd)) {
            line_.resize(line_.size() - kLineEnd.size());
            lineSent(std::exchange(line_, {}));
        }
    }
}

void FakePort::lineSent(const std::string& line) {
    sent_.push_back({loop_.ticks(), line});
    journal_.note("> " + line);
    if (onLine_)
        onLine_(line);
    const auto found = answers_.find(line);
    if (found == answers_.end())
        return;
    std::deque<Reply>& replies = found->second;
    const Reply reply = replies.front();
    if (replies.size() > 1)
        replies.pop_front();
    FakeLoop::Tick tick = loop_.ticks() + reply.afterMs;
    if (reply.gapMs == 0) {
        receiveAt(tick, reply.bytes);
        return;
    }
    for (const char c : reply.bytes) {
        receiveAt(tick, std::string(1, c));
        tick += reply.gapMs;
    }
}

void FakePort::receive(const std::string& bytes) {
    if (isOpen_)
        received_ += bytes;
}

void FakePort::receiveAt(FakeLoop::Tick tick, const std::string& bytes) {
    if (tick <= loop_.ticks())
        receive(bytes);
    else
        loop_.at(tick, [this, bytes] { receive(bytes); });
}

void FakePort::answer(const std::string& line, std::vector<Reply> replies) {
    answers_[line] = {replies.begin(), replies.end()};
}

void FakePort::flood(const std::string& pattern, int readsPerMs) {
    flood_ = pattern;
    readsPerMs_ = readsPerMs;
    floodCount_ = 0;
}

char FakePort::nextOfFlood() {
    const char c = flood_[static_cast<std::size_t>(floodCount_) % flood_.size()];
    if (++floodCount_ % readsPerMs_ == 0)
        loop_.advance(1);
    if (floodCount_ == kMostOfFlood) {
        floodOutlasted_ = true;
        endFlood();
    }
    return c;
}

void FakePort::unplug() {
    isOpen_ = false;
    received_.clear();
    flood_.clear();
}

QStringList FakePort::sentLines() const {
    QStringList lines;
    for (const Sent& one : sent_)
        lines.append(fromLatin1(one.line));
    return lines;
}

void FakePort::demandOpen() const {
    if (!isOpen_)
        throw RuntimeFault::portNotOpen();
}

}  // namespace quorvex
