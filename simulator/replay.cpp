#include "simulator/replay.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestLine = 256;  // what exceeds it can only be noise
constexpr double kMsPerSecond = 1000;

/// The bytes behind the last "|" of a line of a trace; nothing if they are none.
std::optional<std::string> bytesOf(const std::string& text) {
    const std::size_t bar = text.rfind('|');
    if (bar == std::string::npos)
        return std::nullopt;
    std::istringstream words(text.substr(bar + 1));
    std::string bytes;
    for (std::string word; words >> word;) {
        const std::optional<int> byte = word.size() == 2 ? parseHex(word) : std::nullopt;
        if (!byte)
            return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    return bytes.empty() ? std::nullopt : std::optional(bytes);
}

std::string withoutLineEnd(std::string line) {
    if (line.ends_with(kLineEnd))
        line.resize(line.size() - kLineEnd.size());
    return line;
}

}  // namespace

Replay::Replay(std::istream& trace) {
    int number = 0;
    for (std::string text; std::getline(trace, text);)
        addLine(text, ++number);
    if (steps_.empty())
        throw std::runtime_error("There is nothing in the trace that passed over the port.");
    if (!steps_.front().line.empty())
        steps_.insert(steps_.begin(), Step{"", 0, {}});
}

void Replay::addLine(const std::string& text, int number) {
    std::istringstream words(text);
    double seconds = 0;
    std::string mark, what;
    if (!(words >> seconds >> mark >> what) || (mark != ">" && mark != "<" && mark != "~" && mark != "*"))
        return;
    const std::int64_t atMs = std::llround(seconds * kMsPerSecond);
    if (mark == "*") {
        if (what == "open" && text.find("failed") == std::string::npos)
            addStep("", atMs);
        return;
    }
    const std::optional<std::string> bytes = bytesOf(text);
    if (!bytes)
        throw std::runtime_error("Line " + std::to_string(number) + " of the trace has no bytes.");
    if (mark == ">") {
        addStep(withoutLineEnd(*bytes), atMs);
        return;
    }
    if (steps_.empty())
        addStep("", 0);
    // What was dropped unread came some time before; if the program speaks earlier now, it does not come at
    // all.
    steps_.back().said.push_back({atMs - steps_.back().atMs, *bytes});
}

void Replay::opened(std::int64_t nowMs) {
    line_.clear();
    due_.clear();
    opening_ = find("", next_).value_or(0);
    play(opening_, nowMs);
}

void Replay::receive(std::string_view bytes, std::int64_t nowMs) {
    for (const char c : bytes) {
        line_ += c;
        if (line_.ends_with(kLineEnd))
            handleLine(withoutLineEnd(std::exchange(line_, {})), nowMs);
        else if (line_.size() > kLongestLine)
            line_.clear();
    }
}

void Replay::handleLine(const std::string& line, std::int64_t nowMs) {
    record(TranscriptEntry::Kind::kReceived, printable(line), nowMs);
    std::optional<std::size_t> step = find(line, next_);
    if (!step)
        step = find(line, opening_);
    if (step && !line.empty())
        play(*step, nowMs);
    else
        record(TranscriptEntry::Kind::kNote, "not in the trace", nowMs);
}

std::optional<std::size_t> Replay::find(const std::string& line, std::size_t first) const {
    for (std::size_t i = first; i < steps_.size(); ++i) {
        if (steps_[i].line == line)
            return i;
    }
    return std::nullopt;
}

void Replay::play(std::size_t step, std::int64_t nowMs) {
    next_ = step + 1;
    due_.clear();
    for (const Said& said : steps_[step].said)
        due_.push_back({nowMs + said.afterMs, said.bytes});
}

std::string Replay::take(std::int64_t nowMs) {
    std::string bytes;
    while (!due_.empty() && due_.front().afterMs <= nowMs) {
        record(TranscriptEntry::Kind::kSent, printable(withoutLineEnd(due_.front().bytes)), nowMs);
        bytes += due_.front().bytes;
        due_.pop_front();
    }
    return bytes;
}

std::optional<std::int64_t> Replay::nextEventMs() const {
    return due_.empty() ? std::nullopt : std::optional(due_.front().afterMs);
}

void Replay::record(TranscriptEntry::Kind kind, const std::string& text, std::int64_t atMs) {
    if (transcript_)
        transcript_({atMs, kind, text});
}

}  // namespace quorvex::sim
