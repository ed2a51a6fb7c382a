#pragma once

#include <string_view>

#include "link/number_text.h"

namespace quorvex {

// What a reply to a read line ("# 0105") carries: its head ("# 0285") and the data digits behind it. The
// readers go by the length or a part of it alone; isAnswerTo looks at all of it.

/// The data digits: the characters from the 7th on, empty in a shorter reply.
inline std::string_view dataDigits(std::string_view reply) {
    return middle(reply, 7);
}
/// The number in the two digits of a single data byte, 0 to 255; 0 in a shorter reply.
inline int dataByte(std::string_view reply) {
    return static_cast<int>(hexValue(middle(reply, 7, 2)));
}

/// Whether a line reads a parameter or a register.
bool isReadLine(std::string_view line);
/// Whether `reply` is a whole answer to `readLine`: "# ", the count of its bytes, the number asked for with
/// its highest bit set, and data digits, all hexadecimal in either case.
bool isAnswerTo(std::string_view readLine, std::string_view reply);
/// Whether it is the head of one and nothing else.
bool isHeadOfAnswerTo(std::string_view readLine, std::string_view reply);
/// Whether it is what a unit answers that does not have what was asked for.
bool isRefusal(std::string_view reply);

}  // namespace quorvex
