#include <QTest>

#include "simulator/active_antenna.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

using Module = ActiveAntenna::Module;

namespace {

constexpr const char* kTbr6 = "! 0E030002100ECE00001503FF000000";

/// The DC balance of the record of type 07 in `records`, which holds one.
int dcBalance(const QByteArray& records) {
    const QByteArray digits = records.mid(records.indexOf("! 0407") + 6, 4);
    const int low = digits.left(2).toInt(nullptr, 16);
    const int high = digits.mid(2).toInt(nullptr, 16);
    const int bits = low + 256 * high;
    return bits > 0x7FFF ? bits - 0x10000 : bits;
}

}  // namespace

class TestActiveAntenna : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndTakesWrites_data();
    void readsAndTakesWrites();
    void rm5HasNoKirkRegisters_data();
    void rm5HasNoKirkRegisters();
    void numbersItHasNot_data();
    void numbersItHasNot();
    void version();
    void tbr6Mode();
    void liveFmDeviation();
    void calibrationModeOfKirkOnly();
    void recordsFollowTheModuleWrittenToLast();
};

void TestActiveAntenna::readsAndTakesWrites_data() {
    QTest::addColumn<bool>("kirkOnly");
    QTest::addColumn<QByteArray>("write");
    QTest::addColumn<QByteArray>("read");
    QTest::addColumn<QByteArray>("reply");
    const auto row = [](const char* name, bool kirkOnly, const char* write, const char* read,
                        const char* reply) {
        QTest::newRow(name) << kirkOnly << QByteArray(write) << QByteArray(read) << QByteArray(reply);
    };
    row("FM deviation A", false, "# 02413E", "# 0101", "# 02813E\r\n");
    row("FM deviation B", false, "# 02423D", "# 0102", "# 02823D\r\n");
    row("frequency A", false, "# 02450F", "# 0105", "# 02850F\r\n");
    row("frequency B", false, "# 02460E", "# 0106", "# 02860E\r\n");
    row("receive A", true, "# 024701", "# 0107", "# 028701\r\n");
    row("receive B", true, "# 024801", "# 0108", "# 028801\r\n");
    row("transmit A", true, "# 024901", "# 0109", "# 028901\r\n");
    row("transmit B, lower case", true, "# 024a01", "# 010a", "# 028A01\r\n");
    row("transmit B", true, "# 024A03", "# 010A", "# 028A03\r\n");
    row("RSSI threshold", true, "# 024BFF", "# 010B", "# 028BFF\r\n");
}

void TestActiveAntenna::readsAndTakesWrites() {
    QFETCH(bool, kirkOnly);
    QFETCH(QByteArray, write);
    QFETCH(QByteArray, read);
    QFETCH(QByteArray, reply);
    for (const RfModule module : {RfModule::kRm5, RfModule::kKirk}) {
        ActiveAntenna antenna(module);
        if (kirkOnly && module == RfModule::kRm5)
            continue;
        QVERIFY(exchange(antenna, read) != reply);
        QCOMPARE(exchange(antenna, write), "");
        QCOMPARE(exchange(antenna, read), reply);
    }
}

void TestActiveAntenna::rm5HasNoKirkRegisters_data() {
    QTest::addColumn<QByteArray>("read");
    for (const char* read : {"# 0107", "# 0108", "# 0109", "# 010a", "# 010B"})
        QTest::newRow(read) << QByteArray(read);
}

void TestActiveAntenna::rm5HasNoKirkRegisters() {
    QFETCH(QByteArray, read);
    ActiveAntenna silent(RfModule::kRm5);
    QCOMPARE(exchange(silent, read), "");
    ActiveAntenna refusing(RfModule::kRm5);
    refusing.setRefusesKirkReads(true);
    QCOMPARE(exchange(refusing, read), "# 01BF\r\n");
    ActiveAntenna kirk(RfModule::kKirk);
    kirk.setRefusesKirkReads(true);
    QVERIFY(exchange(kirk, read).startsWith("# 028"));
}

