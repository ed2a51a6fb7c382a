#pragma once

namespace quorvex {

// What becomes of a typed character, control characters included: another one, the same, or 0 to swallow it.

/// "a" to "z" become capitals, everything else passes.
constexpr char16_t upperCased(char16_t c) {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
}

/// Everything above "9" is swallowed; digits, blanks, punctuation below "0" and control characters pass.
constexpr char16_t upToNine(char16_t c) {
    return c > u'9' ? u'\0' : c;
}

}  // namespace quorvex
