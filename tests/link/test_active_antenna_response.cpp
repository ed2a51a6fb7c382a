#include <QTest>

#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// Waiting for the one line among others that holds an expected text.
class TestActiveAntennaResponse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void finds_data();
    void finds();
    void waits_data();
    void waits();
    void countsLines_data();
    void countsLines();
    void closedPort();
    void unpluggedAmongTheLines();
};

void TestActiveAntennaResponse::finds_data() {
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QByteArray>("left");
    const auto row = [](const char* name, const QByteArray& arrived, const QByteArray& expected,
                        const QString& reply, const QByteArray& left) {
        QTest::newRow(name) << arrived << expected << reply << left;
    };
    row("whole line", "^ 020002\r\n", "^ 020002", "^ 020002", "\n");
    row("beginning of the line", "# 02A117\r\n", "# 02A1", "# 02A117", "\n");
    row("within the line", "!DECT Version:4.07;\r\n", "Version", "!DECT Version:4.07;", "\n");
    row("end of the line", "#xyz\r", "yz", "#xyz", "");
    row("after other lines", "! 021100\r\n^ 023001\r\n# 02A117\r\n", "# 02A1", "# 02A117", "\n");
    row("first of two", "#1a\r#2a\r", "a", "#1a", "#2a\r");
    row("case matters", "#ab\r#AB\r", "AB", "#AB", "");
    row("empty is in every line", "#ab\r#AB\r", "", "#ab", "#AB\r");
}

void TestActiveAntennaResponse::finds() {
    QFETCH(QByteArray, arrived);
    QFETCH(QByteArray, expected);
    QFETCH(QString, reply);
    QFETCH(QByteArray, left);
    LinkFixture at;
    at.port.receive(bytesOf(arrived));
    QCOMPARE(shown(Operation(at.link).GetActiveAntennaResponse(bytesOf(expected))), reply);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestActiveAntennaResponse::waits_data() {
    QTest::addColumn<Chunks>("arrives");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<int>("endsAt");
    const QString none = "Error";
    QTest::newRow("nothing") << Chunks{} << none << 12000;
    QTest::newRow("first line late") << Chunks{{11999, "#yes\r"}} << "#yes" << 11999;
    QTest::newRow("first line too late") << Chunks{{12001, "#yes\r"}} << none << 12000;
    QTest::newRow("12 s within the first line")
        << Chunks{{11000, "#y"}, {22000, "e"}, {33000, "s\r"}} << "#yes" << 33000;
    QTest::newRow("first line stops") << Chunks{{500, "#ye"}} << none << 12500;
    QTest::newRow("2 s before the second line") << Chunks{{0, "#no\r"}, {1999, "#yes\r"}} << "#yes" << 1999;
    // A pause counts as one of the lines, and the search goes on behind it.
    QTest::newRow("a pause between lines") << Chunks{{0, "#no\r"}, {5000, "#yes\r"}} << "#yes" << 5000;
    QTest::newRow("pauses up to the last line") << Chunks{{0, "#no\r"}, {19999, "#yes\r"}} << "#yes" << 19999;
    QTest::newRow("pauses past the last line") << Chunks{{0, "#no\r"}, {20001, "#yes\r"}} << none << 20000;
    QTest::newRow("a further line broken off")
        << Chunks{{0, "#no\r"}, {100, "#ye"}, {2101, "#yes\r"}} << "#yes" << 2101;
}

void TestActiveAntennaResponse::waits() {
    QFETCH(Chunks, arrives);
    QFETCH(QString, reply);
    QFETCH(int, endsAt);
    LinkFixture at;
    feed(at.port, arrives);
    QCOMPARE(shown(Operation(at.link).GetActiveAntennaResponse("yes")), reply);
    QCOMPARE(at.loop.ticks(), endsAt);
}

void TestActiveAntennaResponse::countsLines_data() {
    QTest::addColumn<int>("others");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QByteArray>("left");
    QTest::newRow("the 2nd") << 1 << "#yes" << QByteArray();
    QTest::newRow("the 10th") << 9 << "#yes" << QByteArray();
    QTest::newRow("the 11th") << 10 << "#yes" << QByteArray();
    QTest::newRow("the 12th") << 11 << "Error" << QByteArray("#yes\r");
}

void TestActiveAntennaResponse::countsLines() {
    QFETCH(int, others);
    QFETCH(QString, reply);
    QFETCH(QByteArray, left);
    LinkFixture at;
    for (int i = 0; i < others; ++i)
        at.port.receive("#no\r");
    at.port.receive("#yes\r");
    QCOMPARE(shown(Operation(at.link).GetActiveAntennaResponse("yes")), reply);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestActiveAntennaResponse::closedPort() {
    LinkFixture at;
    at.port.close();
    QCOMPARE(shown(Operation(at.link).GetActiveAntennaResponse("yes")), "Error");
    QCOMPARE(at.loop.ticks(), 0);
}

void TestActiveAntennaResponse::unpluggedAmongTheLines() {
    LinkFixture at;
    at.port.receive("#no\r#no\r#n");
    at.loop.at(700, [&] { at.port.unplug(); });
    QCOMPARE(shown(Operation(at.link).GetActiveAntennaResponse("yes")), "Error");
    QCOMPARE(at.loop.ticks(), 700);
}

QUORVEX_TEST(TestActiveAntennaResponse, quorvex::NoApplication)
#include "test_active_antenna_response.moc"
