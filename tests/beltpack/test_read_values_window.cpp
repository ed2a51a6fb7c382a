#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QStringList kMicrophones{"optionMICBal", "optionMICUnBal", "optionMICElectret"};
const QString kValuesRead = "green: Settings read from Beltpack successfully.";

}  // namespace

/// How single values of a Beltpack are shown, each after a read by a click on the button.
class TestReadValuesWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void beltpackId_data();
    void beltpackId();
    void frequencyAccuracy_data();
    void frequencyAccuracy();
    void regulation_data();
    void regulation();
    void hardwareRevision_data();
    void hardwareRevision();
    void microphone_data();
    void microphone();
    void batteryAlarm_data();
    void batteryAlarm();
    void version_data();
    void version();

private:
    /// Reads, and expects success and nothing on the way that the journal would hold.
    void read();
    QString visibleItem(const char* list);
    QStringList optionsOn();

    std::unique_ptr<Bench> bench_;
};

void TestReadValuesWindow::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kValuesRead);
    QVERIFY(!Bench::isHourglassUp());
}

QString TestReadValuesWindow::visibleItem(const char* list) {
    const auto& items = bench_->control<QListWidget>(list);
    const QListWidgetItem* item = items.itemAt(items.viewport()->rect().center());
    return item ? item->text() : QString();
}

QStringList TestReadValuesWindow::optionsOn() {
    QStringList on;
    for (const QString& option : kMicrophones) {
        if (bench_->control<QRadioButton>(option).isChecked())
            on << option;
    }
    return on;
}

void TestReadValuesWindow::beltpackId_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a hundred thousand") << "00000186A0"
                                        << "100000";
    QTest::newRow("0") << "0044300000"
                       << "0";
    QTest::newRow("largest") << "00443FFFFF"
                             << "1048575";
    QTest::newRow("only the last five digits count") << "FFFFF00001"
                                                     << "1";
}

void TestReadValuesWindow::beltpackId() {
    QFETCH(QString, digits);
    QFETCH(QString, shown);
    QVERIFY(bench_->startWith(kRm5).setValue(0x01, digits.toStdString()));
    read();
    QCOMPARE(bench_->text("TextBeltpackId"), shown);
}

void TestReadValuesWindow::frequencyAccuracy_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("shown");
    const auto row = [](bool kirk, const char* digits, const char* shown) {
        QTest::addRow("%s %s", kirk ? "Kirk" : "RM5", digits) << kirk << digits << shown;
    };
    row(false, "00", "-7");
    row(false, "06", "-1");
    row(false, "07", "0");
    row(false, "08", "7");
    row(false, "0E", "1");
    row(false, "0F", "0");
    row(true, "00", "0");
    row(true, "0F", "15");
    row(true, "FF", "255");
}

void TestReadValuesWindow::frequencyAccuracy() {
    QFETCH(bool, kirk);
    QFETCH(QString, digits);
    QFETCH(QString, shown);
    bench_->store.put("RfModule", kirk ? "1" : "0");
    QVERIFY(bench_->startWith(kirk ? kKirk : kRm5).setValue(0x3C, digits.toStdString()));
    read();
    QCOMPARE(bench_->text("TextFreqAccr"), shown);
}

void TestReadValuesWindow::regulation_data() {
    QTest::addColumn<QString>("digits");  // "": not available
    QTest::addColumn<QString>("item");
    QTest::newRow("00") << "00"
                        << "STANDARD - EUROPE";
    QTest::newRow("01") << "01"
                        << "FCC - USA";
    QTest::newRow("02") << "02"
                        << "JDECT - JAPAN";
    QTest::newRow("out of range") << "05"
                                  << "STANDARD - EUROPE";
    QTest::newRow("decimal, so 99") << "99"
                                    << "STANDARD - EUROPE";
    QTest::newRow("1F counts as 1") << "1F"
                                    << "FCC - USA";
    QTest::newRow("0A counts as 0") << "0A"
                                    << "STANDARD - EUROPE";
    QTest::newRow("not available") << ""
                                   << "STANDARD - EUROPE";
}

void TestReadValuesWindow::regulation() {
    QFETCH(QString, digits);
    QFETCH(QString, item);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    if (digits.isEmpty())
        unit.setAvailable(0x10, false);
    else
        QVERIFY(unit.setValue(0x10, digits.toStdString()));
    read();
    QCOMPARE(visibleItem("BPRegulations"), item);
}

