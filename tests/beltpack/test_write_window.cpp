#include <QCheckBox>
#include <QRadioButton>

#include "simulator/fault.h"
#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kShownNotWritten =
    failureEntry("Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QStringList kShownNotVerified{
    boxEntry("no icon", "Quorvex Config", "Rd Error"),
    failureEntry("Error occured while verifying settings written to Beltpack!")};
const QString kShownNeverFilled = failureEntry(
    "File must be loaded or Beltpack read before the settings can be written.\r\n\r\n"
    "Use the 'Update' buttons to write the Sytem and Beltpack IDs individually.");
const QString kFaultReport = failureEntry("Run-time error '13':\r\n\r\nType mismatch");
const QString kShownWritten = "green: Settings written to Beltpack successfully!";
const QString kNoContact = "black: Error communicating with Beltpack.";

/// Both lines of each of the 21 parameters, without their values.
QStringList heads() {
    QStringList lines;
    for (int number = 1; number <= 21; ++number) {
        const bool isLong = number == 1 || number == 3 || number == 14;
        lines << QString("# %1%2")
                     .arg(isLong ? "06" : "02")
                     .arg(number + 0x40, 2, 16, QLatin1Char('0'))
                     .toUpper();
        lines << QString("# 01%1").arg(number, 2, 16, QLatin1Char('0')).toUpper();
    }
    return lines;
}

QStringList headsOf(const QStringList& lines) {
    QStringList all;
    for (const QString& line : lines)
        all << line.left(6);
    return all;
}

}  // namespace

/// Writing a Beltpack, and the production values, by their buttons.
class TestWriteWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void buttonsBeforeARead();
    void buttonsAfterARead();
    void whole();
    void otherValue();
    void goneHalfWay_data();
    void goneHalfWay();
    void cablePulled();
    void readInside();
    void writeInside();
    void afterAFailedRead();
    void fromOneUnitToAnother();
    void productionBeforeARead();
    void production_data();
    void production();
    void productionLeavesTheControls();
    void productionOnASilentUnit();

private:
    void read();

    std::unique_ptr<Bench> bench_;
};

void TestWriteWindow::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    bench_->wire.forgetLines();
}

void TestWriteWindow::buttonsBeforeARead() {
    bench_->startWith(kRm5);
    for (const char* button : {"CommandWrite", "CommandSave", "CommandSummary"}) {
        QVERIFY(!bench_->control(button).isEnabled());
        hand::click(bench_->control(button));
    }
    QVERIFY(bench_->control("CommandRead").isEnabled());
    QVERIFY(bench_->control("buttonSetProdSettiings").isEnabled());
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), "black: ");
}

void TestWriteWindow::buttonsAfterARead() {
    bench_->startWith(kRm5);
    read();
    for (const char* button : {"CommandWrite", "CommandSave", "CommandSummary", "CommandRead"})
        QVERIFY(bench_->control(button).isEnabled());
}

void TestWriteWindow::whole() {
    bench_->startWith(kRm5);
    read();
    const qsizetype stepsBefore = bench_->steps().size();
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(headsOf(bench_->wire.lines()), heads());
    for (const QString& line : bench_->wire.lines())
        QVERIFY2(line.size() == 6 || line.size() == 16, qPrintable(line));
    for (const QString& step : bench_->steps().mid(stepsBefore))
        QVERIFY2(step.endsWith(" | hourglass | black: Writing settings to Beltpack..."), qPrintable(step));
    QCOMPARE(bench_->status(), kShownWritten);
    QVERIFY(!Bench::isHourglassUp());
}

void TestWriteWindow::otherValue() {
    bench_->startWith(kRm5);
    read();
    bench_->beltpack().addFault(sim::parseFault("other-value=0E"));
    bench_->beltpack().addFault(sim::parseFault("other-value=15"));
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), kShownNotVerified + kShownNotVerified);
    QCOMPARE(headsOf(bench_->wire.lines()), heads());
    QCOMPARE(bench_->status(), kShownWritten);
}

void TestWriteWindow::goneHalfWay_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("linesSent");
    QTest::newRow("first") << "gone-after=01" << 2;
    QTest::newRow("eighth") << "gone-after=08" << 16;
    QTest::newRow("last") << "gone-after=15" << 42;
}

void TestWriteWindow::goneHalfWay() {
    QFETCH(QString, fault);
    QFETCH(int, linesSent);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    read();
    bench_->click("optionMICElectret");
    unit.addFault(sim::parseFault(fault.toStdString()));
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
    QCOMPARE(headsOf(bench_->wire.lines()), heads().mid(0, linesSent));
    QCOMPARE(bench_->status(), kNoContact);
    QVERIFY(!Bench::isHourglassUp());
    // What was written before stays written.
    QCOMPARE(unit.value(0x07) == "02", linesSent >= 14);
}

void TestWriteWindow::cablePulled() {
    bench_->startWith(kRm5);
    read();
    bench_->duringExchange("# 0105", [&] { bench_->wire.pullCable(); });
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
    QCOMPARE(bench_->status(), kNoContact);
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
}

