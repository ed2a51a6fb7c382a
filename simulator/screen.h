#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvex::sim {

/// A Beltpack's display: 128 x 32 pixels, dark or clear, and what it takes to draw on them. Whatever falls
/// outside is not drawn.
class Screen {
public:
    static constexpr int kWidth = 128;
    static constexpr int kHeight = 32;
    static constexpr int kBytes = kWidth * kHeight / 8;

    /// Height of a character, and the distance from one character to the next.
    static constexpr int kCharHeight = 7;
    static constexpr int kCharPitch = 6;

    void set(int x, int y, bool dark = true);
    bool isDark(int x, int y) const;

    /// Capital letters, digits, blank and . - : / > %; any other character leaves a gap.
    void text(int x, int y, std::string_view characters);

    /// The outline of a rectangle.
    void frame(int x, int y, int width, int height);
    void fill(int x, int y, int width, int height);
    void invert(int x, int y, int width, int height);

    /// As the display sends it: 32 lines of 16 bytes, the leftmost of eight pixels in the highest bit.
    std::string bytes() const;

private:
    std::array<std::uint8_t, kBytes> bytes_{};
};

}  // namespace quorvex::sim
