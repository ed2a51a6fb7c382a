#include <QTest>
#include <limits>
#include <map>

#include "tests/faults/cell.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

using Place = FaultyPort::Place;
using Struck = FaultyPort::Struck;
using Tick = FakeLoop::Tick;

constexpr Tick kLast = std::numeric_limits<std::int32_t>::max();
constexpr Tick kAhead = 12'000;  ///< the longest limit; what waits before that has room for it
constexpr Tick kLittle = 500;
constexpr const char* kOverflow = "Overflow";

const CleanRun& cleanRun(const TestedOperation& operation) {
    static std::map<const TestedOperation*, CleanRun> runs;
    return runs.try_emplace(&operation, operation).first->second;
}

/// One strike at a reply or record; the rest is sound.
Cell cellOf(const CleanRun& clean, const TestedFault& fault, int index, Tick startTick) {
    return {clean, fault, fault.place, index, true, startTick};
}

/// Where kAhead is left of the count when the reply or record comes.
Tick startFor(const CleanRun& clean, const TestedFault& fault, int index) {
    return kLast - kAhead - clean.atMs(fault.place, index);
}

/// The unit answers as it should, but the clock has gone on by then.
TestedFault lateBy(Place place, Tick ms) {
    TestedFault fault;
    fault.place = place;
    fault.strike = [ms](FaultyPort& port, const Struck& struck) {
        port.standStill(ms);
        port.say(struck.body + struck.end);
    };
    return fault;
}

/// It says nothing, and the clock has gone on.
TestedFault silentBehind(Tick ms) {
    TestedFault fault;
    fault.place = Place::reply;
    fault.strike = [ms](FaultyPort& port, const Struck&) { port.standStill(ms); };
    return fault;
}

/// It says nothing, and the clock goes on while it is waited for.
TestedFault silentDuring(Place place, Tick ms) {
    TestedFault fault;
    fault.place = place;
    fault.strike = [ms](FaultyPort& port, const Struck&) { port.standStillSoon(ms); };
    return fault;
}

/// Whether it ended in the way of a fault in one of its waits.
bool isFaulted(const CellResult& result, const TestedOperation& operation, bool isFirst = false) {
    if (!result.thrown.isEmpty())
        return result.thrown == kOverflow &&
               (operation.atFault.empty() || (isFirst && operation.endsAtFirst));
    QStringList told;
    for (const std::string& entry : operation.atFault)
        told << QString::fromStdString(entry);
    return !told.isEmpty() && result.end == told;
}

bool isAlike(const CellResult& one, const CellResult& other) {
    return one.thrown == other.thrown && one.outcome == other.outcome && one.end == other.end;
}

/// A frame has hours to come, so none is waited for near the end of the count; nobody is told.
bool isPicture(const CellResult& result, const CleanRun& clean) {
    return clean.operation().kind == TestedOperation::Kind::display && result.thrown.isEmpty() &&
           result.end.isEmpty();
}

QString described(const CellResult& result, const char* place, Tick number) {
    return QString("%1 %2: %3, %4 %5")
        .arg(place)
        .arg(number)
        .arg(result.outcome.text(), result.thrown, result.complaints.join("; "));
}

}  // namespace

/// Every operation where the 32-bit tick count ends. A wait whose limit lies beyond the end is a fault; that
/// the count goes on at its lowest is none. Whatever happens, nothing is left behind, and the same operation
/// goes well afterwards.
class TestTickCountEnd : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beforeALimit_data() { rows(); }
    void beforeALimit();
    void asAWaitRunsOut_data() { rows(); }
    void asAWaitRunsOut();
    void passedInAWait_data() { rows(); }
    void passedInAWait();
    void passedBetweenTheWaits_data() { rows(); }
    void passedBetweenTheWaits();
    void atAnyTime_data() { rows(); }
    void atAnyTime();

private:
    static void rows();
    /// That the end of the count makes no difference.
    static void demandAlike(const CleanRun& clean, const TestedFault& fault);
};

