#include <QTest>

#include "identity/dect_version.h"
#include "link/command_link.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

struct Fixture {
    Fixture() {
        port.holdOpen();
        version.type("before");
    }
    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    FakeField version{journal, "TextDectVerBP"};
    DectVersion dectVersion{link, DectVersion::kBeltpackRequest, version};
};

/// Longer than this, and the window no longer feels alive.
constexpr int kSluggishMs = 50;

}  // namespace

/// Asking a unit for its firmware version.
class TestDectVersion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sendsItsRequest();
    void shows_data();
    void shows();
    void skipsOtherLines();
    void waits_data();
    void waits();
    void closedPort();
    void unplugged();
    void windowLivesWhileOtherLinesKeepComing();
};

void TestDectVersion::sendsItsRequest() {
    Fixture at;
    at.port.answer("! 0108", "!DECT Version:4.07;\r\n");
    at.dectVersion.request();
    // No text in the status line, no hourglass.
    QCOMPARE(at.journal.entries(), QStringList({"> ! 0108", "TextDectVerBP = 4.07"}));

    FakeField antennaVersion{at.journal, "TextDectVer"};
    DectVersion antenna(at.link, DectVersion::kAntennaRequest, antennaVersion);
    at.port.answer("! 0107", "!DECT Version:2.1;\r\n");
    antenna.request();
    QCOMPARE(at.journal.entries().mid(2), QStringList({"> ! 0107", "TextDectVer = 2.1"}));
}

void TestDectVersion::shows_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("version");
    QTest::newRow("20 characters: the 15th to the 19th") << QByteArray("#DECT Version:12345;") << "12345";
    QTest::newRow("16 characters") << QByteArray("#DECT Version:1;") << "1";
    QTest::newRow("15 characters") << QByteArray("#DECT Version:;") << "";
    QTest::newRow("14 characters") << QByteArray("#DECT Version:") << "";
    QTest::newRow("words further on") << QByteArray("! 0F01 DECT Version:4.07;") << "rsion:4.07";
    QTest::newRow("words at the end") << QByteArray("# 0123456789DECT Version:") << "CT Version";
    QTest::newRow("other start") << QByteArray("^DECT Version:4.07;") << "4.07";
    QTest::newRow("line feed as the last character") << QByteArray("!DECT Version:4.07\n") << "4.07";
    QTest::newRow("blanks stay") << QByteArray("!DECT Version: 4 7 ;") << " 4 7 ";
}

void TestDectVersion::shows() {
    QFETCH(QByteArray, line);
    QFETCH(QString, version);
    Fixture at;
    at.port.answer("! 0108", bytesOf(line) + "\r\n");
    at.dectVersion.request();
    QCOMPARE(shown(at.version.text()), version);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestDectVersion::skipsOtherLines() {
    Fixture at;
    std::string others;
    for (int i = 0; i < 100; ++i)
        others += "! 021100\r\n^ 020002\r\n#DECT version:1;\r\n#DECT Version 1;\r\n";
    at.port.answer("! 0108", others + "!DECT Version:4.07;\r\n!DECT Version:9.99;\r\n");
    at.dectVersion.request();
    QCOMPARE(shown(at.version.text()), "4.07");
}

void TestDectVersion::waits_data() {
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<int>("laterAt");
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("endsAt");
    const QByteArray other = "! 021100\r";
    QTest::newRow("silence") << QByteArray() << 9000 << "Unavailable" << 2000;
    QTest::newRow("in the last moment") << QByteArray() << 2000 << "4.07" << 2000;
    QTest::newRow("another line alone") << other << 9000 << "Unavailable" << 2000;
    QTest::newRow("after another line, in time") << other << 1999 << "4.07" << 1999;
    QTest::newRow("after another line, too late") << other << 2001 << "Unavailable" << 2000;
    QTest::newRow("cut short") << QByteArray("!DECT Version:4.07;") << 9000 << "Unavailable" << 2000;
}

void TestDectVersion::waits() {
    QFETCH(QByteArray, first);
    QFETCH(int, laterAt);
    QFETCH(QString, version);
    QFETCH(int, endsAt);
    Fixture at;
    at.port.answer("! 0108", bytesOf(first));
    at.port.receiveAt(laterAt, "!DECT Version:4.07;\r\n");
    at.dectVersion.request();
    QCOMPARE(shown(at.version.text()), version);
    QCOMPARE(at.loop.ticks(), endsAt);
}

void TestDectVersion::closedPort() {
    Fixture at;
    at.port.unplug();
    at.dectVersion.request();
    QCOMPARE(shown(at.version.text()), "Unavailable");
    QCOMPARE(at.loop.ticks(), 0);
}

void TestDectVersion::unplugged() {
    Fixture at;
    at.port.answer("! 0108", "! 021100\r\n!DECT Ver");
    at.loop.at(800, [&] { at.port.unplug(); });
    at.dectVersion.request();
    QCOMPARE(shown(at.version.text()), "Unavailable");
    QCOMPARE(at.loop.ticks(), 800);
}

void TestDectVersion::windowLivesWhileOtherLinesKeepComing() {
    // Only silence ends the request, so a unit that talks on keeps it going: the operator must be able to
    // leave. Here the cable is pulled by the window's own turn.
    Fixture at;
    at.port.onLine([&](const std::string&) { at.port.flood("! 021100\r\n", 20); });
    at.loop.at(200, [&] { at.port.unplug(); });
    at.dectVersion.request();
    QVERIFY2(!at.port.floodOutlasted(), "the window never got its turn");
    QVERIFY(at.loop.longestPause() <= kSluggishMs);
    QCOMPARE(shown(at.version.text()), "Unavailable");
}

QUORVEX_TEST(TestDectVersion, quorvex::NoApplication)
#include "test_dect_version.moc"
