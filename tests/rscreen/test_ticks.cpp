#include <QTest>
#include <optional>

#include "link/operation.h"
#include "tests/rscreen/screen_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// Longer than this, and the window no longer feels alive.
constexpr int kSluggishMs = 50;
const QByteArray kNothingShown(kFrameBytes, '\0');

}  // namespace

/// Ticks that fall into something else: a capture that waits, another operation on the port.
class TestTicks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tickWhileOneWaits_data();
    void tickWhileOneWaits();
    void tickWhileOneWaitsLeavesAMarkerAlone();
    void tickAfterOneThatWaited();
    void firstTickInEachFrame();
    void portInUse();
    void framesAfterAnOperation();
    void twoFramesAfterATornOne();
    void twoFramesAfterNothing();
    void operationInsideAFrame_data();
    void operationInsideAFrame();
    void operationWithoutAnswerInsideAFrame();
    void severalCommandsInsideAFrame();
    void deedWithoutCommandInsideAFrame();
    void otherPortInsideAFrame();
    void operationAfterTheFrame();
    void nearTheEndOfTheTickCount();
    void windowLivesAtFullLineSpeed();
};

void TestTicks::tickWhileOneWaits_data() {
    QTest::addColumn<int>("come");  // characters of the frame before the first of the ticks
    QTest::addColumn<bool>("isShown");
    QTest::newRow("first ones") << 100 << true;
    QTest::newRow("slower than the line") << 399 << true;
    // A frame at line speed outlasts one tick, and is not shown before its end.
    QTest::newRow("nearly whole") << 400 << false;
    QTest::newRow("at line speed") << 480 << false;
}

void TestTicks::tickWhileOneWaits() {
    QFETCH(int, come);
    QFETCH(bool, isShown);
    ScreenBench at;
    const QByteArray bits = pictureBytes(1);
    at.receive("sync" + bits.first(come));
    QList<QByteArray> paintedInside;
    const auto inner = [&] {
        const int before = at.port.readCount();
        QVERIFY(!at.tick());
        QCOMPARE(at.port.readCount(), before);
        paintedInside << at.shownFrame();
    };
    for (const int tick : {250, 500, 750})
        at.loop.at(tick, inner);
    at.receiveAt(600, bits.sliced(come, 20));
    at.receiveAt(800, bits.sliced(come + 20));
    QVERIFY(at.tick());
    const QByteArray part = mixed(bits.first(come), kNothingShown);
    QCOMPARE(paintedInside, QList<QByteArray>({isShown ? part : QByteArray(), part,
                                               mixed(bits.first(come + 20), kNothingShown)}));
    QCOMPARE(at.shownFrame(), bits);
    QCOMPARE(at.loop.ticks(), 800);
}

// What looks like a marker there is part of the frame that is being received.
void TestTicks::tickWhileOneWaitsLeavesAMarkerAlone() {
    ScreenBench at;
    QByteArray bits = pictureBytes(1);
    bits.replace(200, 4, "sync");
    at.receive("sync" + bits.first(200));
    at.receiveAt(250, bits.sliced(200, 100));
    at.loop.at(250, [&] { at.tick(); });  // with those characters waiting
    at.receiveAt(300, bits.sliced(300));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), bits);
}

void TestTicks::tickAfterOneThatWaited() {
    ScreenBench at;
    const QByteArray bits = pictureBytes(1);
    at.receive("sync" + bits.first(1));
    at.loop.at(250, [&] { at.tick(); });
    at.loop.at(500, [&] { at.tick(); });
    at.receiveAt(600, bits.sliced(1));
    QVERIFY(at.tick());
    at.receive(frame(2));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(2));
}

// Each frame that is nearly whole is left alone by the first tick in it, not only the first such frame.
void TestTicks::firstTickInEachFrame() {
    ScreenBench at;
    for (const int number : {1, 2, 3}) {
        const QByteArray bits = pictureBytes(number);
        const FakeLoop::Tick begun = at.loop.ticks();
        at.receive("sync" + bits.first(480));
        at.loop.at(begun + 250, [&] { at.tick(); });
        at.receiveAt(begun + 269, bits.sliced(480));
        QVERIFY(at.tick());
        QCOMPARE(at.window.painted.size(), number);
        QCOMPARE(at.shownFrame(), bits);
    }
}

