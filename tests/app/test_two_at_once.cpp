#include <QListWidget>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kFirstFails = failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kBothEnd = "green: Settings read from Beltpack successfully.";
const QString kFailure = "black: Error communicating with Beltpack.";

}  // namespace

/// The window stays clickable while a reply is awaited. A second operation shares the port with the first:
/// it runs to its end inside the first one's wait, which then finds its reply gone.
class TestTwoAtOnce : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void secondReadWhileThePsnIsAwaited();
    void secondReadWhileAParameterIsAwaited();
    void secondReadMeetsTheFirstReply();
    void versionWhileAParameterIsAwaited();
    void antennaVersionWhileAParameterIsAwaited();
    void readWhileTheVersionIsAwaited();
    void manyReadsInEachOther();
    void portIsChosenMeanwhile();
    void portCannotBeOpenedMeanwhile();
    void moduleIsChosenMeanwhile();
    void aboutMeanwhile();
    void pagesTurnMeanwhile();

private:
    QStringList linesWithInsert(const QString& after, const QStringList& inserted);

    std::unique_ptr<Bench> bench_;
};

/// The lines of an RM5's read with others in between, behind the line `after`.
QStringList TestTwoAtOnce::linesWithInsert(const QString& after, const QStringList& inserted) {
    QStringList lines = readLines(kRm5);
    const qsizetype at = lines.indexOf(after) + 1;
    for (qsizetype i = 0; i < inserted.size(); ++i)
        lines.insert(at + i, inserted[i]);
    return lines;
}

void TestTwoAtOnce::secondReadWhileThePsnIsAwaited() {
    bench_->startWith(kRm5).addFault(sim::parseFault("no-reply=01,once"));
    QString statusInBetween;
    bool hourglassInBetween = true;
    bench_->duringExchange("# 0101", [&] {
        bench_->click("CommandRdSettingsBp");
        statusInBetween = bench_->status();
        hourglassInBetween = Bench::isHourglassUp();
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(statusInBetween, kBothEnd);
    QVERIFY(!hourglassInBetween);  // there is one pointer, and the second read has put it back
    QCOMPARE(bench_->journal.take(), QStringList(kFirstFails));
    QCOMPARE(bench_->wire.lines(), QStringList({"# 0139", "# 0101"}) + readLines(kRm5));
    QCOMPARE(bench_->status(), kFailure);
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(bench_->control("CommandWrite").isEnabled());
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
}

void TestTwoAtOnce::secondReadWhileAParameterIsAwaited() {
    bench_->startWith(kRm5).addFault(sim::parseFault("no-reply=05,once"));
    bench_->duringExchange("# 0105", [&] { bench_->click("CommandRdSettingsBp"); });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), linesWithInsert("# 0105", readLines(kRm5)));
    QCOMPARE(bench_->status(), kBothEnd);
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench_->control<QListWidget>("BPRegulations").count(), 3);
}

// What comes for the first read is read by the second one, which takes it for the answer of a Kirk.
void TestTwoAtOnce::secondReadMeetsTheFirstReply() {
    bench_->startWith(kRm5);
    bench_->duringExchange("# 0105", [&] { bench_->click("CommandRdSettingsBp"); });
    bench_->click("CommandRdSettingsBp");
    const QStringList whole = readLines(kKirk);
    const QStringList each = whole.mid(0, whole.lastIndexOf("# 0139") + 1);  // an RM5's answer is too short
    QCOMPARE(bench_->journal.take(), QStringList({"store RfModule=1", kFirstFails, kFirstFails}));
    const qsizetype at = each.indexOf("# 0105") + 1;
    QCOMPARE(bench_->wire.lines(), each.mid(0, at) + each + each.mid(at));
    QCOMPARE(bench_->status(), kFailure);
    QVERIFY(!Bench::isHourglassUp());
}

void TestTwoAtOnce::versionWhileAParameterIsAwaited() {
    bench_->startWith(kRm5);
    bench_->duringExchange("# 0105", [&] {
        bench_->click("CommandDectPPVerReq");
        QCOMPARE(bench_->text("TextDectVerBP"), "4.07");
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), linesWithInsert("# 0105", {"! 0108"}));
    QCOMPARE(bench_->status(), kBothEnd);
}

void TestTwoAtOnce::antennaVersionWhileAParameterIsAwaited() {
    bench_->startWith(kRm5);
    bench_->duringExchange("# 0105", [&] {
        bench_->clickTab("Active Antenna");
        bench_->click("CommandDectVerReq");
        QCOMPARE(bench_->text("TextDectVer"), "Unavailable");
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), linesWithInsert("# 0105", {"! 0107"}));
    QCOMPARE(bench_->status(), kBothEnd);
}

