#include <QTest>
#include <set>

#include "simulator/beltpack.h"
#include "simulator/menu_picture.h"
#include "simulator/screen.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

namespace {

constexpr int kFrameBytes = 516;
constexpr int kIntervalMs = 100;
constexpr int kVolume = 0x10;  // what the Beltpack holds unless told otherwise

QByteArray picture(int count, int volume = kVolume) {
    return QByteArray::fromStdString(drawMenu(count, volume).bytes());
}

}  // namespace

class TestDisplayStream : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bitsAndBytes_data();
    void bitsAndBytes();
    void nothingIsDrawnOutside();
    void textStandsWhereItShould();
    void invertsAndFrames();
    void pictureIsAlive();
    void offUntilStarted();
    void frames();
    void showsTheVolume();
    void repliesStandBetweenFrames();
    void faults_data();
    void faults();
    void transcriptNamesTheFrame();
};

void TestDisplayStream::bitsAndBytes_data() {
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");
    QTest::newRow("top left") << 0 << 0 << 0 << 128;
    QTest::newRow("eighth pixel") << 7 << 0 << 0 << 1;
    QTest::newRow("ninth pixel") << 8 << 0 << 1 << 128;
    QTest::newRow("top right") << 127 << 0 << 15 << 1;
    QTest::newRow("second line") << 3 << 1 << 16 << 16;
    QTest::newRow("bottom right") << 127 << 31 << 511 << 1;
}

void TestDisplayStream::bitsAndBytes() {
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(int, index);
    QFETCH(int, value);
    Screen screen;
    screen.set(x, y);
    QByteArray expected(512, '\0');
    expected[index] = static_cast<char>(value);
    QCOMPARE(QByteArray::fromStdString(screen.bytes()), expected);
    QVERIFY(screen.isDark(x, y));
    screen.set(x, y, false);
    QCOMPARE(QByteArray::fromStdString(screen.bytes()), QByteArray(512, '\0'));
}

void TestDisplayStream::nothingIsDrawnOutside() {
    Screen screen;
    screen.set(-1, 0);
    screen.set(-8, 5);
    screen.set(0, -1);
    screen.set(128, 0);
    screen.set(0, 32);
    QCOMPARE(QByteArray::fromStdString(screen.bytes()), QByteArray(512, '\0'));
    QVERIFY(!screen.isDark(-1, 0) && !screen.isDark(128, 31));
}

void TestDisplayStream::textStandsWhereItShould() {
    Screen screen;
    screen.text(10, 5, "?I");  // no such character: a gap
    for (int y = 0; y < Screen::kHeight; ++y) {
        for (int x = 0; x < Screen::kWidth; ++x) {
            const bool bar = x == 18 && y >= 5 && y <= 11;
            const bool serif = x >= 17 && x <= 19 && (y == 5 || y == 11);
            QCOMPARE(screen.isDark(x, y), bar || serif);
        }
    }
}

void TestDisplayStream::invertsAndFrames() {
    Screen screen;
    screen.frame(2, 2, 5, 4);
    QVERIFY(screen.isDark(2, 2) && screen.isDark(6, 5) && !screen.isDark(3, 3) && !screen.isDark(7, 2));
    screen.invert(2, 2, 5, 4);
    QVERIFY(!screen.isDark(2, 2) && !screen.isDark(6, 5) && screen.isDark(3, 3) && screen.isDark(5, 4));
}

void TestDisplayStream::pictureIsAlive() {
    QVERIFY(picture(0) == picture(7));
    QVERIFY(picture(0) != picture(8));   // the cursor
    QVERIFY(picture(0) != picture(72));  // the battery: the cursor is back at the same line
    std::set<QByteArray> volumes;
    for (int volume = 0; volume <= 31; ++volume)
        volumes.insert(picture(0, volume));
    QCOMPARE(volumes.size(), 32U);
    QVERIFY(picture(0, 31) == picture(0, 255));
}

void TestDisplayStream::offUntilStarted() {
    Beltpack beltpack(RfModule::kKirk);
    QVERIFY(!beltpack.nextEventMs());
    QCOMPARE(takeAll(beltpack, 60'000), "");
}

void TestDisplayStream::frames() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.displayStream().start(50, kIntervalMs);
    QCOMPARE(beltpack.nextEventMs().value_or(-1), 50);
    QCOMPARE(takeAll(beltpack, 49), "");
    QCOMPARE(takeAll(beltpack, 50), "sync" + picture(0));
    QCOMPARE(takeAll(beltpack, 149), "");
    QByteArray following;
    for (int count = 1; count <= 8; ++count)  // far enough for the cursor to move
        following += "sync" + picture(count);
    QCOMPARE(takeAll(beltpack, 850), following);
    beltpack.displayStream().stop();
    QCOMPARE(takeAll(beltpack, 2000), "");
}

void TestDisplayStream::showsTheVolume() {
    Beltpack beltpack(RfModule::kRm5);
    exchange(beltpack, "# 024B1F        ");
    beltpack.displayStream().start(0, kIntervalMs);
    QCOMPARE(takeAll(beltpack, 0), "sync" + picture(0, 31));
}

void TestDisplayStream::repliesStandBetweenFrames() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.displayStream().start(0, kIntervalMs);
    QCOMPARE(exchange(beltpack, "# 0102", 50), "sync" + picture(0) + "# 02821F\r\n");
}

void TestDisplayStream::faults_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("broken marker") << QByteArray("display-broken-marker") << "synsync" + picture(0);
    QTest::newRow("short") << QByteArray("display-short:100") << "sync" + picture(0).left(100);
    QTest::newRow("marker alone") << QByteArray("display-short:0") << QByteArray("sync");
    QTest::newRow("garbage") << QByteArray("display-garbage:3") << "\x80\xA5\xCAsync" + picture(0);
    QTest::newRow("inner marker") << QByteArray("display-inner-marker:508")
                                  << "sync" + picture(0).left(508) + "sync";
}

void TestDisplayStream::faults() {
    QFETCH(QByteArray, fault);
    QFETCH(QByteArray, frame);
    for (const bool once : {false, true}) {
        Beltpack beltpack(RfModule::kKirk);
        beltpack.displayStream().start(0, kIntervalMs);
        beltpack.addFault(parseFault(fault.toStdString() + (once ? ",once" : "")));
        QCOMPARE(takeAll(beltpack, 0), frame);
        QCOMPARE(takeAll(beltpack, kIntervalMs) == "sync" + picture(1), once);
    }
}

void TestDisplayStream::transcriptNamesTheFrame() {
    Beltpack beltpack(RfModule::kKirk);
    std::string shown;
    beltpack.setTranscript([&](const TranscriptEntry& entry) { shown = entry.text; });
    beltpack.displayStream().start(0, kIntervalMs);
    QCOMPARE(takeAll(beltpack, 0).size(), kFrameBytes);
    QCOMPARE(QByteArray::fromStdString(shown), "display frame, 516 bytes");
}

QUORVEX_TEST(TestDisplayStream, quorvex::NoApplication)
#include "test_display_stream.moc"
