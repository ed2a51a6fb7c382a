#include <QTest>

#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// The window stays clickable while a reply is awaited, so a second exchange may run inside the wait of the
/// first, on the same port. Nothing guards against it; both must come to their end.
class TestNestedExchange : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void innerFirstThenOuter();
    void innerTakesTheReplyOfTheOuter();
    void innerDropsWhatTheOuterHadWaiting();
    void innerOutlastsTheOuter();
    void threeDeep();
    void portClosedInside();
    void portChangedInside();
    void captureInsideACapture();
    void commandInsideACapture();

private:
    static std::string exchange(LinkFixture& at, const std::string& line) {
        Operation(at.link).serialSendString(line);
        return Operation(at.link).serialGetResponse(1, '\r');
    }
};

void TestNestedExchange::innerFirstThenOuter() {
    LinkFixture at;
    at.port.answer("#A", {Reply{"#a\r\n", 1000}});
    at.port.answer("#B", {Reply{"#b\r\n", 200}});
    QString inner;
    at.loop.at(300, [&] { inner = shown(exchange(at, "#B")); });
    QCOMPARE(shown(exchange(at, "#A")), "#a");
    QCOMPARE(inner, "#b");
    QCOMPARE(at.loop.ticks(), 1000);
    QCOMPARE(at.port.sentLines(), QStringList({"#A", "#B"}));
}

void TestNestedExchange::innerTakesTheReplyOfTheOuter() {
    LinkFixture at;
    at.port.answer("#A", {Reply{"#a\r\n", 500}});
    QString inner;
    at.loop.at(300, [&] { inner = shown(exchange(at, "#B")); });
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(inner, "#a");
    // The line feed behind the reply is a character too: the outer wait starts anew with it.
    QCOMPARE(at.loop.ticks(), 2500);
}

void TestNestedExchange::innerDropsWhatTheOuterHadWaiting() {
    LinkFixture at;
    at.port.answer("#A", {Reply{"#half", 100}});
    at.port.answer("#B", "#b\r");
    QString inner;
    at.loop.at(300, [&] { inner = shown(exchange(at, "#B")); });
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(inner, "#b");
    QCOMPARE(at.loop.ticks(), 2100);
}

void TestNestedExchange::innerOutlastsTheOuter() {
    LinkFixture at;
    QString inner;
    at.loop.at(1900, [&] { inner = shown(exchange(at, "#B")); });
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(inner, "Error");
    // The outer limit passed inside the inner wait, which ends first.
    QCOMPARE(at.loop.ticks(), 3900);
}

void TestNestedExchange::threeDeep() {
    LinkFixture at;
    at.port.answer("#A", {Reply{"#a\r", 1500}});
    at.port.answer("#B", {Reply{"#b\r", 1000}});
    at.port.answer("#C", {Reply{"#c\r", 500}});
    QStringList ended;
    at.loop.at(100, [&] {
        at.loop.at(200, [&] { ended.append(shown(exchange(at, "#C"))); });
        ended.append(shown(exchange(at, "#B")));
    });
    ended.append(shown(exchange(at, "#A")));
    QCOMPARE(ended, QStringList({"#c", "#b", "#a"}));
    QCOMPARE(at.loop.ticks(), 1500);
}

void TestNestedExchange::portClosedInside() {
    LinkFixture at;
    at.port.answer("#A", {Reply{"#a\r", 1500}});
    at.loop.at(300, [&] { at.port.close(); });
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(at.loop.ticks(), 300);
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(at.loop.ticks(), 300);
}

void TestNestedExchange::portChangedInside() {
    LinkFixture at;
    at.loop.at(300, [&] {
        at.port.close();
        at.port.open(2);
    });
    at.port.receiveAt(300, "#other unit\r");
    QCOMPARE(shown(exchange(at, "#A")), "Error");
    QCOMPARE(at.loop.ticks(), 300);
}

void TestNestedExchange::captureInsideACapture() {
    // A timer's capture inside the wait of another shares its buffer; neither may write past its end.
    LinkFixture at;
    at.port.receive("sync" + std::string(9999, 'o'));
    at.loop.at(500, [&] {
        at.port.receive("syncii");
        at.link.GetDataBuffer(1, 2, always);
        at.port.receive("pp");
    });
    at.link.GetDataBuffer(1, 10001, always);
    QVERIFY(at.link.dataBuffer().count() >= 0);
    QVERIFY(at.link.dataBuffer().count() <= 10001);
    QCOMPARE(at.loop.ticks(), 1500);
}

void TestNestedExchange::commandInsideACapture() {
    // The capture gives the line up to the command, whose reply would otherwise fill the block.
    LinkFixture at;
    at.port.answer("#A", {Reply{"#a1\r\n", 100}});
    at.port.receive("sync123");
    QString inner;
    at.loop.at(500, [&] { inner = shown(exchange(at, "#A")); });
    at.port.receiveAt(900, "456");
    at.link.GetDataBuffer(1, 500, always);
    QCOMPARE(inner, "#a1");
    QCOMPARE(at.link.dataBuffer().count(), 3);
    QVERIFY(at.loop.ticks() <= 1500);
}

QUORVEX_TEST(TestNestedExchange, quorvex::NoApplication)
#include "test_nested_exchange.moc"
