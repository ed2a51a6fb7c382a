#include "link/number_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {

int digitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Length of the plain decimal number (sign, digits, fraction) that `text` begins with; 0 if none.
std::size_t numberLength(std::string_view text) {
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        ++at;
    bool digits = false;
    bool point = false;
    for (; at < text.size(); ++at) {
        if (isDigit(text[at]))
            digits = true;
        else if (text[at] == '.' && !point)
            point = true;
        else
            break;
    }
    return digits ? at : 0;
}

/// What counts for a number that no double holds: 0 for one below 1, else one that is far outside every range
/// that is checked later.
double beyondDouble(std::string_view number) {
    const std::string_view whole = number.substr(0, number.find('.'));
    if (whole.find_first_of("123456789") == std::string_view::npos)
        return 0;
    constexpr double kMost = std::numeric_limits<double>::max();
    return number.front() == '-' ? -kMost : kMost;
}

double parsed(std::string_view number) {
    if (!number.empty() && number.front() == '+')
        number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    return result.ec == std::errc::result_out_of_range ? beyondDouble(number) : value;
}

template <typename Integer>
Integer rounded(double value) {
    const double whole = std::nearbyint(value);  // the default rounding mode: halves to even
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw RuntimeFault::overflow();
    return static_cast<Integer>(whole);
}

}  // namespace

std::string HexPad(std::uint32_t value, int width) {
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEF"[value % 16]);
        value /= 16;
    } while (value != 0);
    if (width > static_cast<int>(digits.size()))
        digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    return digits;
}

std::string HexPad(std::int32_t value, int width) {
    return HexPad(static_cast<std::uint32_t>(value), width);
}

std::string HexPad(std::int16_t value, int width) {
    return HexPad(static_cast<std::uint32_t>(static_cast<std::uint16_t>(value)), width);
}

int NibbleToOffset(int code) {
    return code >= 8 ? 15 - code : code - 7;
}

int OffsetToNibble(int offset) {
    return offset > 0 ? 15 - offset : offset + 7;
}

bool isHexDigit(char c) {
    return digitValue(c) >= 0;
}

bool isSameHex(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](unsigned char a, unsigned char b) { return std::toupper(a) == std::toupper(b); });
}

std::uint64_t hexValue(std::string_view text) {
    std::uint64_t value = 0;
    for (const char c : text) {
        const int digit = digitValue(c);
        if (digit < 0)
            break;
        if (value > std::numeric_limits<std::uint64_t>::max() / 16)
            return std::numeric_limits<std::uint64_t>::max();
        value = value * 16 + static_cast<std::uint64_t>(digit);
    }
    return value;
}

double decimalValue(std::string_view text) {
    std::string packed;
    for (const char c : text) {
        if (!isBlank(c))
            packed += c;
    }
    const std::size_t length = numberLength(packed);
    return length == 0 ? 0 : parsed(std::string_view(packed).substr(0, length));
}

double strictNumber(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    if (text.empty() || numberLength(text) != text.size())
        throw RuntimeFault::typeMismatch();
    return parsed(text);
}

std::int16_t toInt16(double value) {
    return rounded<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return rounded<std::int32_t>(value);
}

std::string_view middle(std::string_view text, std::size_t position, std::size_t count) {
    if (position < 1 || position > text.size())
        return {};
    return text.substr(position - 1, count);
}

std::string printable(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0xA0) {  // printable in Latin-1
            shown += static_cast<char>(0xC0 | code >> 6);
            shown += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            shown += code >= ' ' && code <= '~' ? c : '?';
        }
    }
    return shown;
}

std::string_view trimmedRight(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

}  // namespace quorvex
