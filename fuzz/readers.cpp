#include <algorithm>

#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "fuzz/scripted_line.h"
#include "link/operation.h"
#include "link/runtime_fault.h"

// The three readers of replies. Input: which reader, its silence, its terminator or count or text, whether
// the tick count is near its end, then the line. "{c" in the line runs another reader inside the wait.

namespace quorvex::fuzz {

namespace {

constexpr std::string_view kStarts = "^#!";
constexpr std::size_t kLongestLine = 4096;
constexpr std::int32_t kNearTheEnd = INT32_MAX - 9000;

bool isStart(char c) {
    return kStarts.find(c) != std::string_view::npos;
}

void checkLine(Operation& operation, int limitUnits, char terminator, const std::string* arriving) {
    const std::string reply = operation.serialGetResponse(limitUnits, terminator);
    if (reply != kError) {
        require(reply.size() <= kLongestLine, "a line has an end");
        require(reply.empty() || isStart(reply.front()), "a line begins with a start character");
        require(reply.find(terminator) == std::string::npos, "the terminator is no part of the line");
    }
    if (!arriving)
        return;
    const std::size_t from = std::min(arriving->find_first_of(kStarts), arriving->size());
    const std::size_t to = arriving->find(terminator, from);
    const std::string expected =
        to == std::string::npos ? std::string(kError) : arriving->substr(from, to - from);
    require(reply == expected.substr(0, kLongestLine), "the first whole line is the reply");
}

void checkCharacters(Operation& operation, int limitUnits, int count) {
    const std::string reply = operation.serialGetResponseChars(limitUnits, count);
    if (reply == kError)
        return;
    require(reply.size() == static_cast<std::size_t>(count), "exactly that many characters");
    require(isStart(reply.front()), "they begin with a start character");
    require(
        std::all_of(reply.begin(), reply.end(), [](char c) { return static_cast<unsigned char>(c) >= ' '; }),
        "none of them is a control character");
}

void checkAntenna(Operation& operation, std::string_view expected) {
    const std::string reply = operation.GetActiveAntennaResponse(expected);
    require(reply == kError || reply.find(expected) != std::string::npos, "the line that is looked for");
}

/// `arriving`: what comes, where nothing but characters does.
void readOnce(CommandLink& link, Input& input, const std::string* arriving) {
    constexpr std::string_view kTerminators = "\r;#", kTexts[] = {"# 0281", "^ 020002", "!"};
    Operation operation(link);
    operation.hourglass();
    const int reader = input.choice(4);
    const int limitUnits = input.choice(7);
    if (reader == 0)
        checkLine(operation, limitUnits, kTerminators[static_cast<std::size_t>(input.choice(3))], arriving);
    else if (reader == 1)
        checkCharacters(operation, limitUnits, input.choice(64) + 1);
    else if (reader == 2)
        checkAntenna(operation, kTexts[input.choice(3)]);
    else
        require(operation.exchange("# 0139", 8).size() <= 8, "a reply is as long as was asked for");
}

}  // namespace

void tryInput(Input input) {
    Input how(input.line());
    const std::string arriving(input.rest());
    ScriptedLine line(arriving, how.letter() == 'E' ? kNearTheEnd : 0);
    QuietConsole console;
    CommandLink link(line, line, console);
    line.onEvent = [&link](char detail) {
        const char choices[] = {detail, '1', '0'};
        Input inner(std::string_view(choices, sizeof choices));
        try {
            readOnce(link, inner, nullptr);
        } catch (const OperationRefused&) {  // NOLINT(bugprone-empty-catch): told in the status line
        }
    };
    try {
        readOnce(link, how, line.isUndisturbed() ? &arriving : nullptr);
    } catch (const RuntimeFault& fault) {
        require(fault.number() == RuntimeFault::overflow().number(), "only the tick count's end is a fault");
        require(line.ticks() >= kNearTheEnd, "the tick count is near its end");
    }
    require(!link.isBusy() && !console.isHourglassUp(), "an operation takes down what it put up");
}

}  // namespace quorvex::fuzz
