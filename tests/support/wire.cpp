#include "tests/support/wire.h"

#include <algorithm>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {
constexpr int kHighestPort = 16;
}

void Wire::refuse(int number, bool refused) {
    if (refused)
        refused_.insert(number);
    else
        refused_.erase(number);
}

void Wire::babble(const QByteArray& bytes, std::int64_t everyMs) {
    babble_ = bytes;
    babbleEveryMs_ = everyMs;
    nextBabbleMs_ = clock_.nowMs + everyMs;
}

std::optional<std::int64_t> Wire::nextEventMs() const {
    std::optional<std::int64_t> next = unit_ ? unit_->nextEventMs() : std::nullopt;
    if (!babble_.isEmpty())
        next = std::min(next.value_or(nextBabbleMs_), nextBabbleMs_);
    if (!inTheAir_.empty())
        next = std::min(next.value_or(inTheAir_.front().dueMs), inTheAir_.front().dueMs);
    return next;
}

void Wire::openDevice(int number) {
    close();
    if (number < 1 || number > kHighestPort || refused_.contains(number)) {
        journal_.note("cannot open " + QString::number(number));
        throw RuntimeFault(8005, "The port cannot be opened");
    }
    journal_.note("open " + QString::number(number));
    if (const auto found = units_.find(number); found != units_.end())
        unit_ = found->second;
    inTheAir_.clear();
    arrived_.clear();
    line_.clear();
    open_ = true;
}

void Wire::close() {
    if (open_)
        journal_.note("close");
    open_ = false;
}

void Wire::collect() {
    if (unit_) {
        const std::string bytes = unit_->take(clock_.nowMs);
        if (!bytes.empty())
            inTheAir_.push_back({clock_.nowMs + kTransitMs, QByteArray::fromStdString(bytes)});
    }
    for (; !babble_.isEmpty() && nextBabbleMs_ <= clock_.nowMs; nextBabbleMs_ += babbleEveryMs_)
        inTheAir_.push_back({nextBabbleMs_, babble_});
    while (!inTheAir_.empty() && inTheAir_.front().dueMs <= clock_.nowMs) {
        const QByteArray bytes = inTheAir_.front().bytes;
        inTheAir_.pop_front();
        if (open_)
            arrived_.insert(arrived_.end(), bytes.begin(), bytes.end());
    }
}

std::size_t Wire::waiting() {
    collect();
    return open_ ? arrived_.size() : 0;
}

void Wire::discardInput() {
    if (!open_)
        throw RuntimeFault::portNotOpen();
    collect();
    arrived_.clear();
}

std::optional<char> Wire::read() {
    if (waiting() == 0)
        return std::nullopt;
    const char c = arrived_.front();
    arrived_.pop_front();
    return c;
}

void Wire::write(char c) {
    if (!open_)
        throw RuntimeFault::portNotOpen();
    line_ += c;
    if (c == '\n')
        completeLine();
}

void Wire::completeLine() {
    const QByteArray bytes = line_;
    line_.clear();
    const bool proper = bytes.endsWith("\r\n") && bytes.count('\r') == 1;
    const QString line = QString::fromLatin1(proper ? bytes.chopped(2) : bytes);
    lines_ << line;
    if (onLine_)
        onLine_(line);
    const auto found = written_.find(line);
    if (found != written_.end())
        inTheAir_.push_back({clock_.nowMs + kTransitMs, found->second});
    else if (unit_)
        unit_->receive(bytes.toStdString(), clock_.nowMs);
}

}  // namespace quorvex
