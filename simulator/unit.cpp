#include "simulator/unit.h"

#include <algorithm>

#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
// Longer than any command; what exceeds it can only be noise.
constexpr std::size_t kLongestLine = 256;

/// Lines that mean nothing to the program, of the kinds that it must tell from a reply.
std::string unrelatedLine(int count) {
    return (count % 2 == 0 ? "! 0211" : "^ 0230") + hexByte(count & 0xFF);
}

/// Stray characters, none of which can begin a reply.
std::string noise(int count) {
    constexpr std::string_view kStray = "~x?u}";
    std::string text;
    for (int i = 0; i < count; ++i)
        text += kStray[static_cast<std::size_t>(i) % kStray.size()];
    return text;
}

std::string garbled(std::string text) {
    for (std::size_t i = 1; i < text.size(); i += 2)
        text[i] = '?';
    return text;
}

std::string inverted(std::string_view digits) {
    std::string other;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        other += hexByte(0xFF - *parseHex(digits.substr(i, 2)));
    return other;
}

}  // namespace

void Unit::receive(std::string_view bytes, std::int64_t nowMs) {
    runStreams(nowMs);
    for (const char c : bytes) {
        line_ += c;
        if (line_.ends_with(kLineEnd)) {
            lastLine_ = line_.substr(0, line_.size() - kLineEnd.size());
            line_.clear();
            handleLine(lastLine_, nowMs);
        } else if (line_.size() > kLongestLine) {
            note("dropped a line that does not end", nowMs);
            line_.clear();
        }
    }
}

std::string Unit::take(std::int64_t nowMs) {
    runStreams(nowMs);
    std::string bytes;
    for (; !outbox_.empty() && outbox_.front().dueMs <= nowMs; outbox_.pop_front()) {
        const Piece& piece = outbox_.front();
        record(TranscriptEntry::Kind::kSent, piece.shown, piece.dueMs);
        bytes += piece.bytes;
    }
    return bytes;
}

std::optional<std::int64_t> Unit::nextEventMs() const {
    std::optional<std::int64_t> next;
    if (!outbox_.empty())
        next = outbox_.front().dueMs;
    if (gone_)
        return next;
    for (const std::optional<std::int64_t> other : {calibration_.nextMs(), nextStreamMs()}) {
        if (other && (!next || *other < *next))
            next = other;
    }
    return next;
}

std::string Unit::dump() const {
    std::string lines;
    for (const int number : registers_.numbers())
        lines += hexByte(number) + "=" + registers_.value(number) + "\n";
    return lines;
}

void Unit::handleLine(const std::string& line, std::int64_t nowMs) {
    record(TranscriptEntry::Kind::kReceived, line, nowMs);
    if (gone_)
        return;
    const std::optional<Frame> frame = parseFrame(line);
    if (!frame) {
        note("not understood", nowMs);
    } else if (frame->family == '!') {
        if (!frame->isExact() || !handleCommand(*frame, nowMs))
            note("not a command of this unit", nowMs);
    } else if (frame->number < kWriteFlag && frame->length == 1 && frame->isExact()) {
        handleRead(frame->number, nowMs);
    } else if (frame->number >= kWriteFlag) {
        handleWrite(*frame, nowMs);
    } else {
        note("neither a read nor a write", nowMs);
    }
}

void Unit::handleRead(int number, std::int64_t nowMs) {
    if (!registers_.holds(number)) {
        if (const auto text = refusal(number))
            reply(*text, number, nowMs);
        else
            note("no register " + hexByte(number), nowMs);
    } else {
        std::string digits = registers_.value(number);
        if (written_.contains(number) && faults_.strike(FaultKind::kOtherValue, number))
            digits = inverted(digits);
        reply(replyFrame(number, digits), number, nowMs);
    }
    goIfDue(number, nowMs);
}

void Unit::handleWrite(const Frame& frame, std::int64_t nowMs) {
    const int number = frame.number & ~kWriteFlag;
    // A line that carries more digits than it announces is read as far as it announces.
    const std::string digits = frame.data.substr(0, 2 * static_cast<std::size_t>(frame.length - 1));
    if (!registers_.store(number, digits)) {
        note("write refused", nowMs);
        return;
    }
    written_.insert(number);
    written(number);
    goIfDue(number, nowMs);
    if (answersWrites_ && !gone_)
        reply(replyFrame(frame.number, ""), number, nowMs);
}

