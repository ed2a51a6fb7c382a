#include <QTest>
#include <limits>

#include "link/runtime_fault.h"
#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

QByteArray stored(const CommandLink& link) {
    QByteArray bytes;
    for (std::int32_t i = 0; i < link.dataBuffer().count(); ++i)
        bytes.append(static_cast<char>(link.dataBuffer().bytes().at(static_cast<std::size_t>(i))));
    return bytes;
}

}  // namespace

/// The block behind the marker "sync", as it gets into the data buffer.
class TestBlockCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void synchronises_data();
    void synchronises();
    void junkWithoutEnd();
    void waits_data();
    void waits();
    void byteValues();
    void entriesPastTheBlockKeepWhatTheyHeld();
    void emptyBeforeTheFirstCapture();
    void fillsTheBuffer();
    void pastTheBuffer();
    void closedPort();
    void unplugged();
    void tickCountOverflow();
};

void TestBlockCapture::synchronises_data() {
    QTest::addColumn<QByteArray>("arrived");
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<QByteArray>("left");
    const auto row = [](const char* name, const QByteArray& arrived, int count, const QByteArray& block,
                        const QByteArray& left) { QTest::newRow(name) << arrived << count << block << left; };
    row("marker and block", "sync12345", 5, "12345", "");
    row("noise before the marker", "xsync12345", 5, "12345", "");
    row("rest stays", "sync1234567", 5, "12345", "67");
    row("marker used up by its own s", "synsync12345", 5, "", "");
    row("s used up by y", "ssync12345", 5, "", "");
    row("s used up by n", "sysync12345", 5, "", "");
    row("second marker after a broken one", "synxsync12345", 5, "12345", "");
    row("second marker after a lost one", "ssyncsync12345", 5, "12345", "");
    row("marker within the block", "syncsync1", 5, "sync1", "");
    row("another second character", "sxnc12345", 5, "", "");
    row("another third character", "syxc12345", 5, "", "");
    row("another fourth character", "synx12345", 5, "", "");
    row("capitals are no marker", "SYNCsyNc12345", 5, "", "");
    row("no marker", "abcdefgh", 5, "", "");
    row("marker cut short", "abcsyn", 5, "", "");
    row("nothing", "", 5, "", "");
    row("marker alone", "sync", 5, "", "");
    row("carriage returns count", "sync\r\n\r\n#", 5, "\r\n\r\n#", "");
    row("one byte", "sync12", 1, "1", "2");
    // A byte is stored before the count is looked at.
    row("no byte asked for", "sync12", 0, "1", "2");
}

void TestBlockCapture::synchronises() {
    QFETCH(QByteArray, arrived);
    QFETCH(int, count);
    QFETCH(QByteArray, block);
    QFETCH(QByteArray, left);
    LinkFixture at;
    at.port.receive(bytesOf(arrived));
    at.link.GetDataBuffer(1, count, always);
    QCOMPARE(stored(at.link), block);
    QCOMPARE(QByteArray::fromStdString(at.port.unread()), left);
    QCOMPARE(at.loop.ticks(), 0);
}

// However much has arrived, one capture passes over as much as a port's buffer holds and no more.
void TestBlockCapture::junkWithoutEnd() {
    LinkFixture at;
    constexpr std::size_t kBuffer = 4096;
    at.port.receive(std::string(2 * kBuffer + 1, 'x') + "sync12345");
    for (const std::size_t left : {kBuffer + 10, std::size_t{10}}) {
        at.link.GetDataBuffer(1, 5, always);
        QCOMPARE(stored(at.link), QByteArray());
        QCOMPARE(at.port.unread().size(), left);
    }
    at.link.GetDataBuffer(1, 5, always);
    QCOMPARE(stored(at.link), QByteArray("12345"));
}

void TestBlockCapture::waits_data() {
    QTest::addColumn<int>("limit");
    QTest::addColumn<Chunks>("arrives");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<int>("endsAt");
    QTest::newRow("marker comes later") << 1 << Chunks{{1, "sync12345"}} << QByteArray() << 0;
    QTest::newRow("marker half there") << 1 << Chunks{{0, "sy"}, {1, "nc12345"}} << QByteArray() << 0;
    QTest::newRow("block comes later") << 1 << Chunks{{0, "sync"}, {1, "12345"}} << QByteArray() << 0;
    QTest::newRow("rest late but in time")
        << 1 << Chunks{{0, "sync1"}, {999, "2"}, {1998, "345"}} << QByteArray("12345") << 1998;
    QTest::newRow("rest too late") << 1 << Chunks{{0, "sync12"}, {1001, "345"}} << QByteArray("12") << 1000;
    QTest::newRow("rest never comes") << 1 << Chunks{{0, "sync1234"}} << QByteArray("1234") << 1000;
    QTest::newRow("2 units") << 2 << Chunks{{0, "sync1"}, {1999, "2345"}} << QByteArray("12345") << 1999;
    QTest::newRow("2 units passed") << 2 << Chunks{{0, "sync1"}} << QByteArray("1") << 2000;
    QTest::newRow("limit 0, all there") << 0 << Chunks{{0, "sync12345"}} << QByteArray("12345") << 0;
    QTest::newRow("limit 0, rest on its way")
        << 0 << Chunks{{0, "sync12"}, {1, "345"}} << QByteArray("12") << 0;
}

