#include <QTest>

#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

/// Writing where something goes wrong: what is sent until then, and what the operator is told.
class TestWriteFailures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void neverFilled();
    void failedReadEmptiesTheImage();
    void availabilityUnknown_data();
    void availabilityUnknown();
    void silent_data() { everyRecord(); }
    void silent();
    void silenceTakesTwoSeconds();
    void shortReply_data();
    void shortReply();
    void readsBackOtherData_data() { everyRecord(); }
    void readsBackOtherData();
    void differs_data();
    void differs();
    void everyOneDiffers();
    void differsThenSilent();
    void portClosedBefore();
    void portLostOnTheWay_data();
    void portLostOnTheWay();
    void portFault_data();
    void portFault();
    void unpluggedWhileABoxIsShown();
    void nextWriteStartsOver();

private:
    static void everyRecord();
};

void TestWriteFailures::everyRecord() {
    QTest::addColumn<int>("record");
    for (int i = 0; i <= 20; ++i)
        QTest::addRow("record %d", i) << i;
}

void TestWriteFailures::neverFilled() {
    WriteBench bench;
    bench.connectRm5();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), QStringList{kNeverFilled});
}

void TestWriteFailures::failedReadEmptiesTheImage() {
    WriteBench bench;
    bench.readUnit();
    bench.silenceParameter(0);
    bench.read.CommandRdSettingsBp_Click();
    bench.journal.take();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), QStringList{kNeverFilled});
}

void TestWriteFailures::availabilityUnknown_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("field");
    QTest::newRow("never read") << 0 << "";
    QTest::newRow("text") << 0 << "Y";
    QTest::newRow("number and text") << 0 << "1Y";
    QTest::newRow("sign alone") << 0 << "-";
    QTest::newRow("sign and point") << 0 << "+.";
    QTest::newRow("half-way") << 10 << "";
    QTest::newRow("at the last") << 20 << "";
}

void TestWriteFailures::availabilityUnknown() {
    QFETCH(int, record);
    QFETCH(QString, field);
    WriteBench bench;
    bench.readUnit();
    bench.image[record].available = field.toStdString();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, record - 1) + kNotWritten);
}

void TestWriteFailures::silent() {
    QFETCH(int, record);
    WriteBench bench;
    bench.readUnit();
    bench.silenceParameter(record);
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, record) + kNotWritten);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestWriteFailures::silenceTakesTwoSeconds() {
    WriteBench bench;
    bench.readUnit();
    bench.silenceParameter(0);
    const auto before = bench.loop.ticks();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.loop.ticks() - before, 2000);
    QCOMPARE(bench.lines(), exchanges(0, 0));
}

void TestWriteFailures::shortReply_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("reply");
    QTest::newRow("one of two digits") << 1 << "# 02821\r\n";
    QTest::newRow("nine of ten digits") << 2 << "# 0683100ECE100\r\n";
    QTest::newRow("two of ten digits") << 13 << "# 028E03\r\n";
    QTest::newRow("no start character") << 1 << "  02821F\r\n";
    QTest::newRow("line end alone") << 1 << "\r\n";
}

void TestWriteFailures::shortReply() {
    QFETCH(int, record);
    QFETCH(QString, reply);
    WriteBench bench;
    bench.readUnit();
    bench.port.answer(BeltpackBench::kParameters.at(static_cast<std::size_t>(record)).request,
                      reply.toStdString());
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, record) + kNotWritten);
}

void TestWriteFailures::readsBackOtherData() {
    QFETCH(int, record);
    WriteBench bench;
    bench.readUnit();
    bench.setDigits(record, record == 0 || record == 2 || record == 13 ? "EEEEEEEEEE" : "EE");
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(),
             kWriteStart + exchanges(0, record) + kNotVerified + exchanges(record + 1, 20) + kWritten);
}

