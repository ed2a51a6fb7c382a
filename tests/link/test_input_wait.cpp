#include <QTest>
#include <limits>

#include "link/input_wait.h"
#include "link/runtime_fault.h"
#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {
/// Longer than this, and the window no longer feels alive.
constexpr int kSluggishMs = 50;
}  // namespace

/// The waiting under every reader: when it ends, and that the window lives meanwhile.
class TestInputWait : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endsWithTheFirstCharacter();
    void endsAtTheLimit_data();
    void endsAtTheLimit();
    void turnsWithoutACharacterGoOn();
    void endsWhenThePortCloses();
    void goesOnOnAPortOpenedAgain();
    void endsWhenNothingIsWanted();
    void overflow_data();
    void overflow();
    void neverSilentLine_data();
    void neverSilentLine();
    void exitWorksWhileLinesKeepComing();
};

void TestInputWait::endsWithTheFirstCharacter() {
    LinkFixture at;
    at.port.receiveAt(1234, "#");
    at.port.receiveAt(1234, "!");
    InputWait wait(at.port, at.loop, 2000, always);
    QCOMPARE(wait.next(), std::optional('#'));
    QCOMPARE(at.loop.ticks(), 1234);
    QCOMPARE(wait.next(), std::optional('!'));
    QCOMPARE(at.loop.ticks(), 1234);
    QCOMPARE(at.port.readCount(), 2);
}

void TestInputWait::endsAtTheLimit_data() {
    QTest::addColumn<int>("startTick");
    QTest::addColumn<int>("limitMs");
    QTest::addColumn<int>("endsAt");
    QTest::newRow("nothing") << 0 << 0 << 0;
    QTest::newRow("a second") << 500 << 1000 << 1500;
    QTest::newRow("count below 0") << -5000 << 2000 << -3000;
    QTest::newRow("through 0") << -500 << 2000 << 1500;
    QTest::newRow("lowest count") << std::numeric_limits<int>::min() << 2000
                                  << std::numeric_limits<int>::min() + 2000;
}

void TestInputWait::endsAtTheLimit() {
    QFETCH(int, startTick);
    QFETCH(int, limitMs);
    QFETCH(int, endsAt);
    LinkFixture at(startTick);
    InputWait wait(at.port, at.loop, limitMs, always);
    QVERIFY(!wait.next());
    QCOMPARE(at.loop.ticks(), endsAt);
    // The limit counts from each call, not from the first.
    QVERIFY(!wait.next());
    QCOMPARE(at.loop.ticks(), endsAt + limitMs);
}

void TestInputWait::turnsWithoutACharacterGoOn() {
    LinkFixture at;
    int events = 0;
    for (int tick = 100; tick <= 1900; tick += 100)
        at.loop.at(tick, [&] { ++events; });
    QVERIFY(!InputWait(at.port, at.loop, 2000, always).next());
    QCOMPARE(at.loop.ticks(), 2000);
    QCOMPARE(events, 19);
}

void TestInputWait::endsWhenThePortCloses() {
    LinkFixture at;
    at.loop.at(700, [&] { at.port.unplug(); });
    InputWait wait(at.port, at.loop, 2000, always);
    QVERIFY(!wait.next());
    QCOMPARE(at.loop.ticks(), 700);
    QVERIFY(!wait.next());
    QCOMPARE(at.loop.ticks(), 700);
}

void TestInputWait::goesOnOnAPortOpenedAgain() {
    LinkFixture at;
    at.loop.at(700, [&] {
        at.port.close();
        at.port.open(2);
    });
    at.port.receiveAt(1500, "#");
    QCOMPARE(InputWait(at.port, at.loop, 2000, always).next(), std::optional('#'));
    QCOMPARE(at.loop.ticks(), 1500);
}

// Whatever has arrived by then stays where it is.
void TestInputWait::endsWhenNothingIsWanted() {
    LinkFixture at;
    bool isWanted = true;
    at.loop.at(700, [&] {
        isWanted = false;
        at.port.receive("#");
    });
    InputWait wait(at.port, at.loop, 2000, [&] { return isWanted; });
    for (int call = 0; call < 2; ++call) {
        QVERIFY(!wait.next());
        QCOMPARE(at.loop.ticks(), 700);
    }
    QCOMPARE(shown(at.port.unread()), "#");
}

void TestInputWait::overflow_data() {
    QTest::addColumn<int>("beforeTheEnd");
    QTest::addColumn<bool>("overflows");
    QTest::newRow("fits") << 2000 << false;
    QTest::newRow("one short") << 1999 << true;
    QTest::newRow("none left") << 0 << true;
}

void TestInputWait::overflow() {
    QFETCH(int, beforeTheEnd);
    QFETCH(bool, overflows);
    LinkFixture at(std::numeric_limits<std::int32_t>::max() - beforeTheEnd);
    InputWait wait(at.port, at.loop, 2000, always);
    int fault = 0;
    try {
        static_cast<void>(wait.next());
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, overflows ? 6 : 0);
}

void TestInputWait::neverSilentLine_data() {
    QTest::addColumn<int>("readsPerMs");
    QTest::newRow("as fast as the line") << 2;
    QTest::newRow("faster than the line") << 40;
}

void TestInputWait::neverSilentLine() {
    QFETCH(int, readsPerMs);
    LinkFixture at;
    at.port.flood("x", readsPerMs);
    at.loop.at(1500, [&] { at.port.endFlood(); });
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "Error");
    QVERIFY2(!at.port.floodOutlasted(), "the window never got its turn");
    QVERIFY(at.loop.longestPause() <= kSluggishMs);
    // The limit counts from the last character, which came when the window was let in.
    QVERIFY(at.loop.ticks() >= 3500 && at.loop.ticks() <= 3500 + kSluggishMs);
}

void TestInputWait::exitWorksWhileLinesKeepComing() {
    // Whole lines, none of which ends the operation: each has a reader of its own, and the window must get
    // its turn among the readers too.
    LinkFixture at;
    at.port.flood("! 021100\r\n", 20);
    bool exitChosen = false;
    at.loop.at(200, [&] { exitChosen = true; });
    while (!exitChosen && !at.port.floodOutlasted())
        Operation(at.link).serialGetResponse(1, '\r');
    QVERIFY2(!at.port.floodOutlasted(), "the window never got its turn");
    QVERIFY(at.loop.longestPause() <= kSluggishMs);
}

QUORVEX_TEST(TestInputWait, quorvex::NoApplication)
#include "test_input_wait.moc"
