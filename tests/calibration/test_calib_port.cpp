#include "tests/calibration/calib_bench.h"
#include "tests/support/port_deeds.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kUnitGone = failureEntry("Could not communicate with device!");

QStringList wholeRun(const QString& target) {
    if (target == "Beltpack")
        return {"# 0138", "! 0309E803", "! 03090000", "# 013D", "# 013c", "# 0139", "# 013a", "# 0138"};
    const QStringList start{"! 0308E803", "# 010B", "! 03080000"};
    return start + (target == "A" ? QStringList{"# 0101", "# 0105", "# 0107", "# 0109"}
                                  : QStringList{"# 0102", "# 0106", "# 0108", "# 010a"});
}

}  // namespace

/// The port of a Kirk calibration goes away in one of its waits: nothing of it reaches another unit, and a
/// unit that is in calibration mode is taken out of it before its port is closed.
class TestCalibPort : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void atEveryWait_data();
    void atEveryWait();
};

void TestCalibPort::atEveryWait_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("lines");  // sent when the port goes
    QTest::addColumn<QString>("way");
    for (const char* target : {"Beltpack", "A", "B"}) {
        const QStringList whole = wholeRun(target);
        const bool drains = whole.first() == "# 0138";
        for (int i = 0; i < whole.size(); ++i) {
            // Nobody waits behind the lines of the mode, but for the drain of a Beltpack.
            if (whole[i].endsWith("E803") || (whole[i].endsWith("0000") && !drains))
                continue;
            for (const char* way : {"another", "again", "fails", "lost"})
                QTest::addRow("%s, %d: %s, %s", target, i, qPrintable(whole[i]), way)
                    << target << i + 1 << way;
        }
    }
}

void TestCalibPort::atEveryWait() {
    QFETCH(QString, target);
    QFETCH(int, lines);
    QFETCH(QString, way);
    std::unique_ptr<sim::Unit> other;
    if (target == "Beltpack")
        other = std::make_unique<sim::Beltpack>(kKirk);
    else
        other = std::make_unique<sim::ActiveAntenna>(kKirk);
    CalibBench at(target, kKirk);
    Bench& bench = at.bench;
    bench.wire.plugIn(1, &at.unit());
    bench.wire.plugIn(2, other.get());
    const std::string before = other->dump();
    const QStringList whole = wholeRun(target);
    const bool isBeforeTheDialog = lines <= 2;
    const bool isInMode = target != "Beltpack" && isBeforeTheDialog;
    QStringList expected;
    QStringList sent;
    const auto handleDialog = [&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").setInterval(1);
        if (!isBeforeTheDialog)
            cancel(dialog);
        QTRY_VERIFY(!dialog.isVisible());  // one that has lost its unit says so and closes by itself
    };
    if (!isBeforeTheDialog)
        bench.person.plan(handleDialog);
    afterLines(bench, lines, [&] {
        bench.journal.take();
        expected = losePort(bench, way);
        sent = bench.wire.lines();
        bench.wire.forgetLines();
        if (isBeforeTheDialog)
            bench.person.plan(handleDialog);
    });
    at.press();
    QCOMPARE(bench.wire.lines(), QStringList());
    QCOMPARE(sent, whole.first(lines) + (isInMode && way != "lost" ? QStringList(whole[2]) : QStringList()));
    QCOMPARE(QString::fromStdString(other->dump()), QString::fromStdString(before));
    QVERIFY(!other->inCalibrationMode());
    if (way != "lost")
        QVERIFY(!at.unit().inCalibrationMode());
    if (isBeforeTheDialog) {
        expected << dialogOpened(target) << kUnitGone;
        QVERIFY2(bench.status().startsWith("black: Error occured during"), qPrintable(bench.status()));
    }
    QCOMPARE(bench.journal.take(), expected);
    QVERIFY(!Bench::isHourglassUp());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibPort, QApplication)
#include "test_calib_port.moc"
