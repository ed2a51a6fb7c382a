#include "link/operation.h"

#include <iterator>
#include <utility>

#include "link/input_wait.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::int32_t kLineUnitMs = 2000;
constexpr std::int32_t kCharsUnitMs = 1000;
constexpr int kMostFurtherLines = 10;
constexpr std::size_t kLongestLine = 4096;  ///< what a line without an end brings beyond is dropped

bool isStart(char c) {
    return c == '^' || c == '#' || c == '!';
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ';
}

}  // namespace

Operation::Operation(CommandLink& link, std::function<bool()> isWanted, int room)
    : link_(link), isWanted_(std::move(isWanted)), isPortThere_(link.untilPortGone()) {
    if (std::ssize(link_.operations_) + room > kMostAtOnce) {
        link_.status("Too many operations are waiting for the unit; this one was not started.", kRed);
        throw OperationRefused();
    }
    link_.operations_.push_back(this);
    number_ = ++link_.begun_;
}

Operation::~Operation() {
    leaveMode();
    if (hourglass_)
        link_.console_.hourglass(false);
    if (progress_)
        link_.console_.progress(0, 0);
    std::erase(link_.operations_, this);
}

void Operation::hourglass() {
    hourglass_ = true;
    link_.console_.hourglass(true);
}

void Operation::progress(int done, int total) {
    progress_ = true;
    link_.console_.progress(done, total);
}

void Operation::enterMode(std::string_view enter, std::string_view leave) {
    serialSendString(enter);
    leave_ = leave;
}

void Operation::leaveMode() {
    if (!leave_.empty())
        serialSendString(std::exchange(leave_, {}));
}

void Operation::serialSendString(std::string_view command) {
    if (isOver())
        return;
    SerialPort& port = link_.port_;
    try {
        port.discardInput();
        if (command.size() + kLineEnd.size() > port.room())
            return;  // the unit takes nothing; half a command would be another one
        for (const char c : command)
            port.write(c);
        for (const char c : kLineEnd)
            port.write(c);
        port.flush();
        if (link_.listener_)
            link_.listener_->sent(command);
    } catch (const RuntimeFault&) {  // NOLINT(bugprone-empty-catch): the reader that follows finds out
    }
}

std::string Operation::serialGetResponse(int limitUnits, char terminator) {
    InputWait wait(link_.port_, link_.loop_, limitUnits * kLineUnitMs, [this] { return !isOver(); });
    std::string text;
    bool started = false;
    while (const auto c = wait.next()) {
        started = started || isStart(*c);
        if (started && *c == terminator) {
            if (link_.listener_)
                link_.listener_->gotLine(text);
            return text;
        }
        if (started && text.size() < kLongestLine)
            text += *c;
    }
    return givenUp(text);
}

std::string Operation::serialGetResponseChars(int limitUnits, int count) {
    InputWait wait(link_.port_, link_.loop_, limitUnits * kCharsUnitMs, [this] { return !isOver(); });
    std::string text;
    bool started = false;
    while (const auto c = wait.next()) {
        started = started || isStart(*c);
        if (started && !isControl(*c))
            text += *c;
        if (started && static_cast<int>(text.size()) == count) {
            if (link_.listener_)
                link_.listener_->gotCharacters(text);
            return text;
        }
    }
    return givenUp(text);
}

std::string Operation::givenUp(std::string_view part) {
    hasHeardPart_ = !part.empty();
    if (link_.listener_)
        link_.listener_->gaveUp(part);
    return std::string(kError);
}

std::string Operation::GetActiveAntennaResponse(std::string_view expected) {
    std::string reply = serialGetResponse(limit::kFirstAntennaLine, kCarriageReturn);
    if (reply == kError)
        return reply;
    for (int further = 0;; ++further) {
        if (reply.find(expected) != std::string::npos)
            return reply;
        if (further == kMostFurtherLines)
            return std::string(kError);
        // A silence here counts as one more line: chatter may pause and go on.
        reply = serialGetResponse(limit::kLine, kCarriageReturn);
    }
}

std::string Operation::exchange(std::string_view line, int count) {
    serialSendString(line);
    return serialGetResponseChars(limit::kReply, count);
}

}  // namespace quorvex