void TestReadValuesWindow::hardwareRevision_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("item");
    QTest::newRow("00") << "00"
                        << "RV 4417";
    QTest::newRow("01") << "01"
                        << "MX 318825";
    QTest::newRow("02") << "02"
                        << "MX 318825XT";
    QTest::newRow("out of range") << "03"
                                  << "RV 4417";
    QTest::newRow("1C counts as 1") << "1C"
                                    << "MX 318825";
    QTest::newRow("not available") << ""
                                   << "RV 4417";
}

void TestReadValuesWindow::hardwareRevision() {
    QFETCH(QString, digits);
    QFETCH(QString, item);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    if (digits.isEmpty())
        unit.setAvailable(0x15, false);
    else
        QVERIFY(unit.setValue(0x15, digits.toStdString()));
    read();
    QCOMPARE(visibleItem("BPHWRevision"), item);
}

void TestReadValuesWindow::microphone_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("on");
    QTest::newRow("00") << "00" << QStringList("optionMICBal");
    QTest::newRow("01") << "01" << QStringList("optionMICUnBal");
    QTest::newRow("02") << "02" << QStringList("optionMICElectret");
    QTest::newRow("none of them") << "03" << QStringList("optionMICUnBal");  // as it was
    QTest::newRow("0A counts as 0") << "0A" << QStringList("optionMICBal");
    QTest::newRow("2F counts as 2") << "2F" << QStringList("optionMICElectret");
    QTest::newRow("not available") << "" << QStringList("optionMICBal");
}

void TestReadValuesWindow::microphone() {
    QFETCH(QString, digits);
    QFETCH(QStringList, on);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    hand::click(bench_->control("optionMICUnBal"));
    QCOMPARE(optionsOn(), QStringList("optionMICUnBal"));
    if (digits.isEmpty())
        unit.setAvailable(0x07, false);
    else
        QVERIFY(unit.setValue(0x07, digits.toStdString()));
    read();
    QCOMPARE(optionsOn(), on);
}

void TestReadValuesWindow::batteryAlarm_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<int>("state");
    QTest::newRow("00") << "00" << int(Qt::Unchecked);
    QTest::newRow("01") << "01" << int(Qt::Checked);
    QTest::newRow("02 is greyed") << "02" << int(Qt::PartiallyChecked);
    QTest::newRow("1F counts as 1") << "1F" << int(Qt::Checked);
    QTest::newRow("not available") << "" << int(Qt::Unchecked);
}

void TestReadValuesWindow::batteryAlarm() {
    QFETCH(QString, digits);
    QFETCH(int, state);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    hand::click(bench_->control("checkBattAlarm"));
    QVERIFY(bench_->control<QCheckBox>("checkBattAlarm").isChecked());
    if (digits.isEmpty())
        unit.setAvailable(0x06, false);
    else
        QVERIFY(unit.setValue(0x06, digits.toStdString()));
    read();
    QCOMPARE(int(bench_->control<QCheckBox>("checkBattAlarm").checkState()), state);
}

void TestReadValuesWindow::version_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const char* reply, const char* shown) {
        QTest::newRow(name) << QByteArray(reply) << QString(shown);
    };
    row("20 characters", "!DECT Version:45678X\r", "45678");
    row("15 characters", "!DECT Version:X\r", "");
    row("14 characters", "!DECT Version:\r", "");
    row("after other lines", "# 02BF11\r\n! 0400\r\n!DECT Version:9.9;\r\n", "9.9");
    row("the place counts, not the colon", "#xDECT Version:1234567;\r", ":1234567");
    row("line feed inside", "!DECT Version:1\n23;\r", "1\n23");
    row("silence", "", "Unavailable");
    row("no line end", "!DECT Version:4.07;", "Unavailable");
    row("only other lines", "# 02BF11\r\n! 0400\r\n", "Unavailable");
}

void TestReadValuesWindow::version() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, shown);
    bench_->startWith(kRm5);
    bench_->wire.answer("! 0108", reply);
    read();
    QCOMPARE(bench_->text("TextDectVerBP"), shown);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestReadValuesWindow, QApplication)
#include "test_read_values_window.moc"
