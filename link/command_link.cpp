#include "link/command_link.h"

#include "link/input_wait.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::int32_t kLineUnitMs = 2000;
constexpr std::int32_t kCharsUnitMs = 1000;
constexpr int kMostFurtherLines = 10;

bool isStart(char c) {
    return c == '^' || c == '#' || c == '!';
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ';
}

}  // namespace

CommandLink::CommandLink(SerialPort& port, EventLoop& loop, Console& console)
    : port_(port), loop_(loop), console_(console) {}

void CommandLink::serialSendString(std::string_view command) {
    ++interruptions_;
    try {
        port_.discardInput();
        for (const char c : command)
            port_.write(c);
        port_.write('\r');
        port_.write('\n');
        port_.flush();
    } catch (const RuntimeFault&) {  // NOLINT(bugprone-empty-catch): the reader that follows finds out
    }
}

std::string CommandLink::serialGetResponse(int limitUnits, char terminator) {
    InputWait wait(port_, loop_, limitUnits * kLineUnitMs);
    std::string text;
    bool started = false;
    wait.forNext();
    while (const auto c = port_.read()) {
        started = started || isStart(*c);
        if (started && *c == terminator)
            return text;
        if (started)
            text += *c;
        wait.forNext();
    }
    return std::string(kError);
}

std::string CommandLink::serialGetResponseChars(int limitUnits, int count) {
    InputWait wait(port_, loop_, limitUnits * kCharsUnitMs);
    std::string text;
    bool started = false;
    wait.forNext();
    while (const auto c = port_.read()) {
        started = started || isStart(*c);
        if (started && !isControl(*c))
            text += *c;
        if (started && static_cast<int>(text.size()) == count)
            return text;
        wait.forNext();
    }
    return std::string(kError);
}

std::string CommandLink::GetActiveAntennaResponse(std::string_view expected) {
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

void CommandLink::GetDataBuffer(int limitUnits, std::int32_t count) {
    const std::uint32_t before = interruptions_;
    dataBuffer_.capture(port_, loop_, limitUnits, count, [&] { return interruptions_ != before; });
}

void CommandLink::status(std::string_view text, Colour colour) {
    console_.status(text, colour);
}

}  // namespace quorvex
