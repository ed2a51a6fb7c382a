#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvex {

/// The digits of `value` in upper-case hexadecimal, "0" added on the left up to `width` digits. A longer
/// text is returned whole. Negative numbers show as two's complement of their own size (-5 as FFFB).
std::string HexPad(std::int16_t value, int width);
std::string HexPad(std::int32_t value, int width);
std::string HexPad(std::uint32_t value, int width);

/// Signed offset (-7 to 7) of an RM5 module's 4-bit frequency code (0 to 15). Codes 7 and 15 both mean 0.
int NibbleToOffset(int code);
/// The 4-bit code of a signed offset (-7 to 7); never 15.
int OffsetToNibble(int offset);

/// The number that the leading hexadecimal digits of `text` stand for, upper or lower case, never negative.
/// Ends at the first other character; 0 if there is no digit. Saturates above 64 bits.
std::uint64_t hexValue(std::string_view text);
bool isHexDigit(char c);
/// Whether two hexadecimal texts have the same digits, in whatever case.
bool isSameHex(std::string_view one, std::string_view other);

/// The leading decimal number of `text`: blanks anywhere are skipped, an optional sign, digits, an optional
/// fraction. Ends at the first other character; 0 if there is no digit.
double decimalValue(std::string_view text);
/// The number that the whole of `text` is, blanks around it allowed. Throws "Type mismatch" for anything
/// else, an empty text included.
double strictNumber(std::string_view text);

/// Rounded to the nearest whole number, halves to even. Throws "Overflow" outside the type's range.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

/// `text` from the 1-based character `position` on, at most `count` characters; what is not there is left
/// out.
std::string_view middle(std::string_view text, std::size_t position,
                        std::size_t count = std::string_view::npos);

/// Latin-1 text from the wire as UTF-8 for a message; what cannot be printed shows as "?".
std::string printable(std::string_view text);

/// `text` without the blanks at its end.
std::string_view trimmedRight(std::string_view text);

}  // namespace quorvex
