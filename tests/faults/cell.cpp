#include "tests/faults/cell.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "link/number_text.h"

namespace quorvex {

namespace {

using Place = FaultyPort::Place;
using Promise = TestedFault::Promise;
using Tick = FakeLoop::Tick;

constexpr Tick kReplyLimitMs = 2'000, kAntennaLimitMs = 12'000;
constexpr Tick kLongestPauseMs = 25;
constexpr Tick kForeverMs = 900'000;
constexpr Tick kSettleMs = 70'000;  ///< longer than any fault lasts
// What a run may take: a constant and, for each reply, the longest that a reader bears.
constexpr Tick kBaseMs = 60'000, kPerReplyMs = 2'500, kPerAntennaReplyMs = 32'500;

QString wordFor(const QString& entry, const std::vector<EndText>& texts) {
    for (const EndText& text : texts) {
        const QStringList ends = QString(text.entry).split('*');
        if (ends.size() == 1 ? entry == ends[0] : entry.startsWith(ends[0]) && entry.endsWith(ends[1]))
            return text.word;
    }
    return "UNKNOWN: " + entry;
}

/// The boxes of one verification that failed come as a pair, and often many times over.
QString folded(QString boxes) {
    static const QString pair = "[differs] [differs, in words]";
    while (boxes.contains(pair + ' ' + pair))
        boxes.replace(pair + ' ' + pair, pair);
    return boxes.replace(pair, "[differs]");
}

QString told(const Journal& journal) {
    const QStringList statuses = journal.entriesOf("status ");
    QStringList words{statuses.isEmpty() ? QString("no text") : wordFor(statuses.last(), statusTexts())};
    for (const QString& box : journal.entriesOf("box "))
        words << "[" + wordFor(box, boxTexts()) + "]";
    return folded(words.join(' '));
}

bool isMissing(const std::string& value) {
    const std::string_view text = trimmedRight(value);
    return text.empty() || text == "N/A" || text == "Unavailable" || text == "nothing" ||
           text.ends_with("not available");
}

QString became(const Workshop::Values& now, const Workshop::Values& before, const Workshop::Values& after) {
    int done = 0, kept = 0, missing = 0, wrong = 0;
    for (std::size_t i = 0; i < now.size(); ++i) {
        const std::string& value = now[i].second;
        const bool changes = before[i].second != after[i].second;
        if (value == after[i].second)
            done += changes ? 1 : 0;
        else if (value == before[i].second)
            ++kept;
        else
            ++(isMissing(value) ? missing : wrong);
    }
    if (wrong > 0)
        return "wrong values";
    if (missing > 0)
        return "gaps";
    return kept == 0 ? "complete" : done == 0 ? "unchanged" : "in part";
}

Outcome outcomeOf(const Workshop& shop, const TestedOperation& operation, const Workshop::Values& before,
                  const Workshop::Values& after) {
    const Workshop::Values now = shop.values();
    if (operation.kind == TestedOperation::Kind::display)
        return {told(shop.journal), QString::fromStdString(now.back().second) + " shown"};
    return {told(shop.journal), became(now, before, after)};
}

/// Lets `ms` pass with nobody at the window.
void pass(Workshop& shop, Tick ms) {
    const Tick end = shop.loop.now() + ms;
    while (shop.loop.now() < end) {
        shop.port.waiting();
        shop.loop.runUntil(end);
    }
}

void begin(Workshop& shop, const TestedOperation& operation, FaultyPort::Plan plan) {
    shop.prepare();
    operation.fill(shop);
    shop.port.plan(std::move(plan));
}

struct Watch {
    bool ended = false, stuck = false;
};

/// How a run came to an end.
struct End {
    QString thrown;        ///< the fault that came out; empty for none
    bool isStuck = false;  ///< no end until the cable was pulled
};

End run(Workshop& shop, const TestedOperation& operation) {
    const auto watch = std::make_shared<Watch>();
    shop.loop.at(shop.loop.now() + kForeverMs, [&shop, watch] {
        watch->stuck = !watch->ended;
        if (watch->stuck)
            shop.port.pull();
    });
    try {
        operation.run(shop);
    } catch (const std::exception& fault) {
        watch->ended = true;
        return {fault.what(), watch->stuck};
    }
    watch->ended = true;
    return {{}, watch->stuck};
}

/// Whether the program has sent the unit out of calibration mode since it sent it in.
bool hasLeft(const FaultyPort& port) {
    const auto last = std::find_if(port.lines().rbegin(), port.lines().rend(), [](const std::string& line) {
        return line.starts_with("! 0308") || line.starts_with("! 0309");
    });
    return last == port.lines().rend() || last->ends_with("0000");
}

/// What must hold at the end of every run, with or without a fault.
QStringList leftBehind(const Workshop& shop) {
    QStringList complaints;
    if (shop.console.isHourglassUp())
        complaints << "the hourglass is up";
    if (shop.link.isBusy())
        complaints << "an operation is under way";
    if (shop.dialogsOpen() != 0)
        complaints << "a dialog is open";
    if (!shop.port.wasLost() && !hasLeft(shop.port))
        complaints << "the unit was left in calibration mode";
    if (shop.loop.longestPause() > kLongestPauseMs)
        complaints << QString("the window waited for %1 ms").arg(shop.loop.longestPause());
    return complaints;
}

/// The values that are neither the one before nor the one after a clean run.
QString wrongValues(const Workshop& shop, const CleanRun& clean) {
    QStringList all;
    const Workshop::Values now = shop.values();
    for (std::size_t i = 0; i < now.size(); ++i) {
        const auto& [name, value] = now[i];
        if (value != clean.before()[i].second && value != clean.after()[i].second && !isMissing(value))
            all << QString::fromStdString(name + " = " + value);
    }
    return all.join(", ");
}

/// Whether all that the unit should hold by now is there.
bool isUnitComplete(const Workshop& shop, const CleanRun& clean) {
    const Workshop::Values now = shop.values();
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (now[i].first.starts_with("the unit's") && now[i] != clean.after()[i])
            return false;
    }
    return true;
}

QStringList againstPromise(const Cell& cell, const Outcome& outcome, const QString& wrong) {
    const bool success = outcome.told == cell.clean.outcome().told;
    const bool streams = cell.clean.count(Place::stream) > 0;
    const Promise promise = cell.fault.promise;
    const bool isProbe = cell.place == Place::reply && cell.first == cell.clean.operation().probe;
    if ((promise == Promise::harmless || (promise == Promise::harmlessAlone && !streams)) &&
        outcome != cell.clean.outcome())
        return {"not harmless: " + outcome.text()};
    if (promise == Promise::noMixture && success && !isProbe && outcome.became.contains("wrong"))
        return {"a mixture is told as a success: " + outcome.text() + ": " + wrong};
    return {};
}

/// What is wrong with the same operation afterwards, on the port opened again if need be.
QStringList afterwards(Workshop& shop, const CleanRun& clean) {
    pass(shop, kSettleMs);
    if (!shop.port.isOpen())
        shop.portChoice.open(1);
    if (clean.operation().kind == TestedOperation::Kind::display) {
        begin(shop, clean.operation(), {});
        clean.operation().run(shop);  // what nobody took meanwhile is taken
    }
    begin(shop, clean.operation(), {});
    const End end = run(shop, clean.operation());
    if (end.isStuck || !end.thrown.isEmpty())
        return {"afterwards no end, or thrown: " + end.thrown};
    QStringList complaints = leftBehind(shop);
    const Outcome outcome = outcomeOf(shop, clean.operation(), clean.before(), clean.after());
    if (outcome != clean.outcome())
        complaints << "afterwards " + outcome.text();
    if (shop.port.lines() != clean.lines())
        complaints << "afterwards other lines";
    return complaints;
}

}  // namespace

