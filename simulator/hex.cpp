#include "simulator/hex.h"

#include <charconv>
#include <stdexcept>

namespace quorvex::sim {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::size_t kMostDigits = 7;  // what always fits an int

}  // namespace

std::string hexByte(int byte) {
    const auto bits = static_cast<unsigned>(byte);
    return {kDigits[(bits >> 4U) & 0xFU], kDigits[bits & 0xFU]};
}

std::optional<int> parseHex(std::string_view digits) {
    if (!isHex(digits) || digits.size() > kMostDigits)
        return std::nullopt;
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return number;
}

bool isHex(std::string_view text) {
    return !text.empty() && upperHex(text).find_first_not_of(kDigits) == std::string::npos;
}

std::string upperHex(std::string_view digits) {
    std::string upper(digits);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'f')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
}

int parseNumber(const std::string& what, std::string_view text, int least, int most) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < least || number > most)
        throw std::invalid_argument(what + ": \"" + std::string(text) + "\" is no number from " +
                                    std::to_string(least) + " to " + std::to_string(most) + ".");
    return number;
}

std::string printable(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        if (c >= ' ' && c <= '~' && c != '\\')
            shown += c;
        else
            shown += "\\x" + hexByte(static_cast<unsigned char>(c));
    }
    return shown;
}

}  // namespace quorvex::sim
