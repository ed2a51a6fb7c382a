#include "simulator/active_antenna.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kTbr6Sent = "! 0E030002100ECE00001503FF000000";
const QStringList kFields{"TextFmDevA",     "TextFmDevB",     "TextFreqAdjA",
                          "TextFreqAdjB",   "TextFreqAdjRxA", "TextFreqAdjTxA",
                          "TextFreqAdjRxB", "TextFreqAdjTxB", "TextRssiThr"};

const QStringList kStart{"# 0101 | hourglass | black: Reading FM Deviation...",
                         "# 0102 | hourglass | black: Reading FM Deviation...",
                         "# 0107 | hourglass | black: Detecting RF module type..."};
const QStringList kRm5Lines{"# 0105", "# 0106"};
const QStringList kKirkWindowLines{"# 0105", "# 0107", "# 0109", "# 0106", "# 0108", "# 010a"};

QStringList frequencySteps(sim::RfModule module) {
    QStringList steps;
    for (const QString& line : module == kKirk ? kKirkWindowLines : kRm5Lines)
        steps << line + " | hourglass | black: Reading Frequency Accuracy...";
    return steps;
}

const QString kTbr6Step = kTbr6Sent + " | hourglass | black: Setting TBR6 mode...";

}  // namespace

/// The page "Active Antenna" with an antenna on the port.
class TestAntennaReadWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void cleanup() { bench_.reset(); }
    void reads_data();
    void reads();
    void equalTypeTouchesNothing();
    void nobodyAnswers_data();
    void nobodyAnswers();
    void noAcknowledgement_data();
    void noAcknowledgement();
    void detectedTypeStaysAfterAFailure();
    void readsByKeyboard_data();
    void readsByKeyboard();

private:
    /// The window with an antenna on the port; the page is in front.
    void startWith(sim::RfModule module, const QString& storedType);
    void fill(const QString& text);
    QStringList fields();

    std::unique_ptr<sim::ActiveAntenna> antenna_;
    std::unique_ptr<Bench> bench_;
};

void TestAntennaReadWindow::startWith(sim::RfModule module, const QString& storedType) {
    antenna_ = std::make_unique<sim::ActiveAntenna>(module);
    bench_->wire.plugIn(antenna_.get());
    bench_->store.put("RfModule", storedType.toStdString());
    bench_->start();
    bench_->clickTab("Active Antenna");
    fill("old");
    bench_->journal.take();
}

void TestAntennaReadWindow::fill(const QString& text) {
    for (const QString& name : kFields)
        bench_->control<QLineEdit>(name).setText(text);
}

QStringList TestAntennaReadWindow::fields() {
    QStringList texts;
    for (const QString& name : kFields)
        texts << bench_->text(name);
    return texts;
}

void TestAntennaReadWindow::reads_data() {
    QTest::addColumn<bool>("isKirk");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("tbr6");
    for (const bool isKirk : {false, true}) {
        for (const char* stored : {"0", "1", "5"}) {
            for (const bool tbr6 : {false, true})
                QTest::addRow("%s, stored %s, %s", isKirk ? "Kirk" : "RM5", stored, tbr6 ? "TBR6" : "read")
                    << isKirk << stored << tbr6;
        }
    }
}

void TestAntennaReadWindow::reads() {
    QFETCH(bool, isKirk);
    QFETCH(QString, stored);
    QFETCH(bool, tbr6);
    const sim::RfModule module = isKirk ? kKirk : kRm5;
    startWith(module, stored);

    bench_->click(tbr6 ? "CommandSetTbr6" : "CommandRdSettingsAA");

    QCOMPARE(bench_->steps(),
             kStart + frequencySteps(module) + (tbr6 ? QStringList{kTbr6Step} : QStringList{}));
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench_->status(),
             tbr6 ? "black: Active Antenna is in TBR6 Mode" : "black: Settings read from Active Antenna");
    QCOMPARE(antenna_->inTbr6Mode(), tbr6);
    const QStringList rm5{"33", "40", "3", "-4", "old", "old", "old", "old", "old"};
    const QStringList kirk{"33", "40", "4", "3", "3", "2", "5", "6", "old"};
    QCOMPARE(fields(), isKirk ? kirk : rm5);
    const QString detected = isKirk ? "1" : "0";
    QCOMPARE(bench_->journal.take(),
             stored == detected ? QStringList() : QStringList("store RfModule=" + detected));
    const QString make = isKirk ? "Kirk" : "RM5";
    QCOMPARE(bench_->text("CommandCalibBp"), "Calibrate " + make + " Module");
    QCOMPARE(bench_->text("CommandCalibAAA"), "Calibrate " + make + " Module A");
    QCOMPARE(bench_->text("CommandCalibAAB"), "Calibrate " + make + " Module B");
    for (const char* name : {"TextFreqAdjRxA", "TextFreqAdjTxB", "LabelMidA", "TextRssiThr"})
        QCOMPARE(bench_->control(name).isVisibleTo(bench_->control(name).parentWidget()), isKirk);
}

