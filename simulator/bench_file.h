#pragma once

#include <istream>
#include <vector>

#include "simulator/options.h"

namespace quorvex::sim {

/// The units of a bench. A line describes one, by the words of a command line: "beltpack --link COM1 --set
/// 02=1F". A word with blanks stands in double quotes. Empty lines are passed over, and those that begin with
/// "#". Throws std::invalid_argument with a sentence that names the line for one that is wrong, for two units
/// on one link, and where there is no unit at all.
std::vector<Options> readBench(std::istream& text);

}  // namespace quorvex::sim
