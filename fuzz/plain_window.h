#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "link/console.h"
#include "link/controls.h"
#include "link/plain_field.h"
#include "link/runtime_fault.h"

namespace quorvex::fuzz {

// The window in memory, with what always holds for it.

/// Whether `text` is UTF-8, as far as its lead and continuation bytes go.
inline bool isUtf8(std::string_view text) {
    int following = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) == 0x80U) {
            if (following-- == 0)
                return false;
        } else {
            if (following != 0)
                return false;
            following = byte < 0x80U ? 0 : byte < 0xE0U ? 1 : byte < 0xF0U ? 2 : 3;
        }
    }
    return following == 0;
}

class QuietConsole : public Console {
public:
    void status(std::string_view text, Colour /*colour*/) override {
        require(!text.empty() && isUtf8(text), "a status is a text");
    }
    void messageBox(std::string_view text, Icon /*icon*/, std::string_view /*title*/) override {
        require(!text.empty() && isUtf8(text), "a box holds a text");
    }
    void beep() override {}
    void hourglass(bool up) override { isHourglassUp_ = up; }
    bool isHourglassUp() const { return isHourglassUp_; }

private:
    bool isHourglassUp_ = false;
};

class PlainCheck : public CheckField {
public:
    int value() const override { return value_; }
    void setValue(int value) override {
        if (value < 0 || value > 2)
            throw RuntimeFault::invalidPropertyValue();
        value_ = value;
    }

private:
    int value_ = 0;
};

}  // namespace quorvex::fuzz