void TestWriteFailures::differs_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("digits");
    QTest::newRow("first digit") << 1 << "1F"
                                 << "2F";
    QTest::newRow("second digit") << 1 << "1F"
                                  << "1E";
    QTest::newRow("letter case") << 1 << "1F"
                                 << "1f";
    QTest::newRow("first of ten") << 0 << "0044303039"
                                  << "1044303039";
    QTest::newRow("fifth of ten") << 0 << "0044303039"
                                  << "0044403039";
    QTest::newRow("last of ten") << 2 << "100ECE1000"
                                 << "100ECE1001";
    QTest::newRow("letter case of ten") << 13 << "03FF00000F"
                                        << "03FF00000f";
    QTest::newRow("one digit held") << 1 << "0"
                                    << "00";
    QTest::newRow("nothing held") << 1 << ""
                                  << "00";
    QTest::newRow("five of ten held") << 2 << "100EC"
                                      << "100EC00000";
}

void TestWriteFailures::differs() {
    QFETCH(int, record);
    QFETCH(QString, value);
    QFETCH(QString, digits);
    WriteBench bench;
    bench.readUnit();
    bench.image[record].value = value.toStdString();
    bench.setDigits(record, digits.toStdString());
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, record);
    lines[2 * record] = kWriteLines[record].left(8) + value.leftJustified(10);
    QCOMPARE(bench.journal.entries(),
             kWriteStart + lines + kNotVerified + exchanges(record + 1, 20) + kWritten);
}

void TestWriteFailures::everyOneDiffers() {
    WriteBench bench;
    bench.readUnit();
    QStringList expected = kWriteStart;
    for (int i = 0; i <= 20; ++i) {
        bench.setDigits(i, "EEEEEEEEEE");
        expected += exchanges(i, i) + kNotVerified;
    }
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), expected + kWritten);
}

void TestWriteFailures::differsThenSilent() {
    WriteBench bench;
    bench.readUnit();
    bench.setDigits(3, "EE");
    bench.silenceParameter(5);
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(),
             kWriteStart + exchanges(0, 3) + kNotVerified + exchanges(4, 5) + kNotWritten);
}

void TestWriteFailures::portClosedBefore() {
    WriteBench bench;
    bench.readUnit();
    bench.port.unplug();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + kNotWritten);
}

void TestWriteFailures::portLostOnTheWay_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("last");
    QTest::newRow("at the fifth write") << "# 024500        " << 4;
    QTest::newRow("at the fifth read-back") << "# 0105" << 4;
}

void TestWriteFailures::portLostOnTheWay() {
    QFETCH(QString, line);
    QFETCH(int, last);
    WriteBench bench;
    bench.readUnit();
    bench.port.onLine([&](const std::string& sent) {
        if (shown(sent) == line)
            bench.port.unplug();
    });
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, last);
    if (line.size() > 6)
        lines.removeLast();  // nothing goes out on a port that is gone
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kNotWritten);
}

void TestWriteFailures::portFault_data() {
    QTest::addColumn<int>("kind");
    QTest::newRow("sending") << 0;
    QTest::newRow("reading") << 1;
}

void TestWriteFailures::portFault() {
    QFETCH(int, kind);
    WriteBench bench;
    bench.readUnit();
    if (kind == 0)
        bench.port.failFlush();
    else
        bench.port.failReads();
    bench.write.CommandWrite_Click();
    const QStringList lines = kind == 0 ? QStringList() : exchanges(0, 0);
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kNotWritten);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestWriteFailures::unpluggedWhileABoxIsShown() {
    WriteBench bench;
    bench.readUnit();
    bench.setDigits(3, "EE");
    bench.console.whileBoxIsShown([&] { bench.port.unplug(); });
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 3) + kNotVerified + kNotWritten);
}

void TestWriteFailures::nextWriteStartsOver() {
    WriteBench bench;
    bench.readUnit();
    bench.silenceParameter(5);
    bench.write.CommandWrite_Click();
    bench.journal.take();
    bench.setDigits(5, "01");
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 20) + kWritten);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWriteFailures, quorvex::NoApplication)
#include "test_write_failures.moc"
