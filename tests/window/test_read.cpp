#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

#include "tests/window/bench.h"

namespace quorvex {

namespace {

const QStringList kOptions{"optionMICBal", "optionMICUnBal", "optionMICElectret"};
const QStringList kWaitingButtons{"CommandSave", "CommandSummary", "CommandWrite"};
const QString kSuccess = "green: Settings read from Beltpack successfully.";

/// A unit of which no two values are the same, nor the ones that a new window shows.
void fill(sim::Beltpack& unit) {
    QVERIFY(unit.setValue(0x01, "00443186A0"));
    QVERIFY(unit.setValue(0x02, "27"));
    QVERIFY(unit.setValue(0x03, "312F45A727"));
    QVERIFY(unit.setValue(0x06, "01"));
    QVERIFY(unit.setValue(0x07, "02"));
    QVERIFY(unit.setValue(0x0E, "03FE0A0B0C"));
    QVERIFY(unit.setValue(0x10, "01"));
    QVERIFY(unit.setValue(0x15, "02"));
    QVERIFY(unit.setValue(0x3D, "2A"));
    unit.setVersion("3.14b");
}

}  // namespace

/// Reading a Beltpack that answers, by a click on the button.
class TestRead : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void wholeRm5();
    void wholeKirk();
    void steps_data();
    void steps();
    void moduleIsDetected_data();
    void moduleIsDetected();
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
    void secondReadShowsTheSecondUnit();
    void thresholdMayBeMissing();

private:
    /// Reads, and expects success and nothing on the way that the journal would hold.
    void read();
    QString visibleItem(const char* list);
    QStringList optionsOn();

    std::unique_ptr<Bench> bench_;
};

void TestRead::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kSuccess);
    QVERIFY(!Bench::isHourglassUp());
}

QString TestRead::visibleItem(const char* list) {
    const auto& items = bench_->control<QListWidget>(list);
    const QListWidgetItem* item = items.itemAt(items.viewport()->rect().center());
    return item ? item->text() : QString();
}

QStringList TestRead::optionsOn() {
    QStringList on;
    for (const QString& option : kOptions) {
        if (bench_->control<QRadioButton>(option).isChecked())
            on << option;
    }
    return on;
}

void TestRead::wholeRm5() {
    fill(bench_->startWith(kRm5));
    QVERIFY(bench_->beltpack().setValue(0x3C, "0A"));
    read();
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
    QCOMPARE(bench_->text("TextBeltpackId"), "100000");
    QCOMPARE(bench_->text("TextEic"), "12F4");
    QCOMPARE(bench_->text("TextFpn"), "*5*A");
    QCOMPARE(bench_->text("TextFps"), "7");
    QCOMPARE(bench_->text("TextParkB"), "112F45A700");
    QCOMPARE(bench_->text("TextPli"), "27        ");
    QCOMPARE(bench_->text("TextRfCarrs"), "03FE0A0B0C");
    QCOMPARE(bench_->text("TextDectVerBP"), "3.14b");
    QCOMPARE(bench_->text("TextFMDev"), "42");
    QCOMPARE(bench_->text("TextFreqAccr"), "5");
    QCOMPARE(bench_->text("TextFreqAccrRx"), "");
    QCOMPARE(bench_->text("TextFreqAccrTx"), "");
    QCOMPARE(bench_->text("TextRssiThr"), "");
    QCOMPARE(visibleItem("BPRegulations"), "FCC - USA");
    QCOMPARE(visibleItem("BPHWRevision"), "MX 318825XT");
    QCOMPARE(optionsOn(), QStringList("optionMICElectret"));
    QCOMPARE(bench_->control<QCheckBox>("checkBattAlarm").checkState(), Qt::Checked);
    QCOMPARE(bench_->control<QCheckBox>("FCCCheckBox").checkState(), Qt::Unchecked);
    for (const QString& button : kWaitingButtons)
        QVERIFY2(bench_->control(button).isEnabled(), qPrintable(button));
    QCOMPARE(bench_->text("CommandCalibBp"), "Calibrate RM5 Module");
}

