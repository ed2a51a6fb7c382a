#pragma once

#include <cstdint>
#include <deque>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/line_end.h"

namespace quorvex::sim {

/// A unit that was recorded: says what stands in a trace, when the program says what stands there.
///
/// A trace is text: seconds, a mark and what happened, a line each. Behind ">" stands what the program sent,
/// behind
/// "<" and "~" what the unit sent, the bytes in hexadecimal behind the last "|"; "* open" is an opening of
/// the port. Everything else is passed over.
///
/// A line from the program is looked for from the last one on, else from the last opening on; what the unit
/// sent after it follows, as long after it as it did then. What is still to come from before is dropped: the
/// program did not wait for it. A line that is not there is passed over in silence. An opening goes on at the
/// next opening that was recorded, after the last one at the first.
class Replay : public LineEnd {
public:
    /// Throws std::runtime_error with a sentence for a line of bytes that cannot be read, and where there is
    /// none.
    explicit Replay(std::istream& trace);

    void opened(std::int64_t nowMs) override;
    void receive(std::string_view bytes, std::int64_t nowMs) override;
    std::string take(std::int64_t nowMs) override;
    std::optional<std::int64_t> nextEventMs() const override;
    void setTranscript(Transcript transcript) override { transcript_ = std::move(transcript); }

private:
    struct Said {
        std::int64_t afterMs;  ///< since the step began
        std::string bytes;
    };
    /// A line of the program, or an opening, and what the unit said then.
    struct Step {
        std::string line;  ///< without its line end; empty for an opening
        std::int64_t atMs;
        std::vector<Said> said;
    };

    void addStep(std::string line, std::int64_t atMs) { steps_.push_back({std::move(line), atMs, {}}); }
    void addLine(const std::string& text, int number);
    void handleLine(const std::string& line, std::int64_t nowMs);
    /// The step that `line` is, counted from `first` on; nothing if it is not there.
    std::optional<std::size_t> find(const std::string& line, std::size_t first) const;
    void play(std::size_t step, std::int64_t nowMs);
    void record(TranscriptEntry::Kind kind, const std::string& text, std::int64_t atMs);

    std::vector<Step> steps_;
    std::size_t opening_ = 0;  ///< the step that is the last opening
    std::size_t next_ = 0;     ///< the step that should come next
    std::deque<Said> due_;     ///< by the time it is due
    std::string line_;
    Transcript transcript_;
};

}  // namespace quorvex::sim
