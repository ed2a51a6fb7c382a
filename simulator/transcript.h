#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quorvex::sim {

/// One line of what passed between the program and a unit.
struct TranscriptEntry {
    enum class Kind {
        kReceived,  ///< a complete line from the program, without its line end
        kSent,      ///< what the unit put on the line, without its line end
        kNote,      ///< why the unit did something else, or nothing
    };

    std::int64_t atMs = 0;
    Kind kind = Kind::kNote;
    std::string text;  ///< printable; other bytes stand as \xNN

    bool operator==(const TranscriptEntry&) const = default;
};

using Transcript = std::function<void(const TranscriptEntry&)>;

}  // namespace quorvex::sim
