#include <QTest>
#include <limits>

#include "calibration/readings.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

/// Readings at these ticks; the RSSI tells which one it is.
Readings readingsAt(const QList<int>& ticks) {
    Readings readings;
    int number = 0;
    for (const int tick : ticks)
        readings.add({.tick = tick, .rssi = number++});
    return readings;
}

QList<int> numbersIn(const Readings& readings) {
    QList<int> numbers;
    for (std::size_t i = 0; i < readings.size(); ++i)
        numbers << readings[i].rssi;
    return numbers;
}

}  // namespace

/// What is kept of the readings of a module, and for how long.
class TestReadings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lastMinute_data();
    void lastMinute();
    void steadyStream_data();
    void steadyStream();
    void asItWasAdded();
    void closest_data();
    void closest();
};

void TestReadings::lastMinute_data() {
    QTest::addColumn<QList<int>>("ticks");
    QTest::addColumn<QList<int>>("kept");
    QTest::newRow("none") << QList<int>{} << QList<int>{};
    QTest::newRow("one") << QList<int>{400} << QList<int>{0};
    QTest::newRow("in order") << QList<int>{400, 800, 1200} << QList<int>{0, 1, 2};
    QTest::newRow("60 s old") << QList<int>{400, 800, 60'400} << QList<int>{0, 1, 2};
    QTest::newRow("older by 1 ms") << QList<int>{400, 800, 60'401} << QList<int>{1, 2};
    QTest::newRow("several at once") << QList<int>{400, 800, 1200, 61'000} << QList<int>{2, 3};
    QTest::newRow("all after a silence") << QList<int>{400, 800, 70'000} << QList<int>{2};
    QTest::newRow("two at one tick") << QList<int>{400, 400, 60'400} << QList<int>{0, 1, 2};
    constexpr int kEnd = std::numeric_limits<std::int32_t>::max();
    QTest::newRow("the count begins anew")
        << QList<int>{kEnd - 59'999, kEnd, std::numeric_limits<std::int32_t>::min() + 1} << QList<int>{1, 2};
}

void TestReadings::lastMinute() {
    QFETCH(QList<int>, ticks);
    QFETCH(QList<int>, kept);
    const Readings readings = readingsAt(ticks);
    QCOMPARE(numbersIn(readings), kept);
    QCOMPARE(readings.isEmpty(), ticks.isEmpty());
    if (!ticks.isEmpty())
        QCOMPARE(readings.latest().tick, ticks.last());
}

void TestReadings::steadyStream_data() {
    QTest::addColumn<int>("everyMs");
    QTest::addColumn<int>("kept");
    QTest::newRow("each tick of the dialog") << 400 << 151;
    QTest::newRow("as a unit streams") << 500 << 121;
    QTest::newRow("faster than any") << 1 << static_cast<int>(Readings::kMost);
}

// Far more than there is room for, so that the ring goes round many times.
void TestReadings::steadyStream() {
    QFETCH(int, everyMs);
    QFETCH(int, kept);
    constexpr int kReadings = 1000;
    Readings readings;
    for (int number = 0; number < kReadings; ++number) {
        readings.add({.tick = number * everyMs, .rssi = number});
        QCOMPARE(readings.latest().rssi, number);
        QVERIFY(readings.ageMs(readings[0]) <= 60'000);
    }
    QList<int> last;
    for (int number = kReadings - kept; number < kReadings; ++number)
        last << number;
    QCOMPARE(numbersIn(readings), last);
}

void TestReadings::asItWasAdded() {
    Readings readings;
    readings.add({.tick = 1, .rssi = 82, .dcBalance = -7});
    readings.add({.tick = 2, .rssi = 255});
    QCOMPARE(readings[0].dcBalance, std::optional(-7));
    QVERIFY(!readings[1].dcBalance);
    QCOMPARE(readings[1].rssi, 255);
    QCOMPARE(readings.ageMs(readings[0]), 1);
}

void TestReadings::closest_data() {
    QTest::addColumn<int>("ageMs");
    QTest::addColumn<int>("number");  // of those 3000, 1500 and 0 ms old
    QTest::newRow("the latest") << 0 << 2;
    QTest::newRow("in the future") << -5000 << 2;
    QTest::newRow("just short of half way") << 749 << 2;
    QTest::newRow("beyond half way") << 751 << 1;
    QTest::newRow("the middle one") << 1500 << 1;
    QTest::newRow("nearer to the oldest") << 2251 << 0;
    QTest::newRow("before all") << 60'000 << 0;
}

void TestReadings::closest() {
    QFETCH(int, ageMs);
    QFETCH(int, number);
    QCOMPARE(readingsAt({5000, 6500, 8000}).closestTo(ageMs).rssi, number);
}

QUORVEX_TEST(TestReadings, quorvex::NoApplication)
#include "test_readings.moc"