// The read inside runs to its end; the write's own reply never comes.
void TestWriteWindow::readInside() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    read();
    unit.addFault(sim::parseFault("no-reply=05,once"));
    bench_->duringExchange("# 0105", [&] {
        bench_->click("CommandRdSettingsBp");
        QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
    });
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
    QCOMPARE(bench_->status(), kNoContact);
    QVERIFY(!Bench::isHourglassUp());
}

void TestWriteWindow::writeInside() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    read();
    unit.addFault(sim::parseFault("no-reply=05,once"));
    bench_->duringExchange("# 0105", [&] {
        bench_->click("CommandWrite");
        QCOMPARE(bench_->status(), kShownWritten);
    });
    bench_->click("CommandWrite");
    QCOMPARE(headsOf(bench_->wire.lines()), heads().mid(0, 10) + heads());
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
    QCOMPARE(bench_->status(), kNoContact);
    QVERIFY(!Bench::isHourglassUp());
}

// The buttons stay enabled after a failed read, and the image is empty then.
void TestWriteWindow::afterAFailedRead() {
    bench_->startWith(kRm5);
    read();
    bench_->wire.plugIn(nullptr);
    bench_->click("CommandRdSettingsBp");
    bench_->journal.take();
    bench_->wire.forgetLines();
    const QString before = bench_->status();
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNeverFilled});
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->status(), before);
}

void TestWriteWindow::fromOneUnitToAnother() {
    sim::Beltpack& first = bench_->startWith(kRm5);
    QVERIFY(first.setValue(0x0E, "03E0000001"));
    QVERIFY(first.setValue(0x14, "77"));
    first.setAvailable(0x0D, false);
    read();
    sim::Beltpack second(kRm5);
    QVERIFY(second.setValue(0x0D, "55"));
    bench_->wire.plugIn(&second);
    bench_->click("CommandWrite");
    bench_->wire.plugIn(nullptr);
    QCOMPARE(bench_->status(), kShownWritten);
    for (int number = 1; number <= 21; ++number)
        QCOMPARE(second.value(number), number == 0x0D ? "55" : first.value(number));
}

void TestWriteWindow::productionBeforeARead() {
    bench_->startWith(kRm5);
    bench_->click("buttonSetProdSettiings");
    QCOMPARE(bench_->journal.take(), QStringList({kFaultReport, "close", "end 1"}));
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->status(), "black: ");
}

void TestWriteWindow::production_data() {
    QTest::addColumn<QString>("revision");
    QTest::addColumn<QString>("limit");
    QTest::addColumn<QString>("gain");
    QTest::addColumn<QString>("volume");
    QTest::newRow("revision 0") << "00"
                                << "30"
                                << "02"
                                << "11";
    QTest::newRow("revision 1") << "01"
                                << "30"
                                << "02"
                                << "11";
    QTest::newRow("revision 2") << "02"
                                << "24"
                                << "08"
                                << "13";
    QTest::newRow("another revision") << "03"
                                      << "11"
                                      << "11"
                                      << "11";
}

void TestWriteWindow::production() {
    QFETCH(QString, revision);
    QFETCH(QString, limit);
    QFETCH(QString, gain);
    QFETCH(QString, volume);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    for (const int number : {0x04, 0x08, 0x0B})
        QVERIFY(unit.setValue(number, "11"));
    QVERIFY(unit.setValue(0x15, revision.toStdString()));
    read();
    bench_->click("buttonSetProdSettiings");
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(headsOf(bench_->wire.lines()), heads() + QStringList{"# 027E"});
    QCOMPARE(bench_->wire.lines().last(), "# 027E01");
    QCOMPARE(bench_->status(), kShownWritten);
    QCOMPARE(QString::fromStdString(unit.value(0x04)), limit);
    QCOMPARE(QString::fromStdString(unit.value(0x08)), gain);
    QCOMPARE(QString::fromStdString(unit.value(0x0B)), volume);
    QCOMPARE(unit.value(0x3E), "01");
}

void TestWriteWindow::productionLeavesTheControls() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    QVERIFY(unit.setValue(0x06, "01"));
    QVERIFY(unit.setValue(0x07, "02"));
    QVERIFY(unit.setValue(0x15, "00"));
    read();
    bench_->click("buttonSetProdSettiings");
    QVERIFY(bench_->control<QRadioButton>("optionMICElectret").isChecked());
    QVERIFY(bench_->control<QCheckBox>("checkBattAlarm").isChecked());
    auto image = imageOf(*bench_);
    QCOMPARE(image["06"], "00        ");
    QCOMPARE(image["07"], "01        ");
}

void TestWriteWindow::productionOnASilentUnit() {
    bench_->startWith(kRm5);
    read();
    bench_->wire.plugIn(nullptr);
    bench_->click("buttonSetProdSettiings");
    QCOMPARE(bench_->journal.take(), QStringList{kShownNotWritten});
    QCOMPARE(headsOf(bench_->wire.lines()), heads().mid(0, 2) + QStringList{"# 027E"});
    QCOMPARE(bench_->status(), kNoContact);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWriteWindow, QApplication)
#include "test_write_window.moc"