void TestBlockCapture::waits() {
    QFETCH(int, limit);
    QFETCH(Chunks, arrives);
    QFETCH(QByteArray, block);
    QFETCH(int, endsAt);
    LinkFixture at;
    feed(at.port, arrives);
    at.link.GetDataBuffer(limit, 5, always);
    QCOMPARE(stored(at.link), block);
    QCOMPARE(at.loop.ticks(), endsAt);
}

void TestBlockCapture::byteValues() {
    LinkFixture at;
    std::string all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    at.port.receive("sync" + all);
    at.link.GetDataBuffer(1, 256, always);
    QCOMPARE(at.link.dataBuffer().count(), 256);
    for (std::size_t value = 0; value < 256; ++value)
        QCOMPARE(at.link.dataBuffer().bytes().at(value), static_cast<std::int16_t>(value));
}

void TestBlockCapture::entriesPastTheBlockKeepWhatTheyHeld() {
    LinkFixture at;
    at.port.receive("syncABCDE");
    at.link.GetDataBuffer(1, 5, always);
    at.port.receive("syncxy");
    at.link.GetDataBuffer(1, 2, always);
    QCOMPARE(stored(at.link), "xy");
    QCOMPARE(at.link.dataBuffer().bytes().at(1), 'y');
    QCOMPARE(at.link.dataBuffer().bytes().at(2), 'C');
    // A capture that finds nothing says so; what it left is no block.
    at.link.GetDataBuffer(1, 5, always);
    QCOMPARE(at.link.dataBuffer().count(), 0);
}

void TestBlockCapture::emptyBeforeTheFirstCapture() {
    LinkFixture at;
    QCOMPARE(at.link.dataBuffer().count(), 0);
    QCOMPARE(at.link.dataBuffer().bytes().size(), 10001U);
    for (const std::int16_t entry : at.link.dataBuffer().bytes())
        QCOMPARE(entry, std::int16_t{0});
}

void TestBlockCapture::fillsTheBuffer() {
    LinkFixture at;
    at.port.receive("sync" + std::string(10000, '.') + "!?");
    at.link.GetDataBuffer(1, 10001, always);
    QCOMPARE(at.link.dataBuffer().count(), 10001);
    QCOMPARE(at.link.dataBuffer().bytes().at(10000), '!');
    QCOMPARE(shown(at.port.unread()), "?");
}

void TestBlockCapture::pastTheBuffer() {
    LinkFixture at;
    at.port.receive("sync" + std::string(10002, '.'));
    try {
        at.link.GetDataBuffer(1, 20000, always);
        QFAIL("stored past the buffer's end");
    } catch (const RuntimeFault& fault) {
        QCOMPARE(fault.number(), 9);
    }
}

void TestBlockCapture::closedPort() {
    LinkFixture at;
    at.port.receive("syncABCDE");
    at.link.GetDataBuffer(1, 5, always);
    at.port.close();
    at.link.GetDataBuffer(1, 5, always);
    QCOMPARE(at.link.dataBuffer().count(), 0);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestBlockCapture::unplugged() {
    LinkFixture at;
    at.port.receive("syncABC");
    at.loop.at(400, [&] { at.port.unplug(); });
    at.link.GetDataBuffer(1, 5, always);
    QCOMPARE(stored(at.link), "ABC");
    QCOMPARE(at.loop.ticks(), 400);
}

void TestBlockCapture::tickCountOverflow() {
    LinkFixture at(std::numeric_limits<std::int32_t>::max() - 999);
    at.port.receive("syncABC");
    try {
        at.link.GetDataBuffer(1, 5, always);
        QFAIL("no overflow");
    } catch (const RuntimeFault& fault) {
        QCOMPARE(fault.number(), 6);
    }
}

QUORVEX_TEST(TestBlockCapture, quorvex::NoApplication)
#include "test_block_capture.moc"
