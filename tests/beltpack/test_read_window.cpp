#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QStringList kMicOptions{"optionMICBal", "optionMICUnBal", "optionMICElectret"};
const QStringList kWaitingButtons{"CommandSave", "CommandSummary", "CommandWrite"};
const QString kWindowRead = "green: Settings read from Beltpack successfully.";

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
class TestReadWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void wholeRm5();
    void wholeKirk();
    void steps_data();
    void steps();
    void moduleIsDetected_data();
    void moduleIsDetected();
    void secondReadShowsTheSecondUnit();
    void thresholdMayBeMissing();

private:
    /// Reads, and expects success and nothing on the way that the journal would hold.
    void read();
    QString visibleItem(const char* list);
    QStringList optionsOn();

    std::unique_ptr<Bench> bench_;
};

void TestReadWindow::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kWindowRead);
    QVERIFY(!Bench::isHourglassUp());
}

QString TestReadWindow::visibleItem(const char* list) {
    const auto& items = bench_->control<QListWidget>(list);
    const QListWidgetItem* item = items.itemAt(items.viewport()->rect().center());
    return item ? item->text() : QString();
}

QStringList TestReadWindow::optionsOn() {
    QStringList on;
    for (const QString& option : kMicOptions) {
        if (bench_->control<QRadioButton>(option).isChecked())
            on << option;
    }
    return on;
}

void TestReadWindow::wholeRm5() {
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

void TestReadWindow::wholeKirk() {
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

void TestReadWindow::steps_data() {
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

// What the operator sees at each line, and that nothing is enabled before the end.
void TestReadWindow::steps() {
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

void TestReadWindow::moduleIsDetected_data() {
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

void TestReadWindow::moduleIsDetected() {
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
    QCOMPARE(bench_->status(), kWindowRead);
}

void TestReadWindow::secondReadShowsTheSecondUnit() {
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
    QCOMPARE(bench_->status(), kWindowRead);
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

void TestReadWindow::thresholdMayBeMissing() {
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

QUORVEX_TEST(quorvex::TestReadWindow, QApplication)
#include "test_read_window.moc"