bool Unit::handleCommand(const Frame& frame, std::int64_t nowMs) {
    if (frame.number == codes_.version && frame.data.empty()) {
        replyVersion(nowMs);
        return true;
    }
    if (frame.number == codes_.calibration && switchCalibration(frame.data, nowMs))
        return true;
    return handleOwnCommand(frame, nowMs);
}

bool Unit::switchCalibration(std::string_view data, std::int64_t nowMs) {
    if (module_ != RfModule::kKirk)
        return false;
    if (data == "E803") {
        inCalibrationMode_ = true;
        calibration_.start(nowMs, faults_);
        return true;
    }
    if (data == "0000") {
        inCalibrationMode_ = false;
        calibration_.stop();
        return true;
    }
    return false;
}

void Unit::replyVersion(std::int64_t nowMs) {
    for (int i = 0; i < linesBeforeVersion_; ++i)
        sendLine(nextUnrelatedLine(), nowMs);
    if (faults_.strike(FaultKind::kNoVersion)) {
        note("fault: no version line", nowMs);
        return;
    }
    // The version stands from the 15th character on, and a closing mark that is no part of it comes last.
    reply("!DECT Version:" + version_ + ";", std::nullopt, nowMs);
}

void Unit::reply(const std::string& text, std::optional<int> number, std::int64_t nowMs) {
    if (faults_.strike(FaultKind::kNoReply, number)) {
        note("fault: no reply", nowMs);
        return;
    }
    std::int64_t dueMs = nowMs;
    if (const auto late = faults_.strike(FaultKind::kLate, number))
        dueMs += late->amount;
    if (faults_.strike(FaultKind::kEcho, number))
        sendLine(lastLine_, dueMs);
    if (const auto chatter = faults_.strike(FaultKind::kChatter, number)) {
        for (int i = 0; i < chatter->amount; ++i)
            sendLine(nextUnrelatedLine(), dueMs);
    }
    if (const auto stray = faults_.strike(FaultKind::kNoise, number))
        send(noise(stray->amount), noise(stray->amount), dueMs);
    const std::string sent = faults_.strike(FaultKind::kGarbled, number) ? garbled(text) : text;
    if (const auto cut = faults_.strike(FaultKind::kCut, number)) {
        const std::string begun = sent.substr(0, static_cast<std::size_t>(cut->amount));
        send(begun, begun, dueMs);
    } else {
        sendLine(sent, dueMs);
    }
}

void Unit::goIfDue(int number, std::int64_t nowMs) {
    if (!faults_.strike(FaultKind::kGoneAfter, number))
        return;
    gone_ = true;
    note("fault: gone after " + hexByte(number), nowMs);
}

void Unit::runStreams(std::int64_t nowMs) {
    if (gone_)
        return;
    // In the order of time, so that a call after a long while gives what many calls would have given.
    while (true) {
        const std::optional<std::int64_t> recordsMs = calibration_.nextMs();
        const std::optional<std::int64_t> streamMs = nextStreamMs();
        const bool recordsDue = recordsMs && *recordsMs <= nowMs;
        const bool streamDue = streamMs && *streamMs <= nowMs;
        if (recordsDue && (!streamDue || *recordsMs <= *streamMs))
            sendRecords(*recordsMs);
        else if (streamDue)
            stream();
        else
            return;
    }
}

void Unit::sendRecords(std::int64_t dueMs) {
    for (const std::string& record : calibration_.nextRecords(midValue(), faults_)) {
        const bool whole = record.ends_with(kLineEnd);
        send(record, whole ? record.substr(0, record.size() - kLineEnd.size()) : record, dueMs);
    }
}

void Unit::sendLine(const std::string& line, std::int64_t dueMs) {
    send(line + std::string(kLineEnd), line, dueMs);
}

void Unit::send(std::string bytes, std::string shown, std::int64_t dueMs) {
    if (!outbox_.empty())
        dueMs = std::max(dueMs, outbox_.back().dueMs);
    outbox_.push_back({dueMs, std::move(bytes), std::move(shown)});
}

std::string Unit::nextUnrelatedLine() {
    return unrelatedLine(unrelatedLines_++);
}

void Unit::note(const std::string& text, std::int64_t nowMs) {
    record(TranscriptEntry::Kind::kNote, text, nowMs);
}

void Unit::record(TranscriptEntry::Kind kind, const std::string& text, std::int64_t atMs) {
    if (transcript_)
        transcript_({atMs, kind, printable(text)});
}

}  // namespace quorvex::sim
