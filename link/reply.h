#pragma once

#include <string_view>

#include "link/number_text.h"

namespace quorvex {

// What a reply to a read line carries behind its head ("# 0285"), which no one looks at.

/// The data digits: the characters from the 7th on, empty in a shorter reply.
inline std::string_view dataDigits(std::string_view reply) {
    return middle(reply, 7);
}
/// The number in the two digits of a single data byte, 0 to 255; 0 in a shorter reply.
inline int dataByte(std::string_view reply) {
    return static_cast<int>(hexValue(middle(reply, 7, 2)));
}

}  // namespace quorvex
