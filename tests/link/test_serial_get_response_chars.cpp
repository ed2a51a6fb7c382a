#include <QTest>
#include <limits>

#include "link/runtime_fault.h"
#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// Reading a reply of known length: what counts as one of its characters, and how long its reader waits.
class TestSerialGetResponseChars : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void collects_data();
    void collects();
    void waits_data();
    void waits();
    void silenceEndsAtTheLimit_data();
    void silenceEndsAtTheLimit();
    void closedPort();
    void unplugged_data();
    void unplugged();
    void tickCountOverflow_data();
    void tickCountOverflow();
};

void TestSerialGetResponseChars::collects_data() {
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QByteArray>("left");
    const auto row = [](const char* name, const QByteArray& arrived, int count, const QString& reply,
                        const QByteArray& left) { QTest::newRow(name) << arrived << count << reply << left; };
    row("line end stays", "# 01BF\r\n", 6, "# 01BF", "\r\n");
    row("noise before the start", "02F\r\nxy# 01BF", 6, "# 01BF", "");
    row("starts with !", "! 0108", 6, "! 0108", "");
    row("starts with ^", "^ 020002", 8, "^ 020002", "");
    row("later start characters count", "#!^#!^#", 6, "#!^#!^", "#");
    row("carriage return inside is dropped", "# 0\r1BF", 6, "# 01BF", "");
    row("line end inside is dropped", "#\r\n 01\r\nBF", 6, "# 01BF", "");
    row("every control character is dropped", QByteArray("#\0\x01\t\x0B\x1B\x1F 01BF", 12), 6, "# 01BF", "");
    row("blank is no control character", "#     ", 6, "#     ", "");
    row("DEL is no control character", "#\x7F\x7F", 3, QString::fromLatin1("#\x7F\x7F"), "");
    row("bytes above 127 count", "#\x80\x9F\xFF", 4, QString::fromLatin1("#\x80\x9F\xFF"), "");
    row("start alone", "x# 01BF", 1, "#", " 01BF");
    row("longer than asked for", "# 0281FF\r\n", 6, "# 0281", "FF\r\n");
    row("across two lines", "# 01\r\n# 02\r\n", 8, "# 01# 02", "\r\n");
    row("longest reply of a Beltpack", "# 06810044303039\r\n", 16, "# 06810044303039", "\r\n");
}

void TestSerialGetResponseChars::collects() {
    QFETCH(QByteArray, arrived);
    QFETCH(int, count);
    QFETCH(QString, reply);
    QFETCH(QByteArray, left);
    LinkFixture at;
    at.port.receive(bytesOf(arrived));
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(2, count)), reply);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestSerialGetResponseChars::waits_data() {
    QTest::addColumn<int>("limit");
    QTest::addColumn<Chunks>("arrives");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<int>("endsAt");
    const QString none = "Error";
    QTest::newRow("late but in time") << 2 << Chunks{{1999, "# 01BF"}} << "# 01BF" << 1999;
    QTest::newRow("in the last moment") << 2 << Chunks{{2000, "# 01BF"}} << "# 01BF" << 2000;
    QTest::newRow("a millisecond too late") << 2 << Chunks{{2001, "# 01BF"}} << none << 2000;
    QTest::newRow("limit anew after each character")
        << 2 << Chunks{{1900, "#"}, {3800, " "}, {5700, "01"}, {7600, "BF"}} << "# 01BF" << 7600;
    QTest::newRow("limit anew after noise") << 2 << Chunks{{1900, "x"}, {3800, "# 01BF"}} << "# 01BF" << 3800;
    QTest::newRow("limit anew after a dropped character")
        << 2 << Chunks{{0, "# 0"}, {1900, "\r"}, {3800, "1BF"}} << "# 01BF" << 3800;
    QTest::newRow("one character short") << 2 << Chunks{{100, "# 01B"}} << none << 2100;
    QTest::newRow("short, with a line end") << 2 << Chunks{{100, "# 01B\r\n"}} << none << 2100;
    QTest::newRow("last character too late") << 2 << Chunks{{0, "# 01B"}, {2001, "F"}} << none << 2000;
    QTest::newRow("1 unit") << 1 << Chunks{{999, "# 01BF"}} << "# 01BF" << 999;
    QTest::newRow("1 unit passed") << 1 << Chunks{{1001, "# 01BF"}} << none << 1000;
    QTest::newRow("limit 0, all there") << 0 << Chunks{{0, "# 01BF"}} << "# 01BF" << 0;
    QTest::newRow("limit 0, one missing") << 0 << Chunks{{0, "# 01B"}, {1, "F"}} << none << 0;
}

void TestSerialGetResponseChars::waits() {
    QFETCH(int, limit);
    QFETCH(Chunks, arrives);
    QFETCH(QString, reply);
    QFETCH(int, endsAt);
    LinkFixture at;
    feed(at.port, arrives);
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(limit, 6)), reply);
    QCOMPARE(at.loop.ticks(), endsAt);
}

void TestSerialGetResponseChars::silenceEndsAtTheLimit_data() {
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("endsAt");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1") << 1 << 1000;
    QTest::newRow("2: every read of a Beltpack") << 2 << 2000;
    QTest::newRow("the largest 16-bit limit") << 32767 << 32767000;
}

void TestSerialGetResponseChars::silenceEndsAtTheLimit() {
    QFETCH(int, limit);
    QFETCH(int, endsAt);
    LinkFixture at;
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(limit, 6)), "Error");
    QCOMPARE(at.loop.ticks(), endsAt);
    QVERIFY2(at.loop.turns() <= 2, qPrintable(QString::number(at.loop.turns())));
}

void TestSerialGetResponseChars::closedPort() {
    LinkFixture at;
    at.port.close();
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(2, 6)), "Error");
    QCOMPARE(at.loop.ticks(), 0);
}

void TestSerialGetResponseChars::unplugged_data() {
    QTest::addColumn<int>("afterReads");
    QTest::newRow("after the start") << 1;
    QTest::newRow("one before the last") << 5;
}

void TestSerialGetResponseChars::unplugged() {
    QFETCH(int, afterReads);
    LinkFixture at;
    at.port.receive("# 01BF\r\n");
    at.port.unplugAfterReads(afterReads);
    QCOMPARE(shown(Operation(at.link).serialGetResponseChars(2, 6)), "Error");
    QCOMPARE(at.port.readCount(), afterReads);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestSerialGetResponseChars::tickCountOverflow_data() {
    QTest::addColumn<int>("beforeTheEnd");
    QTest::addColumn<bool>("overflows");
    QTest::newRow("limit ends with the count") << 2000 << false;
    QTest::newRow("limit ends past the count") << 1999 << true;
}

void TestSerialGetResponseChars::tickCountOverflow() {
    QFETCH(int, beforeTheEnd);
    QFETCH(bool, overflows);
    LinkFixture at(std::numeric_limits<std::int32_t>::max() - beforeTheEnd);
    int fault = 0;
    try {
        QCOMPARE(shown(Operation(at.link).serialGetResponseChars(2, 6)), "Error");
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, overflows ? 6 : 0);
}

QUORVEX_TEST(TestSerialGetResponseChars, quorvex::NoApplication)
#include "test_serial_get_response_chars.moc"