void TestRead::wholeKirk() {
    bench_->store.put("RfModule", "1");
    fill(bench_->startWith(kKirk));
    QVERIFY(bench_->beltpack().setValue(0x3C, "0A"));
    QVERIFY(bench_->beltpack().setValue(0x39, "F1"));
    QVERIFY(bench_->beltpack().setValue(0x3A, "12"));
    QVERIFY(bench_->beltpack().setValue(0x38, "48"));
    read();
    QCOMPARE(bench_->wire.lines(), readLines(kKirk));
    QCOMPARE(bench_->text("TextBeltpackId"), "100000");
    QCOMPARE(bench_->text("TextParkB"), "112F45A700");
    QCOMPARE(bench_->text("TextRfCarrs"), "03FE0A0B0C");
    QCOMPARE(bench_->text("TextDectVerBP"), "3.14b");
    QCOMPARE(bench_->text("TextFMDev"), "42");
    QCOMPARE(bench_->text("TextFreqAccr"), "10");
    QCOMPARE(bench_->text("TextFreqAccrRx"), "241");
    QCOMPARE(bench_->text("TextFreqAccrTx"), "18");
    QCOMPARE(bench_->text("TextRssiThr"), "72");
    for (const char* field : {"TextFreqAccrRx", "TextFreqAccrTx", "TextRssiThr"})
        QVERIFY(bench_->control(field).isVisible());
    QCOMPARE(visibleItem("BPRegulations"), "FCC - USA");
    QCOMPARE(visibleItem("BPHWRevision"), "MX 318825XT");
    QCOMPARE(optionsOn(), QStringList("optionMICElectret"));
    for (const QString& button : kWaitingButtons)
        QVERIFY2(bench_->control(button).isEnabled(), qPrintable(button));
}

void TestRead::steps_data() {
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

// What the operator sees at each line, and that nothing is enabled before the end.
void TestRead::steps() {
    QFETCH(bool, kirk);
    const sim::RfModule module = kirk ? kKirk : kRm5;
    bench_->store.put("RfModule", kirk ? "1" : "0");
    bench_->startWith(module);
    bool early = false;
    bench_->duringExchange("! 0108", [&] {
        for (const QString& button : kWaitingButtons)
            early = early || bench_->control(button).isEnabled();
    });
    read();
    QStringList expected;
    for (const QString& line : readLines(module))
        expected << line + " | hourglass | black: Reading settings from Beltpack...";
    expected.first() = "# 0139 | pointer | black: ";  // the module is detected first
    QCOMPARE(bench_->steps(), expected);
    QVERIFY(!early);
}

void TestRead::moduleIsDetected_data() {
    QTest::addColumn<QString>("held");
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QString>("caption");
    const auto row = [](const char* held, bool kirk, const QStringList& stored, const char* caption) {
        QTest::addRow("%s meets %s", held, kirk ? "Kirk" : "RM5") << held << kirk << stored << caption;
    };
    row("0", false, {}, "Calibrate RM5 Module");
    row("0", true, {"store RfModule=1"}, "Calibrate Kirk Module");
    row("1", false, {"store RfModule=0"}, "Calibrate RM5 Module");
    row("1", true, {}, "Calibrate Kirk Module");
    // Neither 0 nor 1 is held by hand only, and no read takes it away.
    row("5", false, {}, "Calibrate RM5 Module");
    row("5", true, {}, "Calibrate RM5 Module");
}

void TestRead::moduleIsDetected() {
    QFETCH(QString, held);
    QFETCH(bool, kirk);
    QFETCH(QStringList, stored);
    QFETCH(QString, caption);
    bench_->store.put("RfModule", held.toStdString());
    bench_->startWith(kirk ? kKirk : kRm5);
    // An unchanged type is not laid out again either: what was moved stays.
    auto& moved = bench_->control("TextFreqAdjA");
    moved.move(1, 1);
    QString captionAtFirstParameter;
    bench_->duringExchange("# 0101", [&] { captionAtFirstParameter = bench_->text("CommandCalibBp"); });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), stored);
    QCOMPARE(bench_->text("CommandCalibBp"), caption);
    QCOMPARE(captionAtFirstParameter, caption);
    QCOMPARE(moved.pos() == QPoint(1, 1), stored.isEmpty());
    QCOMPARE(bench_->status(), kSuccess);
}

