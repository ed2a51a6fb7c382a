#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "link/number_text.h"
#include "link/runtime_fault.h"
#include "link/settings_store.h"

// The number readers. Input: a text.

namespace quorvex::fuzz {

namespace {

constexpr int kOverflow = 6, kTypeMismatch = 13, kInvalidValue = 380;
constexpr std::string_view kBlanks = " \t\r\n";

/// The number of the fault that `something` ends in; 0 for none.
template <typename Something>
int faultOf(Something something) {
    try {
        something();
    } catch (const RuntimeFault& fault) {
        return fault.number();
    }
    return 0;
}

/// `text` up to the first character that is not one of `allowed`.
std::string leading(std::string_view text, std::string_view allowed) {
    return std::string(text.substr(0, text.find_first_not_of(allowed)));
}

void checkHex(std::string_view text) {
    const std::uint64_t value = hexValue(text);
    const std::string digits = leading(text, "0123456789abcdefABCDEF");
    require(value == std::strtoull(digits.c_str(), nullptr, 16), "the value of the leading digits");
    const auto word = static_cast<std::uint32_t>(value);
    const auto half = static_cast<std::int16_t>(value);
    for (int width = -1; width <= 10; ++width) {
        const std::string shown = HexPad(word, width);
        require(hexValue(shown) == word, "digits read back as the number");
        require(shown.size() == static_cast<std::size_t>(std::max(width, 1)) ||
                    (shown.size() <= 8 && shown.front() != '0'),
                "as wide as asked for, or as the number is");
        require(HexPad(static_cast<std::int32_t>(word), width) == shown, "a sign makes no difference");
        require(static_cast<std::int16_t>(hexValue(HexPad(half, width))) == half, "16 bits come back");
    }
    const int code = static_cast<int>(value % 16);
    require(OffsetToNibble(NibbleToOffset(code)) == (code == 15 ? 7 : code), "a code survives");
}

/// What the C library reads: the sign, the digits and one fraction that `text` begins with.
double referenceOf(std::string_view text) {
    std::string packed;
    for (const char c : text) {
        if (kBlanks.find(c) == std::string_view::npos)
            packed += c;
    }
    packed = leading(packed, "+-.0123456789");
    const std::size_t sign = packed.find_first_of("+-", 1);
    packed = packed.substr(0, sign);
    const double value = std::strtod(packed.c_str(), nullptr);
    constexpr double kMost = std::numeric_limits<double>::max();
    return std::isinf(value) ? std::copysign(kMost, value) : value;
}

template <typename Integer>
void checkRounded(double value, Integer (*rounded)(double)) {
    Integer whole = 0;
    const int fault = faultOf([&] { whole = rounded(value); });
    if (fault == 0)
        require(std::fabs(whole - value) <= 0.5, "the nearest whole number");
    else
        require(fault == kOverflow && std::fabs(value) > std::numeric_limits<Integer>::max(), "too large");
}

void checkDecimal(std::string_view text) {
    const double value = decimalValue(text);
    require(std::isfinite(value), "a number is finite");
    require(value == referenceOf(text), "the value of the leading number");
    checkRounded<std::int16_t>(value, toInt16);
    checkRounded<std::int32_t>(value, toInt32);
    double strict = 0;
    const int fault = faultOf([&] { strict = strictNumber(text); });
    require(fault == 0 || fault == kTypeMismatch, "a number or none");
    require(fault != 0 || strict == value, "both read the same number");
}

class OneSetting : public SettingsStore {
public:
    explicit OneSetting(std::string_view text) : text_(text) {}
    std::string get(std::string_view /*key*/, std::string_view /*byDefault*/) const override { return text_; }
    void save(std::string_view /*key*/, std::string_view /*text*/) override {}
    std::string place() const override { return "memory"; }

private:
    std::string text_;
};

void checkSetting(std::string_view text) {
    const OneSetting store(text);
    int number = 0;
    try {
        number = store.number(kComPortKey, "1", 1, 12);
        require(number >= 1 && number <= 12, "a setting lies in its range");
    } catch (const RuntimeFault& fault) {
        const int kind = fault.number();
        require(kind == kOverflow || kind == kTypeMismatch || kind == kInvalidValue, "a fault of a setting");
        require(isUtf8(fault.report()), "the report is a text");
    }
}

void checkPieces(std::string_view text) {
    require(isUtf8(printable(text)), "shown text is UTF-8");
    require(printable(text).size() <= 2 * text.size(), "a character is at most two bytes");
    const std::string_view trimmed = trimmedRight(text);
    require(trimmed.empty() || trimmed.back() != ' ', "no blank is left at the end");
    for (const std::size_t position : {std::size_t{0}, std::size_t{1}, text.size(), text.size() + 1}) {
        const std::string_view piece = middle(text, position, 2);
        require(piece.size() <= 2 && text.find(piece) != std::string_view::npos, "a piece of the text");
    }
}

}  // namespace

void tryInput(Input input) {
    const std::string_view text = input.rest();
    checkHex(text);
    checkDecimal(text);
    checkSetting(text);
    checkPieces(text);
}

}  // namespace quorvex::fuzz
