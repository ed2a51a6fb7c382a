#include <QTest>
#include <limits>

#include "link/runtime_fault.h"
#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// Reading one line: what counts as the line, and how long its reader waits for it.
class TestSerialGetResponse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void collects_data();
    void collects();
    void waits_data();
    void waits();
    void silenceEndsAtTheLimit_data();
    void silenceEndsAtTheLimit();
    void whatIsThereIsTakenAtOnce();
    void closedPort();
    void unplugged_data();
    void unplugged();
    void leftoverIsReadByTheNextReader();
    void lineWithoutEndIsCut();
    void tickCountOverflow_data();
    void tickCountOverflow();
};

void TestSerialGetResponse::collects_data() {
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<char>("terminator");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QByteArray>("left");
    const auto row = [](const char* name, const QByteArray& arrived, char terminator, const QString& reply,
                        const QByteArray& left) {
        QTest::newRow(name) << arrived << terminator << reply << left;
    };
    row("noise before the start", "xx#12\r", '\r', "#12", "");
    row("starts with #", "# 0281\r", '\r', "# 0281", "");
    row("starts with !", "! 0108\r", '\r', "! 0108", "");
    row("starts with ^", "^ 020002\r", '\r', "^ 020002", "");
    row("no other start", "$1\r*2\r#3\r", '\r', "#3", "");
    row("line ends before the start", "\r\n\r\n#12\r", '\r', "#12", "");
    row("later start characters are data", "#1!2^3#4\r", '\r', "#1!2^3#4", "");
    row("rest of the line end stays", "#12\r\n", '\r', "#12", "\n");
    row("next line stays", "#12\r\n#34\r\n", '\r', "#12", "\n#34\r\n");
    row("start alone", "#\r", '\r', "#", "");
    row("other terminator", "#12\r\n", '\n', "#12\r", "");
    row("control characters are data", QByteArray("#\0\t\n\x1F\x7F\r", 7), '\r',
        QString::fromLatin1("#\0\t\n\x1F\x7F", 6), "");
    row("bytes above 127 are data", "#\x80\xFF\r", '\r', QString::fromLatin1("#\x80\xFF"), "");
    row("zero byte before the start", QByteArray("\0#1\r", 4), '\r', "#1", "");
    row("terminator that is a start character", "ab#12", '#', "", "12");
    row("terminator before the start", "12#34#1\r2", '1', "#34#", "\r2");
    row("a reply that says Error", "#Error\r", '\r', "#Error", "");
}

void TestSerialGetResponse::collects() {
    QFETCH(QByteArray, arrived);
    QFETCH(char, terminator);
    QFETCH(QString, reply);
    QFETCH(QByteArray, left);
    LinkFixture at;
    at.port.receive(bytesOf(arrived));
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, terminator)), reply);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestSerialGetResponse::waits_data() {
    QTest::addColumn<int>("limit");
    QTest::addColumn<Chunks>("arrives");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<int>("endsAt");
    const QString none = "Error";
    QTest::newRow("late but in time") << 1 << Chunks{{1999, "#12\r"}} << "#12" << 1999;
    QTest::newRow("in the last moment") << 1 << Chunks{{2000, "#12\r"}} << "#12" << 2000;
    QTest::newRow("a millisecond too late") << 1 << Chunks{{2001, "#12\r"}} << none << 2000;
    QTest::newRow("limit anew after each character")
        << 1 << Chunks{{1900, "#"}, {3800, "1"}, {5700, "2"}, {7600, "\r"}} << "#12" << 7600;
    QTest::newRow("limit anew after noise") << 1 << Chunks{{1900, "x"}, {3800, "#1\r"}} << "#1" << 3800;
    QTest::newRow("stops after the start") << 1 << Chunks{{100, "#"}} << none << 2100;
    QTest::newRow("stops before the terminator") << 1 << Chunks{{0, "#"}, {700, "123"}} << none << 2700;
    QTest::newRow("noise alone") << 1 << Chunks{{0, "xyz"}, {1500, "\r\n"}} << none << 3500;
    QTest::newRow("goes on too late") << 1 << Chunks{{0, "#1"}, {2001, "2\r"}} << none << 2000;
    QTest::newRow("5 units between characters") << 5 << Chunks{{9999, "#"}, {19998, "\r"}} << "#" << 19998;
    QTest::newRow("6 units") << 6 << Chunks{{11999, "#1\r"}} << "#1" << 11999;
    QTest::newRow("6 units passed") << 6 << Chunks{{12001, "#1\r"}} << none << 12000;
    QTest::newRow("limit 0, whole line there") << 0 << Chunks{{0, "#1\r"}} << "#1" << 0;
    QTest::newRow("limit 0, half a line there") << 0 << Chunks{{0, "#1"}, {1, "\r"}} << none << 0;
}

