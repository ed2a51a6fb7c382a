#include <QTest>

#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// Sending a line: what goes out, in which order, and that no fault of the port comes back.
class TestSerialSendString : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bytesOnTheWire_data();
    void bytesOnTheWire();
    void orderOfCalls();
    void dropsWhatWaits();
    void waitsForNothing();
    void portFaultIsSilent_data();
    void portFaultIsSilent();
    void closedPortIsSilent();
    void halfACommandIsNotSent_data();
    void halfACommandIsNotSent();
    void status_data();
    void status();
};

void TestSerialSendString::bytesOnTheWire_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("read") << QByteArray("# 0139");
    QTest::newRow("lower case stays") << QByteArray("# 013a");
    QTest::newRow("trailing blanks stay") << QByteArray("# 02471F        ");
    QTest::newRow("long") << QByteArray("! 0E030002100ECE00001503FF000000");
    QTest::newRow("empty") << QByteArray();
}

void TestSerialSendString::bytesOnTheWire() {
    QFETCH(QByteArray, command);
    LinkFixture at;
    Operation(at.link).serialSendString(bytesOf(command));
    QCOMPARE(shown(at.port.sentBytes()), shown(bytesOf(command) + "\r\n"));
}

void TestSerialSendString::orderOfCalls() {
    LinkFixture at;
    Operation(at.link).serialSendString("!1");
    // Flushed last, so that the line is on its way before a reader begins to wait.
    const QStringList calls{"discard", "write !", "write 1", "write \\r", "write \\n", "flush"};
    QCOMPARE(at.port.calls(), calls);
}

void TestSerialSendString::dropsWhatWaits() {
    LinkFixture at;
    at.port.receive("#stale\r\n");
    at.port.answer("# 0139", "# 01BF\r\n");
    Operation(at.link).serialSendString("# 0139");
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "# 01BF");
}

void TestSerialSendString::waitsForNothing() {
    LinkFixture at;
    bool buttonPressed = false;
    at.loop.at(0, [&] { buttonPressed = true; });
    Operation(at.link).serialSendString("# 0139");
    QCOMPARE(at.loop.turns(), 0);
    QVERIFY(!buttonPressed);
}

void TestSerialSendString::portFaultIsSilent_data() {
    QTest::addColumn<int>("writesBefore");
    QTest::addColumn<bool>("flushFails");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("first character") << 0 << false << QStringList{"discard"};
    QTest::newRow("within the line") << 2 << false << QStringList{"discard", "write #", "write 1"};
    QTest::newRow("line feed") << 3 << false << QStringList{"discard", "write #", "write 1", "write \\r"};
    QTest::newRow("flush") << -1 << true
                           << QStringList{"discard", "write #", "write 1", "write \\r", "write \\n"};
}

void TestSerialSendString::portFaultIsSilent() {
    QFETCH(int, writesBefore);
    QFETCH(bool, flushFails);
    QFETCH(QStringList, calls);
    LinkFixture at;
    if (writesBefore >= 0)
        at.port.failWritesAfter(writesBefore);
    if (flushFails)
        at.port.failFlush();
    Operation(at.link).serialSendString("#1");
    QCOMPARE(at.port.calls(), calls);
    QCOMPARE(at.journal.entries(), QStringList());
}

void TestSerialSendString::closedPortIsSilent() {
    LinkFixture at;
    at.port.unplug();
    Operation(at.link).serialSendString("# 0139");
    QCOMPARE(at.port.calls(), QStringList());
    QCOMPARE(at.journal.entries(), QStringList());

    LinkFixture pulled;
    pulled.port.unplugAfterWrites(3);
    Operation(pulled.link).serialSendString("# 0139");
    QCOMPARE(pulled.journal.entries(), QStringList());
    QCOMPARE(pulled.port.calls().size(), 4);
}

void TestSerialSendString::halfACommandIsNotSent_data() {
    QTest::addColumn<int>("room");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("none") << 0 << QByteArray();
    QTest::newRow("no room for the line feed") << 7 << QByteArray();
    QTest::newRow("just enough") << 8 << QByteArray("# 0139\r\n");
}

void TestSerialSendString::halfACommandIsNotSent() {
    QFETCH(int, room);
    QFETCH(QByteArray, sent);
    LinkFixture at;
    at.port.leaveRoom(static_cast<std::size_t>(room));
    Operation(at.link).serialSendString("# 0139");
    QCOMPARE(shown(at.port.sentBytes()), shown(bytesOf(sent)));
    QCOMPARE(at.journal.entriesOf("status"), QStringList());
}

void TestSerialSendString::status_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<uint>("colour");
    QTest::addColumn<QString>("entry");
    QTest::newRow("black") << QByteArray("Reading...") << 0U << "status black: Reading...";
    QTest::newRow("red") << QByteArray("Option unavailable!") << 255U << "status red: Option unavailable!";
    QTest::newRow("green") << QByteArray("Done.") << 150U * 256U << "status green: Done.";
    QTest::newRow("empty") << QByteArray() << 0U << "status black: ";
}

void TestSerialSendString::status() {
    QFETCH(QByteArray, text);
    QFETCH(uint, colour);
    QFETCH(QString, entry);
    LinkFixture at;
    at.link.status(bytesOf(text), colour);
    at.link.testFunc();
    QCOMPARE(at.journal.entries(), QStringList{entry});
}

QUORVEX_TEST(TestSerialSendString, quorvex::NoApplication)
#include "test_serial_send_string.moc"