void TestTickCountEnd::rows() {
    QTest::addColumn<std::size_t>("operation");
    for (std::size_t i = 0; i < testedOperations().size(); ++i)
        QTest::newRow(testedOperations()[i].name.c_str()) << i;
}

void TestTickCountEnd::beforeALimit() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    const CleanRun& clean = cleanRun(tested);
    const TestedFault late = lateBy(Place::reply, kAhead - kLittle);
    int faulted = 0;
    for (int i = 0; i < clean.count(Place::reply); ++i) {
        const CellResult result = runCell(cellOf(clean, late, i, startFor(clean, late, i)));
        const QString what = described(result, "reply", i + 1);
        QVERIFY2(result.complaints.isEmpty(), qPrintable(what));
        const bool isFault = isFaulted(result, tested, i == 0);
        QVERIFY2(isFault || (!clean.isAwaited(i) && result.thrown.isEmpty()), qPrintable(what));
        faulted += isFault ? 1 : 0;
    }
    QVERIFY(faulted > 0 || clean.count(Place::reply) == 0);
}

void TestTickCountEnd::asAWaitRunsOut() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    const CleanRun& clean = cleanRun(tested);
    for (int i = 0; i < clean.count(Place::reply); ++i) {
        const TestedFault silent = silentBehind(kAhead - clean.limitMs(Place::reply, i));
        const CellResult result = runCell(cellOf(clean, silent, i, startFor(clean, silent, i)));
        const QString what = described(result, "reply", i + 1);
        QVERIFY2(result.complaints.isEmpty(), qPrintable(what));
        // Told as silence, if nothing is waited for after it.
        QVERIFY2(isFaulted(result, tested) || isAlike(result, runCell(cellOf(clean, silent, i, 0))),
                 qPrintable(what));
    }
}

void TestTickCountEnd::demandAlike(const CleanRun& clean, const TestedFault& fault) {
    for (int i = 0; i < clean.count(fault.place); ++i) {
        const CellResult result = runCell(cellOf(clean, fault, i, startFor(clean, fault, i)));
        const QString what = described(result, "place", i + 1);
        QVERIFY2(result.complaints.isEmpty(), qPrintable(what));
        QVERIFY2(isPicture(result, clean) || isAlike(result, runCell(cellOf(clean, fault, i, 0))),
                 qPrintable(what));
    }
}

// Something that the window did in the wait took long, or the machine stood still.
void TestTickCountEnd::passedInAWait() {
    QFETCH(std::size_t, operation);
    const CleanRun& clean = cleanRun(testedOperations()[operation]);
    for (const Place place : {Place::reply, Place::stream})
        demandAlike(clean, silentDuring(place, kAhead + kLittle));
}

void TestTickCountEnd::passedBetweenTheWaits() {
    QFETCH(std::size_t, operation);
    const CleanRun& clean = cleanRun(testedOperations()[operation]);
    for (const Place place : {Place::reply, Place::stream})
        demandAlike(clean, lateBy(place, kAhead + kLittle));
}

void TestTickCountEnd::atAnyTime() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    const CleanRun& clean = cleanRun(tested);
    TestedFault none;
    none.place = Place::none;
    constexpr Tick kLongestMs = 20'000, kStepMs = 50, kFirstLimitMs = 2'000;
    int faulted = 0;
    for (Tick left = 0; left <= kLongestMs; left += kStepMs) {
        const CellResult result = runCell(cellOf(clean, none, 0, kLast - left));
        const QString what = described(result, "ms left", left);
        QVERIFY2(result.complaints.isEmpty(), qPrintable(what));
        const bool isFault = isFaulted(result, tested, left < kFirstLimitMs);
        QVERIFY2(isFault || isPicture(result, clean) || result.outcome == clean.outcome(), qPrintable(what));
        faulted += isFault ? 1 : 0;
    }
    QVERIFY(faulted > 0 || tested.kind == TestedOperation::Kind::display);
}

QUORVEX_TEST(TestTickCountEnd, quorvex::NoApplication)
#include "test_tick_count_end.moc"