CleanRun::CleanRun(const TestedOperation& operation) : operation_(&operation) {
    Workshop shop(operation.unit);
    begin(shop, operation, {});
    before_ = shop.values();
    operation.run(shop);
    lines_ = shop.port.lines();
    repliedAt_ = shop.port.repliedAt();
    streamedAt_ = shop.port.streamedAt();
    after_ = shop.values();
    outcome_ = outcomeOf(shop, operation, before_, after_);
    // As long as it waits for a reply that never comes.
    for (int i = 0; i < count(Place::reply); ++i) {
        Workshop silent(operation.unit);
        begin(silent, operation, {Place::reply, i, true, [](FaultyPort&, const FaultyPort::Struck&) {}, {}});
        operation.run(silent);
        const Tick waitedMs = silent.port.waitAfterStrike();
        limits_.push_back(waitedMs == kAntennaLimitMs || waitedMs == kReplyLimitMs ? waitedMs : 0);
    }
}

int CleanRun::count(Place place) const {
    switch (place) {
        case Place::none:
            return 1;
        case Place::line:
            return static_cast<int>(lines_.size());
        case Place::reply:
            return static_cast<int>(repliedAt_.size());
        case Place::stream:
            break;
    }
    return static_cast<int>(streamedAt_.size());
}

Tick CleanRun::limitMs(Place place, int index) const {
    if (place != Place::reply || index >= count(place) || !isAwaited(index))
        return kReplyLimitMs;
    return limits_[static_cast<std::size_t>(index)];
}

Tick CleanRun::atMs(Place place, int index) const {
    return (place == Place::reply ? repliedAt_ : streamedAt_)[static_cast<std::size_t>(index)];
}

Tick CleanRun::longestMs() const {
    const bool antenna =
        operation_->unit == UnitKind::antennaRm5 || operation_->unit == UnitKind::antennaKirk;
    return kBaseMs + (count(Place::reply) + 1) * (antenna ? kPerAntennaReplyMs : kPerReplyMs);
}

CellResult runCell(const Cell& cell) {
    const TestedOperation& operation = cell.clean.operation();
    const auto limitMs = [&cell](int index) { return cell.clean.limitMs(cell.place, index); };
    Workshop shop(operation.unit, cell.startTick);
    if (cell.fault.closedAtStart)
        shop.port.close();
    begin(shop, operation, {cell.place, cell.first, cell.once, cell.fault.strike, limitMs});
    CellResult result;
    const End end = run(shop, operation);
    result.thrown = end.thrown;
    if (end.isStuck) {
        result.complaints << "no end";
        return result;
    }
    result.tookMs = shop.loop.now() - cell.startTick;
    result.outcome = outcomeOf(shop, operation, cell.clean.before(), cell.clean.after());
    result.end = shop.journal.entriesOf("status ").mid(shop.journal.entriesOf("status ").size() - 1) +
                 shop.journal.entriesOf("box ");
    if (shop.port.isOpen() && shop.unit().inCalibrationMode())
        result.outcome.became += ", unit left in calibration mode";
    if (cell.place != Place::none && !shop.port.hasStruck())
        result.complaints << "the fault did not strike";
    if (result.outcome.told == "calibrated" && cell.fault.promise == Promise::noMixture &&
        !isUnitComplete(shop, cell.clean))
        result.complaints << "told as calibrated, but not all is in the unit";
    result.complaints +=
        leftBehind(shop) + againstPromise(cell, result.outcome, wrongValues(shop, cell.clean));
    if (result.tookMs > cell.clean.longestMs())
        result.complaints << QString("took %1 s").arg(result.tookMs / 1000);
    result.complaints += afterwards(shop, cell.clean);
    return result;
}

}  // namespace quorvex
