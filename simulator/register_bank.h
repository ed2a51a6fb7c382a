#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::sim {

/// The numbered values that a unit holds, each a fixed count of bytes kept as upper-case digits.
class RegisterBank {
public:
    /// Adds register `number` (1 to 0x3F), as long as `digits`.
    void define(int number, std::string_view digits);

    /// Whether the unit has the register and answers for it.
    bool holds(int number) const;

    /// The digits. Throws std::out_of_range for a register that was never defined.
    const std::string& value(int number) const;

    /// Stores `digits`, upper-cased. False, and nothing stored, if the register is not held or `digits`
    /// is not exactly as many hexadecimal digits as it has.
    bool store(int number, std::string_view digits);

    /// A register made unavailable keeps its value but is neither held nor listed.
    /// Throws std::out_of_range for a register that was never defined.
    void setAvailable(int number, bool available);

    /// The numbers held, ascending.
    std::vector<int> numbers() const;

private:
    struct Register {
        std::string digits;
        bool available = true;
    };
    std::map<int, Register> registers_;
};

}  // namespace quorvex::sim
