#include "simulator/hex.h"

#include <algorithm>

namespace quorvex::sim {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::size_t kMostDigits = 7;  // what always fits an int

int digitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

}  // namespace

std::string hexByte(int byte) {
    const auto bits = static_cast<unsigned>(byte);
    return {kDigits[(bits >> 4U) & 0xFU], kDigits[bits & 0xFU]};
}

std::optional<int> parseHex(std::string_view digits) {
    if (!isHex(digits) || digits.size() > kMostDigits)
        return std::nullopt;
    int number = 0;
    for (const char c : digits)
        number = number * 16 + digitValue(c);
    return number;
}

bool isHex(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return digitValue(c) >= 0; });
}

std::string upperHex(std::string_view digits) {
    std::string upper(digits);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'f')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
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
