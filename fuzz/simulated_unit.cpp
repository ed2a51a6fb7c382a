#include <algorithm>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "simulator/frame.h"
#include "simulator/hex.h"
#include "simulator/options.h"

// A simulated unit at the other end of any bytes. Input: its options on one line, then the bytes; "~c" among
// them is a pause of 100 ms for each place that c stands behind "0".

namespace quorvex::fuzz {

namespace {

using sim::Unit;

constexpr std::int64_t kMostMs = 10'000;
constexpr int kMsOfPlace = 100, kPlaces = 64;

std::unique_ptr<Unit> unitOf(std::string_view options) {
    std::istringstream words{std::string(options)};
    std::vector<std::string> arguments;
    for (std::string word; words >> word;)
        arguments.push_back(word);
    try {
        return sim::makeUnit(sim::parseOptions(arguments));
    } catch (const std::invalid_argument&) {
        return nullptr;
    }
}

/// What a unit holds with each digit as "0": its registers and their sizes.
std::string shapeOf(const Unit& unit) {
    std::istringstream lines(unit.dump());
    std::string shape;
    for (std::string line; std::getline(lines, line);) {
        const std::string digits = line.substr(line.find('=') + 1);
        require(sim::isHex(digits) && sim::upperHex(digits) == digits, "a register holds upper-case digits");
        shape += line.substr(0, 3) + std::string(digits.size(), '0') + "\n";
    }
    return shape;
}

void checkTaken(Unit& unit, std::int64_t nowMs) {
    unit.take(nowMs);
    const auto next = unit.nextEventMs();
    require(!next || *next > nowMs, "what is due has been taken");
    require(unit.take(nowMs).empty(), "nothing is said twice");
}

/// The bytes up to the next pause.
std::string_view untilPause(std::string_view& rest) {
    const std::string_view piece = rest.substr(0, rest.find('~'));
    rest.remove_prefix(piece.size());
    return piece;
}

}  // namespace

void tryInput(Input input) {
    const std::unique_ptr<Unit> unit = unitOf(input.line());
    if (!unit)
        return;
    const std::string shape = shapeOf(*unit);
    unit->setTranscript([](const sim::TranscriptEntry& entry) {
        require(
            std::all_of(entry.text.begin(), entry.text.end(), [](char c) { return c >= ' ' && c <= '~'; }),
            "the transcript is printable");
    });
    std::string_view rest = input.rest();
    std::int64_t nowMs = 0;
    while (!rest.empty() && nowMs < kMostMs) {
        unit->receive(untilPause(rest), nowMs);
        checkTaken(*unit, nowMs);
        if (rest.size() > 1)
            nowMs += static_cast<unsigned char>(rest[1] - '0') % kPlaces * kMsOfPlace;
        rest.remove_prefix(std::min<std::size_t>(rest.size(), 2));
    }
    unit->receive("\r\n! 03090000\r\n! 03080000\r\n", nowMs);
    checkTaken(*unit, nowMs);
    require(shapeOf(*unit) == shape, "registers keep their sizes");
}

}  // namespace quorvex::fuzz
