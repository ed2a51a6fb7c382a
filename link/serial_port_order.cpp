#include "link/serial_port_order.h"

#include <algorithm>
#include <tuple>

namespace quorvex {

namespace {

/// Real UARTs, whatever their make, come first; what is neither they nor an adapter comes last.
int rank(const std::string& name) {
    constexpr const char* kAfterUarts[] = {"ttyUSB", "ttyACM", "ttyGS", "rfcomm", "tnt"};
    int place = 0;
    for (const char* kind : kAfterUarts) {
        ++place;
        if (name.starts_with(kind))
            return place;
    }
    return 0;
}

/// Name without its number, and the number as text of comparable length.
std::tuple<int, std::string, std::size_t, std::string> orderKey(const std::string& name) {
    const std::size_t last = name.find_last_not_of("0123456789");
    const std::size_t digitsAt = last == std::string::npos ? 0 : last + 1;
    const std::size_t number = std::min(name.find_first_not_of('0', digitsAt), name.size());
    return {rank(name), name.substr(0, digitsAt), name.size() - number, name.substr(number)};
}

}  // namespace

std::vector<std::string> inPortOrder(std::vector<std::string> names) {
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return orderKey(a) < orderKey(b); });
    return names;
}

}  // namespace quorvex
