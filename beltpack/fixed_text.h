#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvex {

/// Text of a fixed width: shorter text is padded with blanks on the right, longer text is cut. Reading it
/// always yields all `Width` characters.
template <std::size_t Width>
class FixedText {
public:
    FixedText() = default;
    FixedText& operator=(std::string_view text) {
        text_.assign(text.substr(0, Width));
        text_.resize(Width, ' ');
        return *this;
    }
    const std::string& str() const { return text_; }
    bool isBlank() const { return text_.find_first_not_of(' ') == std::string::npos; }

private:
    std::string text_ = std::string(Width, ' ');
};

}  // namespace quorvex
