#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvex::sim {

/// `byte` (0 to 255) as two upper-case hexadecimal digits.
std::string hexByte(int byte);

/// The number written in `digits`: one to seven hexadecimal digits of either case and nothing else.
/// Nothing for any other text.
std::optional<int> parseHex(std::string_view digits);

/// Whether `text` is one or more hexadecimal digits of either case.
bool isHex(std::string_view text);

/// `digits` with "a" to "f" in upper case; every other character as it is.
std::string upperHex(std::string_view digits);

/// The decimal number in `text`, `least` to `most`. Throws std::invalid_argument with a sentence that begins
/// with `what` for any other text.
int parseNumber(const std::string& what, std::string_view text, int least, int most);

/// `text` fit for a terminal: every character outside printable ASCII, and the backslash, as \xNN.
std::string printable(std::string_view text);

}  // namespace quorvex::sim