void TestTwoAtOnce::readWhileTheVersionIsAwaited() {
    bench_->startWith(kRm5).addFault(sim::parseFault("no-version,once"));
    bench_->duringExchange("! 0108", [&] { bench_->click("CommandRdSettingsBp"); });
    bench_->click("CommandDectPPVerReq");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), QStringList("! 0108") + readLines(kRm5));
    QCOMPARE(bench_->status(), kBothEnd);
    // The first request ends last, and in silence.
    QCOMPARE(bench_->text("TextDectVerBP"), "Unavailable");
}

// Each press starts one more read inside the wait of the one before, as long as there is room; then a press
// does nothing, and all of them come to their end.
void TestTwoAtOnce::manyReadsInEachOther() {
    bench_->start();
    bench_->journal.take();
    constexpr int kPresses = 100;
    int presses = 0;
    std::function<void()> press = [&] {
        if (++presses > kPresses)
            return;
        bench_->loop.inNextWait(press);
        bench_->click("CommandRdSettingsBp");
    };
    bench_->loop.inNextWait(press);
    bench_->click("CommandRdSettingsBp");
    const QStringList happened = bench_->journal.take();
    QVERIFY2(happened.size() > 10, qPrintable(QString::number(happened.size())));
    for (const QString& entry : happened)
        QVERIFY2(entry == kFirstFails || entry == "store RfModule=1", qPrintable(entry));
    QCOMPARE(bench_->status(), kFailure);
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(bench_->window().isVisible());
}

void TestTwoAtOnce::portIsChosenMeanwhile() {
    bench_->startWith(kRm5);
    bench_->person.plan([](QDialog& dialog) { hand::click(*dialog.findChild<QWidget*>("CmdOK")); });
    bench_->duringExchange("# 0105", [&] { bench_->clickMenu("mnuComPort"); });
    bench_->click("CommandRdSettingsBp");
    // Another unit may be there now, on the same port too: nothing of the read reaches it.
    QCOMPARE(bench_->journal.take(), QStringList({dialogEntry("ComSelect", "Select Serial Port"), "close",
                                                  "open 1", "store ComPort=1", kFirstFails}));
    QCOMPARE(bench_->status(), kFailure);
    QCOMPARE(bench_->wire.lines().last(), "# 0105");
    QVERIFY(!Bench::isHourglassUp());
}

void TestTwoAtOnce::portCannotBeOpenedMeanwhile() {
    bench_->startWith(kRm5);
    bench_->wire.refuse(1);
    bench_->person.plan([](QDialog& dialog) {
        hand::click(*dialog.findChild<QWidget*>("CmdOK"));
        hand::click(*dialog.findChild<QWidget*>("CmdCancel"));
    });
    bench_->duringExchange("# 0105", [&] { bench_->clickMenu("mnuComPort"); });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(),
             QStringList({dialogEntry("ComSelect", "Select Serial Port"), "close", "cannot open 1",
                          failureEntry("Could not open COM 1"), kFirstFails}));
    QCOMPARE(bench_->status(), kFailure);
    QCOMPARE(bench_->text("LabelComPort"), "No Comms");
    QVERIFY(!Bench::isHourglassUp());
}

void TestTwoAtOnce::moduleIsChosenMeanwhile() {
    bench_->startWith(kRm5);
    bench_->person.plan([](QDialog& dialog) {
        hand::click(*dialog.findChild<QWidget*>("OptionKirk"));
        hand::click(*dialog.findChild<QWidget*>("OKButton"));
    });
    bench_->duringExchange("# 0105", [&] { bench_->clickMenu("mnuRfModule"); });
    bench_->click("CommandRdSettingsBp");
    // From then on the unit is asked for what a Kirk has; an RM5 answers that with six characters.
    QCOMPARE(bench_->journal.take(), QStringList({dialogEntry("FormRfModule", "Select Type Of RF Module"),
                                                  "store RfModule=1", kFirstFails}));
    QCOMPARE(bench_->wire.lines().last(), "# 0139");
    QCOMPARE(bench_->text("TextFreqAccr"), "10");
    QCOMPARE(bench_->status(), kFailure);
}

void TestTwoAtOnce::aboutMeanwhile() {
    bench_->startWith(kRm5);
    bench_->duringExchange("# 0105", [&] { bench_->clickMenu("mnuAbout"); });
    bench_->click("CommandRdSettingsBp");
    const QStringList happened = bench_->journal.take();
    QCOMPARE(happened.size(), 1);
    QVERIFY2(happened.first().startsWith("box information \"About Quorvex Config\" [OK]: "),
             qPrintable(happened.first()));
    QCOMPARE(bench_->status(), kBothEnd);
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
}

void TestTwoAtOnce::pagesTurnMeanwhile() {
    bench_->startWith(kRm5);
    bench_->duringExchange("# 0105", [&] {
        bench_->clickTab("R-Screen");
        bench_->clickTab("Active Antenna");
        bench_->clickTab("BeltPack");
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->status(), kBothEnd);
    QCOMPARE(bench_->journal.take(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTwoAtOnce, QApplication)
#include "test_two_at_once.moc"
