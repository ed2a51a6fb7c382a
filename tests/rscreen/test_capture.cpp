#include <QTest>

#include "tests/rscreen/screen_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr FakeLoop::Tick kByteLimitMs = 10'000'000;
const QByteArray kBlankLine(16, '\0');
}  // namespace

/// What a tick of the screen's timer takes from the line, and what it shows then.
class TestCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneTick_data();
    void oneTick();
    void markerInPieces_data();
    void markerInPieces();
    void nothingWaiting();
    void blankBeforeTheFirstFrame();
    void partOfAFrameStays();
    void frameAfterAPart();
    void lastLineStaysBlank();
    void waitsForSlowBytes_data();
    void waitsForSlowBytes();
    void slowestFrame();
    void framesOneAfterTheOther();
    void cableIsPulled();
    void closedPort();
};

void TestCapture::oneTick_data() {
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<bool>("whole");
    QTest::addColumn<QByteArray>("left");
    const QByteArray bits = pictureBytes(1);
    const auto row = [](const char* name, const QByteArray& arrived, bool whole,
                        const QByteArray& left = {}) { QTest::newRow(name) << arrived << whole << left; };
    row("marker and frame", "sync" + bits, true);
    row("noise before the marker", "xxsync" + bits, true);
    row("bytes of a frame before the marker", pictureBytes(9) + "sync" + bits, true);
    row("s before the marker", "ssync" + bits, false);
    row("sy before the marker", "sysync" + bits, false);
    row("syn before the marker", "synsync" + bits, false);
    row("sx before the marker", "sxsync" + bits, true);
    row("synx before the marker", "synxsync" + bits, true);
    row("s twice before the marker", "sssync" + bits, true);
    row("first letter wrong", "xync" + bits, false);
    row("second letter wrong", "sxnc" + bits, false);
    row("third letter wrong", "syxc" + bits, false);
    row("fourth letter wrong", "synx" + bits, false);
    row("capital letters", "SYNC" + bits, false);
    row("marker with a gap", "syn c" + bits, false);
    row("no marker", bits, false);
    row("marker at the very end", bits + "sync", false);
    row("513th byte", "sync" + bits + "x", true, "x");
    row("next frame", "sync" + bits + frame(2), true, frame(2));
    row("part of the next marker", "sync" + bits + "syn", true, "syn");
}

void TestCapture::oneTick() {
    QFETCH(QByteArray, arrived);
    QFETCH(bool, whole);
    QFETCH(QByteArray, left);
    ScreenBench at;
    at.receive(arrived);
    QCOMPARE(at.tick(), whole);
    QCOMPARE(at.shownFrame(), whole ? pictureBytes(1) : QByteArray(kFrameBytes, '\0'));
    QCOMPARE(at.shownLastLine(), kBlankLine);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
    QCOMPARE(at.window.painted.size(), 1);
}

// The search for the marker does not wait: a marker of which a part is still on its way is lost.
void TestCapture::markerInPieces_data() {
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("then");
    QTest::addColumn<bool>("whole");
    const QByteArray bits = pictureBytes(1);
    QTest::newRow("s, ync") << QByteArray("s") << "ync" + bits << false;
    QTest::newRow("sy, nc") << QByteArray("sy") << "nc" + bits << false;
    QTest::newRow("syn, c") << QByteArray("syn") << "c" + bits << false;
    QTest::newRow("marker, its bytes") << QByteArray("sync") << bits << false;
    QTest::newRow("marker, marker again") << QByteArray("sync") << "sync" + bits << true;
    QTest::newRow("half a marker, marker again") << QByteArray("sy") << "sync" + bits << true;
    QTest::newRow("marker and a byte, the others") << "sync" + bits.first(1) << bits.sliced(1) << true;
}

void TestCapture::markerInPieces() {
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, then);
    QFETCH(bool, whole);
    ScreenBench at;
    at.receive(first);
    at.receiveAt(1, then);
    bool received = at.tick();
    if (at.loop.ticks() == 0) {
        QCOMPARE(at.shownFrame(), QByteArray(kFrameBytes, '\0'));
        at.loop.run(1);
        received = at.tick();
    }
    QCOMPARE(received, whole);
    QCOMPARE(at.shownFrame(), whole ? pictureBytes(1) : QByteArray(kFrameBytes, '\0'));
    QCOMPARE(at.port.unread(), std::string());
}

void TestCapture::nothingWaiting() {
    ScreenBench at;
    at.receive(frame(1));
    at.tick();
    const int reads = at.port.readCount();
    const int turns = at.loop.turns();
    for (int i = 0; i < 3; ++i)
        QVERIFY(!at.tick());
    QCOMPARE(at.port.readCount(), reads);
    QCOMPARE(at.loop.ticks(), 0);
    QCOMPARE(at.loop.turns(), turns);
    QCOMPARE(at.window.painted.size(), 4);
    QCOMPARE(at.shownFrame(), pictureBytes(1));
}

