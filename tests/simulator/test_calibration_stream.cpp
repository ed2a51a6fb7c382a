#include <QTest>
#include <memory>
#include <vector>

#include "simulator/beltpack.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

namespace {

constexpr const char* kEnter = "! 0309E803";
constexpr const char* kLeave = "! 03090000";

struct Status {
    int dcBalance;
    int rssi;
};

/// The records of type 07 in `bytes`, read by their character positions.
std::vector<Status> statusRecords(const QByteArray& bytes) {
    std::vector<Status> records;
    for (const QByteArray& line : bytes.split('\n')) {
        const auto byteAt = [&](int position) { return line.mid(position - 1, 2).toInt(nullptr, 16); };
        if (byteAt(5) != 7)
            continue;
        const int bits = byteAt(7) + 256 * byteAt(9);
        records.push_back({bits > 0x7FFF ? bits - 0x10000 : bits, byteAt(11)});
    }
    return records;
}

}  // namespace

class TestCalibrationStream : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyRecordIsWhole();
    void comesAtItsRate();
    void otherRecordsComeInBetween();
    void oneLongCallEqualsManyShortOnes();
    void readsAreAnsweredInBetween();
    void followsTheMidValue_data();
    void followsTheMidValue();
    void drifts();
    void withoutCarrier();
    void extremeMidStaysInRange();
    void leavingEndsIt();
    void stops();
    void stopsOnce();
    void halfRecords();
    void halfRecordOnce();

private:
    static constexpr int kIntervalMs = 100;
    std::unique_ptr<Beltpack> beltpack_;
};

void TestCalibrationStream::init() {
    beltpack_ = std::make_unique<Beltpack>(RfModule::kKirk);
    beltpack_->calibrationStream().setIntervalMs(kIntervalMs);
}

void TestCalibrationStream::everyRecordIsWhole() {
    exchange(*beltpack_, kEnter);
    const QByteArray bytes = takeAll(*beltpack_, 100 * kIntervalMs);
    QVERIFY(bytes.endsWith("\r\n"));
    for (const QByteArray& line : bytes.chopped(2).split('\n')) {
        const QByteArray record = line.trimmed();
        QVERIFY(record.startsWith("! "));
        const int payloadBytes = record.mid(2, 2).toInt(nullptr, 16);
        QCOMPARE(record.size(), 4 + 2 * payloadBytes);
        QVERIFY(!QByteArray::fromHex(record.mid(2)).isEmpty());
    }
}

void TestCalibrationStream::comesAtItsRate() {
    exchange(*beltpack_, kEnter, 1000);
    QCOMPARE(beltpack_->nextEventMs().value_or(-1), 1100);
    QCOMPARE(takeAll(*beltpack_, 1099), "");
    QCOMPARE(statusRecords(takeAll(*beltpack_, 1100)).size(), 1U);
    QCOMPARE(beltpack_->nextEventMs().value_or(-1), 1200);
    QCOMPARE(statusRecords(takeAll(*beltpack_, 2100)).size(), 10U);
}

void TestCalibrationStream::otherRecordsComeInBetween() {
    exchange(*beltpack_, kEnter);
    const QByteArray bytes = takeAll(*beltpack_, 6 * kIntervalMs);
    QCOMPARE(statusRecords(bytes).size(), 6U);
    QCOMPARE(bytes.count('\n'), 8);
}

void TestCalibrationStream::oneLongCallEqualsManyShortOnes() {
    Beltpack other(RfModule::kKirk);
    other.calibrationStream().setIntervalMs(kIntervalMs);
    beltpack_->displayStream().start(0, 130);
    other.displayStream().start(0, 130);
    exchange(*beltpack_, kEnter);
    exchange(other, kEnter);
    takeAll(other, 0);
    takeAll(*beltpack_, 0);
    QByteArray bytes;
    for (std::int64_t nowMs = 1; nowMs <= 2000; ++nowMs)
        bytes += takeAll(other, nowMs);
    QCOMPARE(takeAll(*beltpack_, 2000), bytes);
}

void TestCalibrationStream::readsAreAnsweredInBetween() {
    exchange(*beltpack_, kEnter);
    QCOMPARE(exchange(*beltpack_, "# 0102", 50), "# 02821F\r\n");
    const QByteArray bytes = exchange(*beltpack_, "# 0102", 150);
    QVERIFY(bytes.startsWith("! 0407"));
    QVERIFY(bytes.endsWith("\r\n# 02821F\r\n"));
}

void TestCalibrationStream::followsTheMidValue_data() {
    QTest::addColumn<QByteArray>("write");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("two below") << QByteArray("# 027c02") << -200 << -140;
    QTest::newRow("one below") << QByteArray("# 027c03") << -130 << -80;
    QTest::newRow("on the carrier") << QByteArray("# 027c04") << -60 << -20;
    QTest::newRow("one above") << QByteArray("# 027c05") << 0 << 50;
    QTest::newRow("three above") << QByteArray("# 027c07") << 120 << 180;
}