void TestRead::beltpackId_data() {
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

void TestRead::beltpackId() {
    QFETCH(QString, digits);
    QFETCH(QString, shown);
    QVERIFY(bench_->startWith(kRm5).setValue(0x01, digits.toStdString()));
    read();
    QCOMPARE(bench_->text("TextBeltpackId"), shown);
}

void TestRead::frequencyAccuracy_data() {
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

void TestRead::frequencyAccuracy() {
    QFETCH(bool, kirk);
    QFETCH(QString, digits);
    QFETCH(QString, shown);
    bench_->store.put("RfModule", kirk ? "1" : "0");
    QVERIFY(bench_->startWith(kirk ? kKirk : kRm5).setValue(0x3C, digits.toStdString()));
    read();
    QCOMPARE(bench_->text("TextFreqAccr"), shown);
}

void TestRead::regulation_data() {
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

void TestRead::regulation() {
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

void TestRead::hardwareRevision_data() {
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

void TestRead::hardwareRevision() {
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

void TestRead::microphone_data() {
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

void TestRead::microphone() {
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

void TestRead::batteryAlarm_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<int>("state");
    QTest::newRow("00") << "00" << int(Qt::Unchecked);
    QTest::newRow("01") << "01" << int(Qt::Checked);
    QTest::newRow("02 is greyed") << "02" << int(Qt::PartiallyChecked);
    QTest::newRow("1F counts as 1") << "1F" << int(Qt::Checked);
    QTest::newRow("not available") << "" << int(Qt::Unchecked);
}

void TestRead::batteryAlarm() {
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

void TestRead::version_data() {
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
    row("silence", "", "Unavailable");
    row("no line end", "!DECT Version:4.07;", "Unavailable");
    row("only other lines", "# 02BF11\r\n! 0400\r\n", "Unavailable");
}

void TestRead::version() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, shown);
    bench_->startWith(kRm5);
    bench_->wire.answer("! 0108", reply);
    read();
    QCOMPARE(bench_->text("TextDectVerBP"), shown);
}

void TestRead::secondReadShowsTheSecondUnit() {
    fill(bench_->startWith(kRm5));
    read();
    // Another unit on the same port, with less to say.
    sim::Beltpack other(kKirk);
    QVERIFY(other.setValue(0x3C, "09"));
    other.setAvailable(0x10, false);
    other.setAvailable(0x15, false);
    bench_->wire.plugIn(&other);
    bench_->wire.forgetLines();
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList("store RfModule=1"));
    QCOMPARE(bench_->status(), kSuccess);
    QCOMPARE(bench_->wire.lines(), readLines(kKirk));
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
    // The ends of a complete PARK B stay.
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
    QCOMPARE(bench_->text("TextFreqAccr"), "9");
    QCOMPARE(bench_->text("TextDectVerBP"), "4.07");
    // The lists are filled anew, and nothing is known to scroll them to.
    QCOMPARE(visibleItem("BPRegulations"), "STANDARD - EUROPE");
    QCOMPARE(visibleItem("BPHWRevision"), "RV 4417");
    QCOMPARE(bench_->control<QListWidget>("BPRegulations").count(), 3);
    QCOMPARE(bench_->control<QListWidget>("BPHWRevision").count(), 3);
    bench_->wire.plugIn(nullptr);
}

void TestRead::thresholdMayBeMissing() {
    bench_->store.put("RfModule", "1");
    bench_->startWith(kKirk);
    read();
    QCOMPARE(bench_->text("TextRssiThr"), "72");
    bench_->beltpack().setAvailable(0x38, false);
    QVERIFY(bench_->beltpack().setValue(0x3C, "11"));
    read();
    QCOMPARE(bench_->text("TextRssiThr"), "72");
    QCOMPARE(bench_->text("TextFreqAccr"), "17");
}

}  // namespace quorvex

QTEST_MAIN(quorvex::TestRead)
#include "test_read.moc"
