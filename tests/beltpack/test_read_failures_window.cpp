#include <QListWidget>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kNoResponse = failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kShownSuccess = "green: Settings read from Beltpack successfully.";
const QString kShownFailure = "black: Error communicating with Beltpack.";
const QString kReading = "black: Reading settings from Beltpack...";

QString refused(const QString& value) {
    return failureEntry("\"" + value + "\" is not a valid System Id.\r\nThe System ID fields were emptied.");
}

}  // namespace

/// Reading a Beltpack that does not answer, or not as it should.
class TestReadFailuresWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void silentUnit();
    void silentUnitKeepsTheFields();
    void silentFrom_data();
    void silentFrom();
    void unavailableParameter_data();
    void unavailableParameter();
    void onlyThePsn();
    void shortReplies_data();
    void shortReplies();
    void refusedSystemId_data();
    void refusedSystemId();
    void blankSystemId();
    void batteryAlarmThatCannotBeShown();
    void pulledCable_data();
    void pulledCable();
    void worksAgain();

private:
    void setModule(bool kirk) { bench_->store.put("RfModule", kirk ? "1" : "0"); }
    QList<bool> buttons();

    std::unique_ptr<Bench> bench_;
};

QList<bool> TestReadFailuresWindow::buttons() {
    QList<bool> enabled;
    for (const char* button : {"CommandWrite", "CommandSave", "CommandSummary"})
        enabled << bench_->control(button).isEnabled();
    return enabled;
}

void TestReadFailuresWindow::silentUnit() {
    bench_->start();
    bench_->journal.take();
    bool hourglassAtBox = true;
    QString statusAtBox;
    bench_->person.beforeOk([&](QMessageBox&) {
        hourglassAtBox = Bench::isHourglassUp();
        statusAtBox = bench_->status();
    });
    bench_->click("CommandRdSettingsBp");
    // Silence counts as a Kirk, and stays stored although the rest fails.
    QCOMPARE(bench_->journal.take(), QStringList({"store RfModule=1", kNoResponse}));
    QCOMPARE(bench_->steps(),
             QStringList({"# 0139 | pointer | black: ", "# 0101 | hourglass | " + kReading}));
    QCOMPARE(bench_->text("CommandCalibBp"), "Calibrate Kirk Module");
    QCOMPARE(bench_->status(), kShownFailure);
    QCOMPARE(statusAtBox, kShownFailure);
    QVERIFY(!hourglassAtBox);
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(buttons(), QList<bool>({false, false, false}));
    QCOMPARE(bench_->clock.nowMs, 2 * 2000);
    // The lists were filled before the first line went out.
    QCOMPARE(bench_->control<QListWidget>("BPRegulations").count(), 3);
    QCOMPARE(bench_->control<QListWidget>("BPHWRevision").count(), 3);
}

void TestReadFailuresWindow::silentUnitKeepsTheFields() {
    setModule(true);
    bench_->startWith(kKirk);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->status(), kShownSuccess);
    bench_->wire.plugIn(nullptr);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
    QCOMPARE(bench_->text("TextDectVerBP"), "4.07");
    QCOMPARE(buttons(), QList<bool>({true, true, true}));
}

// The parameters are all read by then; only the calibration values fail the read.
void TestReadFailuresWindow::silentFrom_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<QString>("fmDeviation");
    QTest::addColumn<QString>("accuracy");
    QTest::addColumn<QString>("receive");
    QTest::newRow("RM5, FM deviation") << false << 0x3D << "# 013D"
                                       << ""
                                       << ""
                                       << "";
    QTest::newRow("RM5, frequency") << false << 0x3C << "# 013C"
                                    << "33"
                                    << ""
                                    << "";
    QTest::newRow("Kirk, FM deviation") << true << 0x3D << "# 013D"
                                        << ""
                                        << ""
                                        << "";
    QTest::newRow("Kirk, frequency") << true << 0x3C << "# 013C"
                                     << "33"
                                     << ""
                                     << "";
    QTest::newRow("Kirk, receive") << true << 0x39 << "# 0139"
                                   << "33"
                                   << "4"
                                   << "";
    QTest::newRow("Kirk, transmit") << true << 0x3A << "# 013a"
                                    << "33"
                                    << "4"
                                    << "3";
}

