#pragma once

#include <string>
#include <vector>

namespace quorvex {

/// Device names ("ttyS0", "ttyUSB1") in the order in which they count as COM1, COM2, ...: built-in ports,
/// then USB adapters (ttyUSB), then USB modems (ttyACM), each by number.
std::vector<std::string> inPortOrder(std::vector<std::string> names);

}  // namespace quorvex
