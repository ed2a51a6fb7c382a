#include "simulator/register_bank.h"

#include "simulator/hex.h"

namespace quorvex::sim {

void RegisterBank::define(int number, std::string_view digits) {
    registers_[number] = Register{upperHex(digits), true};
}

bool RegisterBank::holds(int number) const {
    const auto found = registers_.find(number);
    return found != registers_.end() && found->second.available;
}

const std::string& RegisterBank::value(int number) const {
    return registers_.at(number).digits;
}

bool RegisterBank::store(int number, std::string_view digits) {
    if (!holds(number) || !isHex(digits) || digits.size() != value(number).size())
        return false;
    registers_.at(number).digits = upperHex(digits);
    return true;
}

void RegisterBank::setAvailable(int number, bool available) {
    registers_.at(number).available = available;
}

std::vector<int> RegisterBank::numbers() const {
    std::vector<int> held;
    for (const auto& [number, entry] : registers_) {
        if (entry.available)
            held.push_back(number);
    }
    return held;
}

}  // namespace quorvex::sim
