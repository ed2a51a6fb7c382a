#pragma once

#include <string>
#include <string_view>

#include "link/controls.h"

namespace quorvex {

/// A text field in memory, for operations without a window.
class PlainField : public TextField {
public:
    std::string text() const override { return text_; }
    void setText(std::string_view text) override { text_ = std::string(text); }

private:
    std::string text_;
};

}  // namespace quorvex
