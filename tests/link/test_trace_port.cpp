#include <QStringList>
#include <QTest>

#include "link/runtime_fault.h"
#include "link/trace_port.h"
#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

/// A link over a port that is traced.
struct Traced {
    Journal journal;
    FakeLoop loop{1000};
    FakePort port{loop, journal};
    QStringList lines;
    TracePort trace{port, loop, [this](const std::string& line) { lines << line.c_str(); }};
    FakeConsole console{journal};
    CommandLink link{trace, loop, console};
};

}  // namespace

class TestTracePort : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anExchange();
    void silence();
    void silenceOfAReaderThatOnlyLooks();
    void runs_data();
    void runs();
    void openingThatFails();
    void lost();
    void closedWhenLost();
    void passesOnWhatThePortSays();
};

void TestTracePort::anExchange() {
    Traced at;
    at.trace.open(3);
    at.port.receive("~x");
    at.port.answer("# 0102", {Reply{"# 02821F\r\n", 22}});
    QCOMPARE(Operation(at.link).exchange("# 0102", 8), "# 02821F");
    at.trace.close();
    QCOMPARE(at.lines, QStringList({"        1.000 * open COM3",   //
                                    "        1.000 ~ ~x | 7E 78",  //
                                    R"(        1.000 > # 0102\x0D\x0A | 23 20 30 31 30 32 0D 0A)",
                                    "        1.022 < # 02821F | 23 20 30 32 38 32 31 46",  //
                                    "        1.022 * close"}));
    QCOMPARE(at.port.sentLines(), QStringList("# 0102"));
}

void TestTracePort::silence() {
    Traced at;
    at.trace.open(1);
    at.port.answer("# 0102", {Reply{"# 02", 22}});
    QCOMPARE(Operation(at.link).exchange("# 0102", 8), "Error");
    QCOMPARE(at.lines.mid(2),
             QStringList({"        1.022 < # 02 | 23 20 30 32", "        3.022 * silence of 2000 ms"}));
}

void TestTracePort::silenceOfAReaderThatOnlyLooks() {
    Traced at;
    at.trace.open(1);
    QCOMPARE(Operation(at.link).serialGetResponse(limit::kArrivedOnly, '\r'), "Error");
    QCOMPARE(at.lines, QStringList("        1.000 * open COM1"));
}

void TestTracePort::runs_data() {
    QTest::addColumn<Chunks>("chunks");
    QTest::addColumn<QStringList>("texts");
    const QByteArray longest(128, 'a');
    QTest::newRow("at the pace of the line")
        << Chunks{{1000, "ab"}, {1050, "c"}} << QStringList{"1.000 < abc"};
    QTest::newRow("a pause") << Chunks{{1000, "ab"}, {1051, "c"}} << QStringList{"1.000 < ab", "1.051 < c"};
    QTest::newRow("a line feed") << Chunks{{1000, "a\nb"}} << QStringList{R"(1.000 < a\x0A)", "1.000 < b"};
    QTest::newRow("any bytes") << Chunks{{1000, QByteArray("\0\x1f \\~\x7f\xff", 7)}}
                               << QStringList{R"(1.000 < \x00\x1F \x5C~\x7F\xFF)"};
    QTest::newRow("without an end") << Chunks{{1000, longest + "a"}}
                                    << QStringList{"1.000 < " + QString(longest), "1.000 < a"};
}

void TestTracePort::runs() {
    QFETCH(Chunks, chunks);
    QFETCH(QStringList, texts);
    Traced at;
    at.trace.open(1);
    at.lines.clear();
    feed(at.port, chunks);
    while (at.loop.ticks() < 2000) {
        while (at.trace.read()) {
        }
        at.loop.run(2000);
    }
    at.trace.close();
    at.lines.removeLast();  // "close"
    for (QString& line : at.lines)
        line = line.left(line.lastIndexOf(" |")).trimmed();
    QCOMPARE(at.lines, texts);
}

void TestTracePort::openingThatFails() {
    Traced at;
    at.port.refuse(4);
    QVERIFY_EXCEPTION_THROWN(at.trace.open(4), RuntimeFault);
    QCOMPARE(at.lines.size(), 1);
    QVERIFY2(at.lines[0].startsWith("        1.000 * open COM4 failed: "), qPrintable(at.lines[0]));
    at.trace.close();
    QCOMPARE(at.lines.size(), 1);
}

void TestTracePort::lost() {
    Traced at;
    at.trace.open(1);
    at.port.receive("ab");
    at.trace.read();
    at.port.unplug();
    at.trace.lost();
    QCOMPARE(at.lines.mid(1), QStringList({"        1.000 < a | 61", "        1.000 * lost"}));
    QVERIFY(!at.trace.isOpen());
    at.trace.close();
    QCOMPARE(at.lines.size(), 3);
}

// Before anyone has told of it.
void TestTracePort::closedWhenLost() {
    Traced at;
    at.trace.open(1);
    at.port.unplug();
    at.trace.close();
    at.trace.lost();
    QCOMPARE(at.lines.mid(1), QStringList("        1.000 * lost"));
}

void TestTracePort::passesOnWhatThePortSays() {
    Traced at;
    QCOMPARE(at.trace.connection(), 0U);
    at.trace.open(1);
    const auto first = at.trace.connection();
    at.trace.close();
    at.trace.open(1);
    QVERIFY(first != 0 && at.trace.connection() != 0 && at.trace.connection() != first);
    at.port.leaveRoom(7);
    QCOMPARE(at.trace.room(), 7U);
    at.port.receive("abc");
    QCOMPARE(at.trace.waiting(), 3U);
    at.trace.discardInput();
    QCOMPARE(at.trace.waiting(), 0U);
    at.port.failWritesAfter(0);
    QVERIFY_EXCEPTION_THROWN(at.trace.write('#'), RuntimeFault);
}

QUORVEX_TEST(TestTracePort, quorvex::NoApplication)
#include "test_trace_port.moc"