void TestReadFailuresWindow::silentFrom() {
    QFETCH(bool, kirk);
    QFETCH(int, number);
    QFETCH(QString, lastLine);
    QFETCH(QString, fmDeviation);
    QFETCH(QString, accuracy);
    QFETCH(QString, receive);
    setModule(kirk);
    bench_->startWith(kirk ? kKirk : kRm5).setAvailable(number, false);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    QCOMPARE(bench_->wire.lines().last(), lastLine);
    QCOMPARE(bench_->status(), kShownFailure);
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench_->text("TextFMDev"), fmDeviation);
    QCOMPARE(bench_->text("TextFreqAccr"), accuracy);
    QCOMPARE(bench_->text("TextFreqAccrRx"), receive);
    QCOMPARE(bench_->text("TextFreqAccrTx"), "");
    // The identity comes after the calibration values.
    QCOMPARE(bench_->text("TextBeltpackId"), "");
    QCOMPARE(bench_->text("TextParkB"), "");
    QCOMPARE(bench_->text("TextDectVerBP"), "");
    QCOMPARE(buttons(), QList<bool>({false, false, false}));
}

void TestReadFailuresWindow::unavailableParameter_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("status");
    const auto row = [](int number, const char* status) {
        QTest::addRow("%02X", static_cast<unsigned>(number)) << number << QString(status);
    };
    row(0x02, "red: Option System Id Length    unavailable!");
    row(0x04, "red: Option Headset Limit       unavailable!");
    row(0x05, "red: Option RSSI Warning Alarm  unavailable!");
    row(0x06, "red: Option Low Battery Alarm   unavailable!");
    row(0x07, "red: Option Headset Mic Type    unavailable!");
    row(0x08, "red: Option Headset Mic Gain    unavailable!");
    row(0x09, "red: Option Headphone Off Level unavailable!");
    row(0x0A, "red: Option Sidetone Volume     unavailable!");
    row(0x0B, "red: Option Master Volume       unavailable!");
    row(0x0C, "red: Option Programming Mode    unavailable!");
    row(0x0D, "red: Option PTT Switch          unavailable!");
    row(0x0E, "red: Option RD Carrier Mask     unavailable!");
    row(0x0F, "red: Option Page Change Mode    unavailable!");
    row(0x10, "red: Option FCC Enabled         unavailable!");
    row(0x11, "red: Option Keylock             unavailable!");
    row(0x12, "red: Option Vibrator Enabled    unavailable!");
    row(0x13, "red: Option Mic Noise Gate Enablunavailable!");
    row(0x14, "red: Option Keytap Mode         unavailable!");
    row(0x15, "red: Option Feature Map         unavailable!");
}

void TestReadFailuresWindow::unavailableParameter() {
    QFETCH(int, number);
    QFETCH(QString, status);
    bench_->startWith(kRm5).setAvailable(number, false);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kShownSuccess);
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
    QCOMPARE(bench_->clock.nowMs, 2000 + (readLines(kRm5).size() - 1) * Wire::kTransitMs);
    // Shown from the next line on, until the success.
    QStringList expected;
    for (const QString& line : readLines(kRm5))
        expected << line + " | hourglass | " + (expected.size() > number ? status : kReading);
    expected.first() = "# 0139 | pointer | black: ";
    QCOMPARE(bench_->steps(), expected);
    if (number == 0x02)
        QCOMPARE(bench_->text("TextPli"), "N/A       ");
    if (number == 0x0E)
        QCOMPARE(bench_->text("TextRfCarrs"), "N/A       ");
}

void TestReadFailuresWindow::onlyThePsn() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    for (int number = 2; number <= 21; ++number)
        unit.setAvailable(number, false);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kShownSuccess);
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
    QCOMPARE(buttons(), QList<bool>({true, true, true}));
}

void TestReadFailuresWindow::shortReplies_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("PSN cut short") << "# 0101" << QByteArray("# 0681004431");
    QTest::newRow("PSN one digit short") << "# 0101" << QByteArray("# 0681004431234\r\n");
    QTest::newRow("PSN without a start character") << "# 0101" << QByteArray("0681004430303900\r\n");
    QTest::newRow("line ends only") << "# 0101" << QByteArray("#\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n");
    QTest::newRow("FM deviation cut short") << "# 013D" << QByteArray("# 02BD2\r\n");
}

void TestReadFailuresWindow::shortReplies() {
    QFETCH(QString, line);
    QFETCH(QByteArray, reply);
    bench_->startWith(kRm5);
    bench_->wire.answer(line, reply);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    QCOMPARE(bench_->wire.lines().last(), line);
    QCOMPARE(bench_->status(), kShownFailure);
    QVERIFY(!Bench::isHourglassUp());
}