void TestAntennaReadWindow::equalTypeTouchesNothing() {
    startWith(kKirk, "1");
    auto& button = bench_->control<QPushButton>("CommandCalibAAA");
    button.setText("as it was");
    bench_->click("CommandRdSettingsAA");
    QCOMPARE(bench_->status(), "black: Settings read from Active Antenna");
    QCOMPARE(button.text(), "as it was");
    QCOMPARE(bench_->journal.take(), QStringList());
}

void TestAntennaReadWindow::nobodyAnswers_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("read") << "CommandRdSettingsAA";
    QTest::newRow("TBR6") << "CommandSetTbr6";
}

void TestAntennaReadWindow::nobodyAnswers() {
    QFETCH(QString, button);
    startWith(kRm5, "1");
    bench_->wire.plugIn(nullptr);
    const std::int64_t start = bench_->clock.nowMs;
    QString statusAtBox;
    bool isHourglassAtBox = true;
    bench_->person.beforeOk([&](QMessageBox& box) {
        statusAtBox = bench_->status();
        isHourglassAtBox = Bench::isHourglassUp();
        QCOMPARE(box.standardButtons(), QMessageBox::Ok);
    });
    bench_->click(button);
    QCOMPARE(bench_->journal.take(), QStringList(failureEntry("No Response from Active Antenna!")));
    QCOMPARE(bench_->wire.lines(), QStringList("# 0101"));
    QCOMPARE(bench_->clock.nowMs - start, std::int64_t{12'000});
    QCOMPARE(statusAtBox, "black: Reading FM Deviation...");
    QVERIFY(!isHourglassAtBox);
    QCOMPARE(bench_->status(), "black: Error communicating with Active Antenna.");
    QCOMPARE(fields().count("old"), kFields.size());
    QVERIFY(!Bench::isHourglassUp());
}

void TestAntennaReadWindow::noAcknowledgement_data() {
    QTest::addColumn<bool>("isKirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

void TestAntennaReadWindow::noAcknowledgement() {
    QFETCH(bool, isKirk);
    startWith(isKirk ? kKirk : kRm5, isKirk ? "1" : "0");
    antenna_->addFault(sim::parseFault("no-tbr6-ack"));
    bench_->click("CommandSetTbr6");
    QCOMPARE(bench_->journal.take(), QStringList(failureEntry("No Response from Active Antenna!")));
    QCOMPARE(bench_->wire.lines().last(), kTbr6Sent);
    QCOMPARE(bench_->status(), "black: Error communicating with Active Antenna.");
    QCOMPARE(bench_->text("TextFreqAdjB"), isKirk ? "3" : "-4");
    QCOMPARE(bench_->text("TextFreqAdjTxB"), isKirk ? "6" : "old");
    QVERIFY(!Bench::isHourglassUp());
}

void TestAntennaReadWindow::detectedTypeStaysAfterAFailure() {
    startWith(kKirk, "0");
    antenna_->addFault(sim::parseFault("no-reply=09"));
    bench_->click("CommandRdSettingsAA");
    QCOMPARE(bench_->journal.take(),
             QStringList({"store RfModule=1", failureEntry("No Response from Active Antenna!")}));
    QCOMPARE(bench_->wire.lines().last(), "# 0109");
    QCOMPARE(bench_->text("CommandCalibAAA"), "Calibrate Kirk Module A");
    // What was read before is shown, the rest is as it was.
    QCOMPARE(fields(), QStringList({"33", "40", "4", "old", "3", "old", "old", "old", "old"}));
}

void TestAntennaReadWindow::readsByKeyboard_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void TestAntennaReadWindow::readsByKeyboard() {
    QFETCH(Qt::Key, key);
    startWith(kRm5, "0");
    auto& button = bench_->control<QPushButton>("CommandRdSettingsAA");
    button.setFocus();
    QTest::keyClick(&button, key);
    QCOMPARE(bench_->status(), "black: Settings read from Active Antenna");
    QCOMPARE(bench_->text("TextFmDevA"), "33");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAntennaReadWindow, QApplication)
#include "test_antenna_read_window.moc"
