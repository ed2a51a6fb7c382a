#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// The controls of the window as operations see them. Text is Latin-1, as on the wire; parts of file names
// are UTF-8.

// What a handler of typed keys gets for Enter, and for Control with Enter.
inline constexpr char16_t kEnter = u'\r';
inline constexpr char16_t kLineFeed = u'\n';

/// A text field.
class TextField {
public:
    virtual ~TextField() = default;
    virtual std::string text() const = 0;
    virtual void setText(std::string_view text) = 0;
};

/// A check box: 0 clear, 1 checked, 2 greyed.
class CheckField {
public:
    virtual ~CheckField() = default;
    virtual int value() const = 0;
    /// Throws "Invalid property value" outside 0 to 2.
    virtual void setValue(int value) = 0;
};

/// Option buttons of which one is on.
class OptionGroup {
public:
    virtual ~OptionGroup() = default;
    /// Turns the option `index` (from 0) on and the others off.
    virtual void select(int index) = 0;
};

/// A list that shows one item at a time and is stepped by scrolling.
class OneItemList {
public:
    virtual ~OneItemList() = default;
    virtual void refill(const std::vector<std::string>& items) = 0;
    /// Index of the visible item.
    virtual int topIndex() const = 0;
    /// Scrolls to an item; an index past the last one shows the last.
    virtual void setTopIndex(int index) = 0;
};

}  // namespace quorvex