void TestActiveAntenna::numbersItHasNot_data() {
    QTest::addColumn<QByteArray>("line");
    for (const char* line :
         {"# 0103", "# 0104", "# 010C", "# 0139", "# 0100", "! 0108", "! 0309E803", "! 020722"})
        QTest::newRow(line) << QByteArray(line);
}

void TestActiveAntenna::numbersItHasNot() {
    QFETCH(QByteArray, line);
    ActiveAntenna antenna(RfModule::kKirk);
    antenna.setRefusesKirkReads(true);
    QCOMPARE(exchange(antenna, line), "");
    QVERIFY(!antenna.inCalibrationMode());
}

void TestActiveAntenna::version() {
    ActiveAntenna antenna(RfModule::kRm5);
    antenna.setVersion("1.0");
    const QByteArray line = exchange(antenna, "! 0107").chopped(2);
    QCOMPARE(line.mid(14, line.size() - 15), "1.0");
}

void TestActiveAntenna::tbr6Mode() {
    ActiveAntenna antenna(RfModule::kRm5);
    QCOMPARE(exchange(antenna, "! 0E030002100ECE00001503FF000001"), "");
    QVERIFY(!antenna.inTbr6Mode());
    QCOMPARE(exchange(antenna, kTbr6), "^ 020002\r\n");
    QVERIFY(antenna.inTbr6Mode());
}

void TestActiveAntenna::liveFmDeviation() {
    ActiveAntenna antenna(RfModule::kKirk);
    const std::string before = antenna.dump();
    QVERIFY(!antenna.liveFmDeviation(Module::kA));
    QVERIFY(!antenna.liveFmDeviation(Module::kB));
    QCOMPARE(exchange(antenna, "! 03062128"), "");
    QCOMPARE(antenna.liveFmDeviation(Module::kA).value_or(-1), 0x21);
    QCOMPARE(antenna.liveFmDeviation(Module::kB).value_or(-1), 0x28);
    QCOMPARE(exchange(antenna, "! 020622"), "");
    QCOMPARE(antenna.liveFmDeviation(Module::kA).value_or(-1), 0x21);
    QCOMPARE(QByteArray::fromStdString(antenna.dump()), QByteArray::fromStdString(before));
}

void TestActiveAntenna::calibrationModeOfKirkOnly() {
    ActiveAntenna kirk(RfModule::kKirk);
    QCOMPARE(exchange(kirk, "! 0308E803"), "");
    QVERIFY(kirk.inCalibrationMode());
    QCOMPARE(exchange(kirk, "! 03080000"), "");
    QVERIFY(!kirk.inCalibrationMode());
    ActiveAntenna rm5(RfModule::kRm5);
    QCOMPARE(exchange(rm5, "! 0308E803"), "");
    QVERIFY(!rm5.inCalibrationMode());
}

void TestActiveAntenna::recordsFollowTheModuleWrittenToLast() {
    ActiveAntenna antenna(RfModule::kKirk);
    antenna.calibrationStream().setIntervalMs(100);
    QVERIFY(antenna.setValue(0x05, "04"));
    QVERIFY(antenna.setValue(0x06, "24"));
    exchange(antenna, "! 0308E803");
    QVERIFY(dcBalance(takeAll(antenna, 100)) < 0);
    exchange(antenna, "# 024A05", 100);
    QVERIFY(dcBalance(takeAll(antenna, 200)) > 1000);
    exchange(antenna, "# 024B05", 200);
    QVERIFY(dcBalance(takeAll(antenna, 300)) > 1000);
    exchange(antenna, "# 024105", 300);
    QVERIFY(dcBalance(takeAll(antenna, 400)) < 0);
}

QUORVEX_TEST(TestActiveAntenna, quorvex::NoApplication)
#include "test_active_antenna.moc"