void TestTicks::portInUse() {
    ScreenBench at;
    at.receive(frame(1));
    at.tick();
    std::optional<Operation> operation(at.link);
    const int reads = at.port.readCount();
    at.receive("# 02821F\r\n" + frame(2));
    QVERIFY(!at.tick());
    QCOMPARE(at.port.readCount(), reads);
    QCOMPARE(at.window.painted.size(), 2);
    QCOMPARE(at.shownFrame(), pictureBytes(1));
    operation.reset();
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(2));
}

void TestTicks::framesAfterAnOperation() {
    ScreenBench at;
    std::optional<Operation> operation(at.link);
    at.receive(frame(1) + frame(2) + frame(3) + frame(4).first(300));
    at.tick();
    operation.reset();
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(3));  // the last whole one at once
    at.receive(frame(4).sliced(300) + frame(5));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(4));  // one a tick again
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(5));
}

// Whatever cut it off took its time, so frames may have piled up.
void TestTicks::twoFramesAfterATornOne() {
    ScreenBench at;
    at.receive("sync" + pictureBytes(1).first(100));
    at.loop.at(100, [&] { at.window.front = &at; });
    QVERIFY(!at.tick());
    at.receive(frame(2) + frame(3));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(3));
}

void TestTicks::twoFramesAfterNothing() {
    ScreenBench at;
    QVERIFY(!at.tick());
    at.receive(frame(1) + frame(2));
    for (const int number : {1, 2}) {
        QVERIFY(at.tick());
        QCOMPARE(at.shownFrame(), pictureBytes(number));
    }
}

void TestTicks::operationInsideAFrame_data() {
    QTest::addColumn<int>("received");    // bytes of the frame before the operation
    QTest::addColumn<int>("replyAfter");  // ms
    QTest::addColumn<int>("replyGap");    // ms
    QTest::addColumn<bool>("restFirst");  // whether the rest of the frame comes before the reply
    QTest::newRow("at once") << 100 << 0 << 0 << false;
    QTest::newRow("after a while") << 100 << 80 << 0 << false;
    QTest::newRow("byte by byte") << 100 << 80 << 5 << false;
    QTest::newRow("longer than some ticks") << 100 << 1500 << 0 << false;
    QTest::newRow("behind the rest of the frame") << 100 << 300 << 1 << true;
    QTest::newRow("one byte of the frame") << 1 << 80 << 1 << false;
    QTest::newRow("all but one byte of it") << 511 << 80 << 1 << false;
}

void TestTicks::operationInsideAFrame() {
    QFETCH(int, received);
    QFETCH(int, replyAfter);
    QFETCH(int, replyGap);
    QFETCH(bool, restFirst);
    ScreenBench at;
    at.port.answer("# 0102", {Reply{"# 02821F\r\n", replyAfter, replyGap}});
    const QByteArray bits(kFrameBytes, '.');  // without a character that begins a reply
    at.receive("sync" + bits.first(received));
    QString reply;
    at.loop.at(100, [&] { reply = shown(Operation(at.link).exchange("# 0102", 8)); });
    for (int tick = 250; tick < 2000; tick += 250)
        at.loop.at(tick, [&] { at.tick(); });
    at.receiveAt(restFirst ? 150 : 1700, bits.sliced(received));
    QVERIFY(!at.tick());
    QCOMPARE(reply, "# 02821F");
    QCOMPARE(at.shownFrame(), mixed(bits.first(received), kNothingShown));

    // The rest of it is nobody's; the next frame is whole again.
    at.loop.advance(2000);
    at.loop.run(at.loop.ticks());
    at.receive(frame(3));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(3));
}

