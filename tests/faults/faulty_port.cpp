#include "tests/faults/faulty_port.h"

#include <utility>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {
constexpr std::string_view kLineEnd = "\r\n";
}  // namespace

FaultyPort::FaultyPort(sim::LineEnd& unit, FakeLoop& loop) : unit_(unit), loop_(loop) {
    loop.addSource([&unit] { return unit.nextEventMs(); });
}

void FaultyPort::plan(Plan plan) {
    plan_ = std::move(plan);
    lines_.clear();
    streamed_.clear();
    repliedAt_.clear();
    streamedAt_.clear();
    wasLost_ = !isOpen_;
    struckAt_.reset();
    nextLineAt_.reset();
}

FaultyPort::Tick FaultyPort::waitAfterStrike() const {
    return nextLineAt_.value_or(loop_.now()) - struckAt_.value_or(0);
}

std::size_t FaultyPort::waiting() {
    fetch();
    if (!isOpen_)
        return 0;
    return received_.size() + (jabber_.empty() ? 0 : 1);
}

void FaultyPort::discardInput() {
    demandOpen();
    fetch();
    received_.clear();
}

std::optional<char> FaultyPort::read() {
    if (waiting() == 0)
        return std::nullopt;
    char c = 0;
    if (received_.empty()) {
        c = jabber_[jabbered_++ % jabber_.size()];
        loop_.advance(1);
    } else {
        c = received_.front();
        received_.erase(0, 1);
    }
    if (readsLeft_ && --*readsLeft_ == 0)
        pull();
    return c;
}

void FaultyPort::write(char c) {
    demandOpen();
    written_ += c;
}

void FaultyPort::flush() {
    demandOpen();
    for (const char c : std::exchange(written_, {})) {
        line_ += c;
        if (line_.ends_with(kLineEnd)) {
            line_.resize(line_.size() - kLineEnd.size());
            lineSent(std::exchange(line_, {}));
        }
    }
}

void FaultyPort::lineSent(const std::string& line) {
    fetch();
    if (struckAt_ && !nextLineAt_)
        nextLineAt_ = loop_.now();
    lines_.push_back(line);
    const int index = static_cast<int>(lines_.size()) - 1;
    if (strikesAt(Place::line, index)) {
        strike({line, {}, {}}, index);
        return;
    }
    unit_.receive(line + std::string(kLineEnd), loop_.now());
    std::string reply = unit_.take(loop_.now());
    if (reply.empty())
        return;
    repliedAt_.push_back(loop_.now());
    const int answer = replies() - 1;
    if (!strikesAt(Place::reply, answer)) {
        say(reply);
        return;
    }
    reply.resize(reply.size() - kLineEnd.size());
    strike({line, reply, std::string(kLineEnd)}, answer);
}

void FaultyPort::fetch() {
    std::string bytes = unit_.take(loop_.now());
    if (bytes.empty())
        return;
    streamed_.push_back(bytes);
    streamedAt_.push_back(loop_.now());
    const int index = static_cast<int>(streamed_.size()) - 1;
    if (!isOpen_ || !strikesAt(Place::stream, index)) {
        say(bytes);
        return;
    }
    const bool isLine = bytes.ends_with(kLineEnd);
    if (isLine)
        bytes.resize(bytes.size() - kLineEnd.size());
    strike({{}, bytes, isLine ? std::string(kLineEnd) : std::string()}, index);
}

bool FaultyPort::strikesAt(Place place, int index) const {
    return plan_.place == place && (plan_.once ? index == plan_.first : index >= plan_.first);
}

void FaultyPort::strike(Struck struck, int index) {
    if (!struckAt_)
        struckAt_ = loop_.now();
    if (plan_.limitMs)
        struck.limitMs = plan_.limitMs(index);
    plan_.strike(*this, struck);
}

void FaultyPort::say(const std::string& bytes, Tick afterMs) {
    if (afterMs > 0)
        loop_.at(loop_.now() + afterMs, [this, bytes] { say(bytes); });
    else if (isOpen_ && jabber_.empty())
        received_ += bytes;
}

void FaultyPort::pull() {
    wasLost_ = true;
    close();
}

void FaultyPort::close() {
    isOpen_ = false;
    received_.clear();
    written_.clear();
    line_.clear();
    jabber_.clear();
    readsLeft_.reset();
}

void FaultyPort::pickAgainIn(Tick ms) {
    loop_.at(loop_.now() + ms, [this] { onPicked_(); });
}

void FaultyPort::jabber(const std::string& pattern, Tick lastsMs) {
    jabber_ = pattern;
    jabbered_ = 0;
    loop_.at(loop_.now() + lastsMs, [this, number = ++jabbers_] {
        if (number == jabbers_)
            jabber_.clear();
    });
}

void FaultyPort::openDevice(int /*number*/) {
    static_cast<void>(unit_.take(loop_.now()));
    received_.clear();
    isOpen_ = true;
}

void FaultyPort::demandOpen() const {
    if (!isOpen_)
        throw RuntimeFault::portNotOpen();
}

}  // namespace quorvex