void TestCapture::blankBeforeTheFirstFrame() {
    ScreenBench at;
    at.tick();
    QCOMPARE(at.window.painted.size(), 1);
    QCOMPARE(at.window.painted.first(), QByteArray(kFrameBytes + 16, '\0'));
}

void TestCapture::partOfAFrameStays() {
    ScreenBench at;
    at.receive(frame(1));
    at.tick();
    at.receive("sync" + pictureBytes(2).first(300));
    QVERIFY(!at.tick());
    QCOMPARE(at.loop.ticks(), kByteLimitMs);
    QCOMPARE(at.shownFrame(), mixed(pictureBytes(2).first(300), pictureBytes(1)));
    // It is still there when nothing more comes.
    QVERIFY(!at.tick());
    QCOMPARE(at.shownFrame(), mixed(pictureBytes(2).first(300), pictureBytes(1)));
}

void TestCapture::frameAfterAPart() {
    ScreenBench at;
    at.receive("sync" + pictureBytes(1).first(100));
    QVERIFY(!at.tick());
    at.receive(frame(2));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(2));
}

// More bytes than a frame has, again and again: none of them gets into the 33rd line.
void TestCapture::lastLineStaysBlank() {
    ScreenBench at;
    for (int number = 0; number < 20; ++number) {
        at.receive(frameOf(QByteArray(600, '\xFF')));
        QVERIFY(at.tick());
        QCOMPARE(at.shownFrame(), QByteArray(kFrameBytes, '\xFF'));
        QCOMPARE(at.shownLastLine(), kBlankLine);
    }
}

void TestCapture::waitsForSlowBytes_data() {
    QTest::addColumn<int>("pauseMs");
    QTest::addColumn<bool>("whole");
    QTest::newRow("1 ms") << 1 << true;
    QTest::newRow("longer than a tick") << 300 << true;
    QTest::newRow("an hour") << 3'600'000 << true;
    QTest::newRow("just in time") << 9'999'999 << true;
    QTest::newRow("too late") << 10'000'001 << false;
}

void TestCapture::waitsForSlowBytes() {
    QFETCH(int, pauseMs);
    QFETCH(bool, whole);
    ScreenBench at;
    const QByteArray bits = pictureBytes(1);
    at.receive("sync" + bits.first(511));
    at.receiveAt(pauseMs, bits.last(1));
    QCOMPARE(at.tick(), whole);
    QCOMPARE(at.loop.ticks(), whole ? pauseMs : kByteLimitMs);
    QCOMPARE(at.shownFrame(), mixed(bits.first(whole ? 512 : 511), QByteArray(kFrameBytes, '\0')));
}

// The limit counts from each byte anew.
void TestCapture::slowestFrame() {
    constexpr int kSlowBytes = 200;  // as many pauses as the tick count has room for
    ScreenBench at;
    const QByteArray bits = pictureBytes(1);
    at.receive("sync" + bits.first(kFrameBytes - kSlowBytes));
    for (int i = 0; i < kSlowBytes; ++i)
        at.receiveAt((i + 1) * (kByteLimitMs - 1), bits.sliced(kFrameBytes - kSlowBytes + i, 1));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), bits);
    QCOMPARE(FakeLoop::Tick{at.loop.ticks()}, kSlowBytes * (kByteLimitMs - 1));
}

// A frame a tick, however many have gathered.
void TestCapture::framesOneAfterTheOther() {
    ScreenBench at;
    for (int number = 1; number <= 5; ++number)
        at.receive(frame(number));
    for (int number = 1; number <= 5; ++number) {
        QVERIFY(at.tick());
        QCOMPARE(at.shownFrame(), pictureBytes(number));
    }
    QVERIFY(!at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(5));
}

void TestCapture::cableIsPulled() {
    ScreenBench at;
    at.receive("sync" + pictureBytes(1).first(100));
    at.loop.at(400, [&] { at.port.unplug(); });
    QVERIFY(!at.tick());
    QCOMPARE(at.loop.ticks(), 400);
    QCOMPARE(at.shownFrame(), mixed(pictureBytes(1).first(100), QByteArray(kFrameBytes, '\0')));
    // Plugged in again, with the port opened anew.
    at.port.open(1);
    at.receive(frame(2));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(2));
    QCOMPARE(at.journal.take(), QStringList("open COM1"));
}

void TestCapture::closedPort() {
    ScreenBench at;
    at.receive(frame(1));
    at.tick();
    at.port.close();
    at.journal.take();
    QVERIFY(!at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(1));
    QCOMPARE(at.journal.take(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCapture, quorvex::NoApplication)
#include "test_capture.moc"
