#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvex::sim {

/// Added to a register's number, it makes a command a write of that register.
inline constexpr int kWriteFlag = 0x40;

/// Added to a number, it marks a line as the unit's answer to it.
inline constexpr int kReplyFlag = 0x80;

/// One command line taken apart: family, a blank, two digits counting the payload bytes, the payload.
///
///     # 02 47 01          family '#', length 2, number 0x47, data "01"
///     ! 03 09 E803        family '!', length 3, number 0x09, data "E803"
struct Frame {
    char family = '#';  ///< '#' for registers, '!' for commands
    int length = 0;     ///< payload bytes that the line announces, the number included
    int number = 0;     ///< first payload byte
    std::string data;   ///< what follows, trailing blanks cut off; not checked against `length`

    /// Whether `data` is hexadecimal digits, exactly as many as `length` announces.
    bool isExact() const;
};

/// The frame that `line` (without its line end) holds. Nothing if it does not begin with "# " or "! ",
/// a length of at least one and a number.
std::optional<Frame> parseFrame(std::string_view line);

/// The answer of a unit asked for register `number` that holds `data` (pairs of digits): "# 0281" + "21".
std::string replyFrame(int number, std::string_view data);

}  // namespace quorvex::sim
