#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/fault.h"
#include "simulator/unit.h"

namespace quorvex::sim {

/// What a command line asks for.
struct Options {
    enum class UnitKind { kBeltpack, kActiveAntenna };

    enum class Play { kUnit, kReplay, kBench };

    bool help = false;  ///< nothing else counts then
    Play play = Play::kUnit;
    std::string file;  ///< the trace of a replay, the units of a bench
    UnitKind unit = UnitKind::kBeltpack;
    RfModule module = RfModule::kKirk;
    std::string linkPath;
    std::string dumpPath;  ///< empty: no dump
    bool traffic = false;
    int baud = 0;  ///< 0: the line takes no time
    int recordsPerSecond = 2;
    int framesPerSecond = 0;  ///< 0: no display stream
    bool answersWrites = false;
    bool refusesKirkReads = false;
    bool carrierPresent = true;
    int linesBeforeVersion = 0;
    std::optional<std::string> version;
    std::vector<std::pair<int, std::string>> values;  ///< register number, digits
    std::vector<int> unavailable;                     ///< register numbers
    std::vector<Fault> faults;
};

/// Reads `arguments`, the program's own name left out. Throws std::invalid_argument with a sentence that
/// says what is wrong.
Options parseOptions(const std::vector<std::string>& arguments);

/// The unit that `options` describe, for Play::kUnit. Throws std::invalid_argument with a sentence if a value
/// or a register number does not fit that unit.
std::unique_ptr<Unit> makeUnit(const Options& options);

/// "beltpack (Kirk)" and the like.
std::string describe(const Options& options);

/// What --help prints.
std::string helpText();

}  // namespace quorvex::sim