void TestReadFailuresWindow::refusedSystemId_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("value");
    QTest::newRow("not available") << QByteArray() << "";  // the red text has told
    QTest::newRow("EIC is not hexadecimal") << QByteArray("# 0683100G1E1000\r\n") << "100G1E1000";
    QTest::newRow("FPS is not hexadecimal") << QByteArray("# 0683100ECE1Z00\r\n") << "100ECE1Z00";
    QTest::newRow("hidden by noise") << QByteArray("# 06831??ECE1000\r\n") << "1??ECE1000";
    QTest::newRow("with a letter of another alphabet") << QByteArray(
                                                              "# 06831\xE9"
                                                              "0ECE1000\r\n")
                                                       << QString::fromLatin1(
                                                              "1\xE9"
                                                              "0ECE1000");
}

void TestReadFailuresWindow::refusedSystemId() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, value);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    bench_->wire.forgetLines();
    if (reply.isEmpty())
        unit.setAvailable(0x03, false);
    else
        bench_->wire.answer("# 0103", reply);
    QVERIFY(unit.setValue(0x0E, "0123456789"));
    QStringList atBox;
    bench_->person.beforeOk([&](QMessageBox&) {
        atBox << (Bench::isHourglassUp() ? "hourglass" : "pointer") << bench_->wire.lines().last()
              << bench_->text("TextRfCarrs");
    });
    bench_->click("CommandRdSettingsBp");
    // Told once the read has come to its good end.
    QCOMPARE(bench_->journal.take(), value.isEmpty() ? QStringList() : QStringList(refused(value)));
    QCOMPARE(atBox, value.isEmpty() ? QStringList() : QStringList({"pointer", "! 0108", "0123456789"}));
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
    QCOMPARE(bench_->status(), kShownSuccess);
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench_->text("TextRfCarrs"), "0123456789");
    // The System ID of the unit before must not stay there, ready to be sent to this one.
    for (const char* field : {"TextEic", "TextFpn", "TextFps", "TextParkB"})
        QCOMPARE(bench_->text(field), "");
    QCOMPARE(buttons(), QList<bool>({true, true, true}));
}

void TestReadFailuresWindow::blankSystemId() {
    bench_->startWith(kRm5);
    bench_->wire.answer("# 0103", "# 0683          \r\n");
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kShownSuccess);
    QCOMPARE(bench_->text("TextEic"), "0000");
    QCOMPARE(bench_->text("TextFpn"), "* * ");
    QCOMPARE(bench_->text("TextFps"), "0");
    QCOMPARE(bench_->text("TextParkB"), "10000  000");
}

void TestReadFailuresWindow::batteryAlarmThatCannotBeShown() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    QVERIFY(unit.setValue(0x06, "03"));
    QVERIFY(unit.setValue(0x10, "02"));
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    QCOMPARE(bench_->wire.lines().last(), "# 013C");  // the version is not asked for any more
    QCOMPARE(bench_->status(), kShownFailure);
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
    QCOMPARE(bench_->control<QListWidget>("BPRegulations").itemAt(5, 5)->text(), "JDECT - JAPAN");
    QCOMPARE(buttons(), QList<bool>({false, false, false}));
}

void TestReadFailuresWindow::pulledCable_data() {
    QTest::addColumn<QString>("line");
    QTest::newRow("detection") << "# 0139";  // tells nothing of the module
    QTest::newRow("PSN") << "# 0101";
    QTest::newRow("parameter") << "# 0107";
    QTest::newRow("FM deviation") << "# 013D";
}

void TestReadFailuresWindow::pulledCable() {
    QFETCH(QString, line);
    bench_->startWith(kRm5);
    bench_->duringExchange(line, [&] { bench_->wire.pullCable(); });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    QCOMPARE(bench_->wire.lines().last(), line);
    QCOMPARE(bench_->status(), kShownFailure);
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(bench_->clock.nowMs < 2000);
}

void TestReadFailuresWindow::worksAgain() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    unit.setAvailable(0x3D, false);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList(kNoResponse));
    unit.setAvailable(0x3D, true);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kShownSuccess);
    QCOMPARE(bench_->text("TextFMDev"), "33");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestReadFailuresWindow, QApplication)
#include "test_read_failures_window.moc"
