#include "simulator/options.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/input.h"

// The simulator's command line, and the unit that it describes. Input: its arguments, one a line.

namespace quorvex::fuzz {

namespace {

using sim::Options;

/// An argument ends where there is a null.
std::string_view upToNull(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

void check(const Options& options) {
    if (options.help)
        return;
    require(!options.linkPath.empty(), "the port has a place");
    require(options.baud == 0 || (options.baud >= 300 && options.baud <= 1'000'000), "the pace");
    require(options.recordsPerSecond >= 1 && options.recordsPerSecond <= 50, "the records' rate");
    require(options.framesPerSecond >= 0 && options.framesPerSecond <= 50, "the display's rate");
    require(options.linesBeforeVersion >= 0 && options.linesBeforeVersion <= 100, "the version's lines");
    require(!sim::describe(options).empty(), "the unit has a name");
    const auto unit = sim::makeUnit(options);
    for (const int number : options.unavailable)
        require(!unit->holds(number), "what was made unavailable is so");
    require(!unit->isGone() && !unit->inCalibrationMode(), "the unit is at rest");
}

}  // namespace

void tryInput(Input input) {
    constexpr std::size_t kMostArguments = 64;
    std::vector<std::string> arguments;
    while (!input.isEmpty() && arguments.size() < kMostArguments)
        arguments.emplace_back(upToNull(input.line()));
    try {
        check(sim::parseOptions(arguments));
    } catch (const std::invalid_argument& error) {
        require(std::string_view(error.what()).ends_with("."), "what is wrong is a sentence");
    }
}

}  // namespace quorvex::fuzz
