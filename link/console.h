#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvex {

/// A colour as red + 256 x green + 65536 x blue, each 0 to 255.
using Colour = std::uint32_t;
inline constexpr Colour kBlack = 0;
inline constexpr Colour kRed = 255;
inline constexpr Colour kSuccessGreen = 150 * 256;

enum class Icon { none, information, critical };

/// The operator's side of the window: what an operation tells, and how. Texts are UTF-8.
class Console {
public:
    virtual ~Console() = default;

    /// Shows `text` in the status line until the next call.
    virtual void status(std::string_view text, Colour colour) = 0;
    /// A modal box with an OK button; returns when it is closed. An empty title means the program's own.
    virtual void messageBox(std::string_view text, Icon icon, std::string_view title = {}) = 0;
    virtual void beep() = 0;
    /// Puts the hourglass pointer up or takes it down. There is one pointer: calls do not nest.
    virtual void hourglass(bool up) = 0;
    /// Shows how far an operation is: `done` of `total` steps, 0 of 0 for nothing any more. One is shown, as
    /// with the pointer. A console may leave it out.
    virtual void progress(int /*done*/, int /*total*/) {}
};

}  // namespace quorvex