void TestCalibrationStream::followsTheMidValue() {
    QFETCH(QByteArray, write);
    QFETCH(int, least);
    QFETCH(int, most);
    exchange(*beltpack_, kEnter);
    exchange(*beltpack_, write);
    const auto records = statusRecords(takeAll(*beltpack_, 120'000));
    QCOMPARE(records.size(), 1200U);
    for (const Status& record : records) {
        QVERIFY2(record.dcBalance >= least && record.dcBalance <= most,
                 qPrintable(QString::number(record.dcBalance)));
        QVERIFY(record.rssi > 40 && record.rssi < 100);
    }
}

void TestCalibrationStream::drifts() {
    exchange(*beltpack_, kEnter);
    const auto records = statusRecords(takeAll(*beltpack_, 46'000));
    const auto meanOfTenFrom = [&](std::size_t first) {
        int sum = 0;
        for (std::size_t i = first; i < first + 10; ++i)
            sum += records[i].dcBalance;
        return sum / 10;
    };
    QVERIFY(meanOfTenFrom(145) > meanOfTenFrom(0) + 6);
    QVERIFY(meanOfTenFrom(445) < meanOfTenFrom(0) - 6);
}

void TestCalibrationStream::withoutCarrier() {
    beltpack_->calibrationStream().signal().setCarrierPresent(false);
    exchange(*beltpack_, kEnter);
    for (const Status& record : statusRecords(takeAll(*beltpack_, 1000))) {
        QCOMPARE(record.dcBalance, 0);
        QVERIFY(record.rssi < 10);
    }
    beltpack_->calibrationStream().signal().setCarrierPresent(true);
    QVERIFY(statusRecords(takeAll(*beltpack_, 1100)).front().dcBalance < -20);
}

void TestCalibrationStream::extremeMidStaysInRange() {
    exchange(*beltpack_, "# 027cFF");
    exchange(*beltpack_, kEnter);
    const Status record = statusRecords(takeAll(*beltpack_, 100)).front();
    QVERIFY(record.dcBalance > 10'000);
    QCOMPARE(record.rssi, 0);
}

void TestCalibrationStream::leavingEndsIt() {
    exchange(*beltpack_, kEnter);
    QVERIFY(!takeAll(*beltpack_, 500).isEmpty());
    exchange(*beltpack_, kLeave, 500);
    QVERIFY(!beltpack_->nextEventMs());
    QCOMPARE(takeAll(*beltpack_, 60'000), "");
    exchange(*beltpack_, kEnter, 60'000);
    QCOMPARE(statusRecords(takeAll(*beltpack_, 60'300)).size(), 3U);
}

void TestCalibrationStream::stops() {
    beltpack_->addFault(parseFault("stream-stops:2"));
    for (const std::int64_t startMs : {0, 10'000}) {
        exchange(*beltpack_, kEnter, startMs);
        QCOMPARE(statusRecords(takeAll(*beltpack_, startMs + 5000)).size(), 2U);
        QVERIFY(beltpack_->inCalibrationMode());
        QCOMPARE(exchange(*beltpack_, "# 0102", startMs + 5000), "# 02821F\r\n");
    }
    beltpack_->clearFaults();
    beltpack_->addFault(parseFault("stream-stops:0"));
    exchange(*beltpack_, kEnter, 20'000);
    QCOMPARE(takeAll(*beltpack_, 30'000), "");
}

void TestCalibrationStream::stopsOnce() {
    beltpack_->addFault(parseFault("stream-stops:2,once"));
    exchange(*beltpack_, kEnter);
    QCOMPARE(statusRecords(takeAll(*beltpack_, 1000)).size(), 2U);
    exchange(*beltpack_, kEnter, 1000);
    QCOMPARE(statusRecords(takeAll(*beltpack_, 2000)).size(), 10U);
}

void TestCalibrationStream::halfRecords() {
    beltpack_->addFault(parseFault("half-records:9"));
    exchange(*beltpack_, kEnter);
    const QByteArray first = takeAll(*beltpack_, 100);
    QCOMPARE(first.size(), 14);
    const QByteArray second = takeAll(*beltpack_, 200);
    QCOMPARE(second.size(), 9);
    QVERIFY(second.startsWith("! 0407"));
    QVERIFY(takeAll(*beltpack_, 300).endsWith("\r\n"));
    QCOMPARE(takeAll(*beltpack_, 400).size(), 9);
}

void TestCalibrationStream::halfRecordOnce() {
    beltpack_->addFault(parseFault("half-records,once"));
    exchange(*beltpack_, kEnter);
    takeAll(*beltpack_, 100);
    QCOMPARE(takeAll(*beltpack_, 200).size(), 7);
    takeAll(*beltpack_, 300);
    QCOMPARE(takeAll(*beltpack_, 400).size(), 14);
}

QUORVEX_TEST(TestCalibrationStream, quorvex::NoApplication)
#include "test_calibration_stream.moc"