void TestSerialGetResponse::waits() {
    QFETCH(int, limit);
    QFETCH(Chunks, arrives);
    QFETCH(QString, reply);
    QFETCH(int, endsAt);
    LinkFixture at;
    feed(at.port, arrives);
    QCOMPARE(shown(Operation(at.link).serialGetResponse(limit, '\r')), reply);
    QCOMPARE(at.loop.ticks(), endsAt);
}

void TestSerialGetResponse::silenceEndsAtTheLimit_data() {
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("endsAt");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1: a line") << 1 << 2000;
    QTest::newRow("5: a calibration record") << 5 << 10000;
    QTest::newRow("6: first line of an antenna") << 6 << 12000;
    QTest::newRow("the largest 16-bit limit") << 32767 << 65534000;
}

void TestSerialGetResponse::silenceEndsAtTheLimit() {
    QFETCH(int, limit);
    QFETCH(int, endsAt);
    LinkFixture at;
    QCOMPARE(shown(Operation(at.link).serialGetResponse(limit, '\r')), "Error");
    QCOMPARE(at.loop.ticks(), endsAt);
    // One turn sleeps to the end: a wait that asks over and over would cost the whole processor.
    QVERIFY2(at.loop.turns() <= 2, qPrintable(QString::number(at.loop.turns())));
}

void TestSerialGetResponse::whatIsThereIsTakenAtOnce() {
    LinkFixture at;
    at.port.receive("#12\r");
    QCOMPARE(shown(Operation(at.link).serialGetResponse(0, '\r')), "#12");
    QVERIFY(at.loop.turns() <= 1);
}

void TestSerialGetResponse::closedPort() {
    LinkFixture at;
    at.port.close();
    QCOMPARE(shown(Operation(at.link).serialGetResponse(6, '\r')), "Error");
    QCOMPARE(at.loop.ticks(), 0);
}

void TestSerialGetResponse::unplugged_data() {
    QTest::addColumn<Chunks>("arrives");
    QTest::addColumn<int>("goneAt");
    QTest::newRow("before any character") << Chunks{} << 300;
    QTest::newRow("after the start") << Chunks{{0, "#"}, {900, "2"}} << 1000;
    QTest::newRow("with the terminator on its way") << Chunks{{0, "#12"}, {1500, "\r"}} << 1499;
}

void TestSerialGetResponse::unplugged() {
    QFETCH(Chunks, arrives);
    QFETCH(int, goneAt);
    LinkFixture at;
    feed(at.port, arrives);
    at.loop.at(goneAt, [&] { at.port.unplug(); });
    QCOMPARE(shown(Operation(at.link).serialGetResponse(6, '\r')), "Error");
    QCOMPARE(at.loop.ticks(), goneAt);
}

void TestSerialGetResponse::leftoverIsReadByTheNextReader() {
    LinkFixture at;
    at.port.receive("#1\r\n#2\r\n#3");
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "#1");
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "#2");
    // Half a reply is not kept: it is gone with the reader that took it.
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "Error");
    at.port.receive("4\r");
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "Error");
}

void TestSerialGetResponse::lineWithoutEndIsCut() {
    LinkFixture at;
    at.port.receive("#" + std::string(10'000, 'x') + "\r#1\r");
    const std::string line = Operation(at.link).serialGetResponse(1, '\r');
    QCOMPARE(line.size(), std::size_t{4096});
    QVERIFY(line.starts_with("#xx"));
    // The rest of it is dropped, and is no part of the next line.
    QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "#1");
}

void TestSerialGetResponse::tickCountOverflow_data() {
    QTest::addColumn<int>("beforeTheEnd");
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<bool>("overflows");
    QTest::newRow("limit ends with the count") << 2000 << QByteArray() << false;
    QTest::newRow("limit ends past the count") << 1999 << QByteArray() << true;
    QTest::newRow("reply there already") << 1999 << QByteArray("#1\r") << true;
    QTest::newRow("at the very end") << 0 << QByteArray() << true;
}

void TestSerialGetResponse::tickCountOverflow() {
    QFETCH(int, beforeTheEnd);
    QFETCH(QByteArray, arrived);
    QFETCH(bool, overflows);
    LinkFixture at(std::numeric_limits<std::int32_t>::max() - beforeTheEnd);
    at.port.receive(bytesOf(arrived));
    int fault = 0;
    try {
        QCOMPARE(shown(Operation(at.link).serialGetResponse(1, '\r')), "Error");
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, overflows ? 6 : 0);
}

QUORVEX_TEST(TestSerialGetResponse, quorvex::NoApplication)
#include "test_serial_get_response.moc"
