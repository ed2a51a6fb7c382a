#pragma once

#include <string_view>

namespace quorvex {

/// Hears what operations send, and what their readers make of what comes back.
class LinkListener {
public:
    virtual ~LinkListener() = default;
    /// `line` is on the wire, without its line end.
    virtual void sent(std::string_view line) = 0;
    /// A reader of lines, or one of a number of characters, has ended with `reply`.
    virtual void gotLine(std::string_view reply) = 0;
    virtual void gotCharacters(std::string_view reply) = 0;
    /// A reader has given up; `part` of a reply has come, from its start character on, or nothing.
    virtual void gaveUp(std::string_view part) = 0;
};

}  // namespace quorvex
