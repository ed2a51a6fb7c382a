#include "fuzz/scripted_line.h"

#include <algorithm>
#include <limits>

#include "fuzz/input.h"
#include "link/runtime_fault.h"

namespace quorvex::fuzz {

namespace {

constexpr std::string_view kControls = "~{}";
constexpr int kMsOfPlace = 100;
constexpr int kPlaces = 128;
constexpr int kCharactersPerMs = 2;  // 19200 baud

}  // namespace

ScriptedLine::ScriptedLine(std::string_view script, std::int32_t startTick)
    : script_(script), now_(startTick), silentUntil_(startTick) {
    arrive();
}

void ScriptedLine::close() {
    isOpen_ = false;
    discardReceived();
}

void ScriptedLine::discardInput() {
    demandOpen();
    discardReceived();
}

void ScriptedLine::discardReceived() {
    arrived_.clear();
    taken_ = 0;
}

std::optional<char> ScriptedLine::read() {
    if (waiting() == 0)
        return std::nullopt;
    if (taken_ % kCharactersPerMs == 0)
        passTime(std::int64_t{now_} + 1);
    return arrived_[taken_++];
}

void ScriptedLine::write(char c) {
    demandOpen();
    written_ += c;
    require(written_.size() <= kTransmitBuffer, "a command fits the transmit buffer");
}

void ScriptedLine::flush() {
    demandOpen();
    require(written_.ends_with("\r\n"), "only whole lines are sent");
    written_.clear();
}

void ScriptedLine::run(std::int32_t untilTick) {
    if (isOver())
        passTime(untilTick);
    else if (silentUntil_ > now_)
        passTime(std::min<std::int64_t>(silentUntil_, untilTick));
    if (silentUntil_ > now_ || isOver())
        return;
    if (kControls.find(script_[at_]) != std::string_view::npos)
        obey(script_[at_++]);
    if (silentUntil_ <= now_)
        arrive();
}

bool ScriptedLine::isUndisturbed() const {
    return script_.find_first_of(kControls) == std::string::npos;
}

void ScriptedLine::demandOpen() const {
    if (!isOpen_)
        throw RuntimeFault::portNotOpen();
}

void ScriptedLine::passTime(std::int64_t untilTick) {
    constexpr std::int64_t kLastTick = std::numeric_limits<std::int32_t>::max();
    now_ = static_cast<std::int32_t>(std::clamp<std::int64_t>(untilTick, now_, kLastTick));
}

void ScriptedLine::arrive() {
    const std::size_t end = std::min(script_.find_first_of(kControls, at_), script_.size());
    if (isOpen_)
        arrived_.append(script_, at_, end - at_);
    at_ = end;
}

void ScriptedLine::obey(char control) {
    if (control == '}') {
        close();
        return;
    }
    const char detail = isOver() ? '0' : script_[at_++];
    if (control == '~')
        silentUntil_ = now_ + std::int64_t{static_cast<unsigned char>(detail - '0') % kPlaces} * kMsOfPlace;
    else if (onEvent)
        onEvent(detail);
}

}  // namespace quorvex::fuzz