void TestTicks::operationWithoutAnswerInsideAFrame() {
    ScreenBench at;
    at.receive("sync" + pictureBytes(1).first(100));
    QString reply;
    at.loop.at(100, [&] {
        Operation(at.link).serialSendString("# 0102");
        reply = shown(Operation(at.link).serialGetResponseChars(2, 8));
    });
    at.receiveAt(5000, frame(2));
    QVERIFY(!at.tick());
    QCOMPARE(reply, "Error");
    // The frame is given up at the latest when something comes, and nothing of that is taken.
    QVERIFY(at.loop.ticks() <= 5000);
    at.loop.advance(5000);
    at.loop.run(at.loop.ticks());
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), pictureBytes(2));
}

void TestTicks::severalCommandsInsideAFrame() {
    ScreenBench at;
    at.port.answer("# 0101", {Reply{"# 068100443186A0\r\n", 20, 1}});
    at.port.answer("# 0102", {Reply{"# 02821F\r\n", 20, 1}});
    at.port.answer("! 0108", {Reply{"!DECT Version:4.07;\r\n", 20, 1}});
    at.receive("sync" + pictureBytes(1).first(100));
    QStringList replies;
    at.loop.at(100, [&] {
        Operation(at.link).serialSendString("# 0101");
        replies << shown(Operation(at.link).serialGetResponseChars(2, 16));
        Operation(at.link).serialSendString("# 0102");
        replies << shown(Operation(at.link).serialGetResponseChars(2, 8));
        Operation(at.link).serialSendString("! 0108");
        replies << shown(Operation(at.link).serialGetResponse(1, '\r'));
    });
    QVERIFY(!at.tick());
    QCOMPARE(replies, QStringList({"# 068100443186A0", "# 02821F", "!DECT Version:4.07;"}));
}

// A box that opens meanwhile sends nothing; the frame is received to its end behind it.
void TestTicks::deedWithoutCommandInsideAFrame() {
    ScreenBench at;
    const QByteArray bits = pictureBytes(1);
    at.receive("sync" + bits.first(100));
    at.loop.at(100, [&] { at.console.messageBox("About", Icon::information, {}); });
    at.receiveAt(300, bits.sliced(100));
    QVERIFY(at.tick());
    QCOMPARE(at.shownFrame(), bits);
}

void TestTicks::otherPortInsideAFrame() {
    ScreenBench at;
    at.receive("sync" + pictureBytes(1).first(100));
    at.loop.at(100, [&] {
        at.port.close();
        at.port.open(2);
        at.receive(pictureBytes(2));
    });
    QVERIFY(!at.tick());
    QCOMPARE(at.shownFrame(), mixed(pictureBytes(1).first(100), kNothingShown));
    QCOMPARE(at.port.unread().size(), std::size_t{kFrameBytes});
}

void TestTicks::operationAfterTheFrame() {
    ScreenBench at;
    at.port.answer("# 0102", "# 02821F\r\n");
    at.receive(frame(1));
    QVERIFY(at.tick());
    Operation(at.link).serialSendString("# 0102");
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(2, 8)), "# 02821F");
    at.receive(frame(2));
    QVERIFY(at.tick());  // past the line end of the reply
    QCOMPARE(at.shownFrame(), pictureBytes(2));
}

// Where the tick count ends within the limit, a tick stores the byte that is there and the program goes on.
void TestTicks::nearTheEndOfTheTickCount() {
    ScreenBench at(std::numeric_limits<std::int32_t>::max() - 9'999'999);
    for (int attempt = 0; attempt < 2; ++attempt) {
        at.receive("sync" + pictureBytes(1).first(10));
        QVERIFY(!at.tick());
        QCOMPARE(at.shownFrame(), mixed(pictureBytes(1).first(1), kNothingShown));
    }
}

void TestTicks::windowLivesAtFullLineSpeed() {
    ScreenBench at;
    at.port.flood("syncx", 2);  // about 19200 baud, never a pause
    QVERIFY(at.tick());
    QVERIFY(at.loop.ticks() >= kFrameBytes / 2);
    QVERIFY2(at.loop.turns() >= at.loop.ticks() / kSluggishMs, "the window never got its turn");
    QVERIFY2(at.loop.longestPause() <= kSluggishMs, qPrintable(QString::number(at.loop.longestPause())));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTicks, quorvex::NoApplication)
#include "test_ticks.moc"
