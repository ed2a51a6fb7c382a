#include <QTest>

#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

/// Writing the image to a Beltpack that answers.
class TestWrite : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whole();
    void hourglassAtEveryLine();
    void progressGoesByParameters();
    void imageStaysAsItWas();
    void edited_data();
    void edited();
    void availability_data();
    void availability();
    void unavailableIsPassedOver_data();
    void unavailableIsPassedOver();
    void lastRecordIsNeverSent();
    void accepted_data();
    void accepted();
    void answerToTheWriteIsDropped();
    void slowUnit();
};

void TestWrite::whole() {
    WriteBench bench;
    bench.readUnit();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 20) + kWritten);
}

void TestWrite::hourglassAtEveryLine() {
    WriteBench bench;
    bench.readUnit();
    int without = 0;
    bench.port.onLine([&](const std::string&) { without += bench.console.isHourglassUp() ? 0 : 1; });
    bench.write.CommandWrite_Click();
    QCOMPARE(without, 0);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestWrite::progressGoesByParameters() {
    WriteBench bench;
    bench.readUnit();
    const qsizetype before = bench.console.progress().size();
    bench.write.CommandWrite_Click();
    QStringList expected;
    for (int done = 0; done < 21; ++done)
        expected << QStringLiteral("%1 of 21").arg(done);
    QCOMPARE(bench.console.progress().mid(before), expected << "0 of 0");
}

void TestWrite::imageStaysAsItWas() {
    WriteBench bench;
    bench.readUnit();
    bench.image[7].available = "0";
    bench.setDigits(9, "77");  // one that does not verify
    const QStringList values = bench.values();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.values(), values);
    for (int i = 0; i <= 20; ++i)
        QCOMPARE(shown(bench.image[i].available.str()), i == 7 ? "0 " : "1 ");
}

void TestWrite::edited_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("line");
    QTest::newRow("serial number") << 0 << "00443FFFFF"
                                   << "> # 064100443FFFFF";
    QTest::newRow("system id length") << 1 << "27"
                                      << "> # 024227        ";
    QTest::newRow("system id") << 2 << "3123456A27"
                               << "> # 06433123456A27";
    QTest::newRow("microphone") << 6 << "02"
                                << "> # 024702        ";
    QTest::newRow("carrier mask") << 13 << "03E0000000"
                                  << "> # 064E03E0000000";
    QTest::newRow("feature map") << 20 << "00"
                                 << "> # 025500        ";
}

void TestWrite::edited() {
    QFETCH(int, record);
    QFETCH(QString, value);
    QFETCH(QString, line);
    WriteBench bench;
    bench.readUnit();
    bench.image[record].value = value.toStdString();
    bench.setDigits(record, value.toStdString());
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, 20);
    lines[2 * record] = line;
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten);
}

// Only a field that is the number 1 lets its parameter out.
void TestWrite::availability_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("sent");
    QTest::newRow("1") << "1" << true;
    QTest::newRow("blank before") << " 1" << true;
    QTest::newRow("two digits") << "01" << true;
    QTest::newRow("0") << "0" << false;
    QTest::newRow("2") << "2" << false;
    QTest::newRow("11") << "11" << false;
    QTest::newRow("minus 1") << "-1" << false;
    QTest::newRow("one tenth") << ".1" << false;
}

void TestWrite::availability() {
    QFETCH(QString, field);
    QFETCH(bool, sent);
    WriteBench bench;
    bench.readUnit();
    bench.image[4].available = field.toStdString();
    bench.write.CommandWrite_Click();
    const QStringList lines = exchanges(0, 3) + (sent ? exchanges(4, 4) : QStringList()) + exchanges(5, 20);
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten);
}

void TestWrite::unavailableIsPassedOver_data() {
    QTest::addColumn<int>("record");
    for (int i = 1; i <= 20; ++i)
        QTest::addRow("record %d", i) << i;
}

void TestWrite::unavailableIsPassedOver() {
    QFETCH(int, record);
    WriteBench bench;
    bench.connectRm5();
    bench.silenceParameter(record);
    bench.read.CommandRdSettingsBp_Click();
    // A microphone type that the unit does not have is shown, and so stored, as the first one.
    QCOMPARE(shown(bench.image[record].value.str()), record == 6 ? "00        " : "N/A       ");
    // Editing it does not make it available either.
    bench.editors.optionMICElectret_Click();
    bench.setDigits(6, "02");
    bench.journal.take();
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, 20);
    lines[12] = "> # 024702        ";
    lines.remove(2 * record, 2);
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten);
}

void TestWrite::lastRecordIsNeverSent() {
    WriteBench bench;
    bench.readUnit();
    bench.image[21] = bench.image[20];
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.lines(), exchanges(0, 20));
}

// What is compared, and what is not.
void TestWrite::accepted_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("reply");
    QTest::newRow("more than two digits held for one byte") << 1 << "1F3"
                                                            << "# 02821F\r\n";
    QTest::newRow("head of the reply") << 1 << "1F"
                                       << "!?xxyy1F\r\n";
    QTest::newRow("more than was asked for") << 1 << "1F"
                                             << "# 02821F7777\r\n";
    QTest::newRow("noise before the reply") << 1 << "1F"
                                            << "??1F# 02821F\r\n";
    QTest::newRow("line end inside the reply") << 1 << "1F"
                                               << "# 0282\r\n1F\r\n";
    QTest::newRow("no line end") << 1 << "1F"
                                 << "# 02821F";
    QTest::newRow("ten digits") << 2 << "FFFFFFFFFF"
                                << "# 0683FFFFFFFFFF\r\n";
}

void TestWrite::accepted() {
    QFETCH(int, record);
    QFETCH(QString, value);
    QFETCH(QString, reply);
    WriteBench bench;
    bench.readUnit();
    bench.image[record].value = value.toStdString();
    bench.port.answer(BeltpackBench::kParameters.at(static_cast<std::size_t>(record)).request,
                      reply.toStdString());
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entriesOf("box"), QStringList());
    QCOMPARE(bench.journal.entries().mid(bench.journal.entries().size() - 2), kWritten);
}

void TestWrite::answerToTheWriteIsDropped() {
    WriteBench bench;
    bench.readUnit();
    bench.port.answer("# 02421F        ", "# 0142\r\n# 028200\r\n");
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 20) + kWritten);
}

void TestWrite::slowUnit() {
    WriteBench bench;
    bench.readUnit();
    // Every character just within the silence that a reply may hold.
    bench.port.answer("# 0101", {Reply{"# 06810044303039\r\n", 1999, 1999}});
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 20) + kWritten);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWrite, quorvex::NoApplication)
#include "test_write.moc"
