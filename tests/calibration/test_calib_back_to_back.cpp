#include <QLabel>
#include <QSlider>

#include "link/number_text.h"
#include "link/qt_text.h"
#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kRunsBackToBack = 70;
const QString kLeave = "! 03090000";
const QStringList kReadBack{"# 013D", "# 013c", "# 0139", "# 013a", "# 0138"};

}  // namespace

/// Calibrations of a Kirk Beltpack, each begun while the one before still drains the line.
class TestCalibBackToBack : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { at_ = std::make_unique<CalibBench>("Beltpack", kKirk); }
    void seventy();
    void drainGivesWay_data();
    void drainGivesWay();

private:
    /// The person at the dialogs of `runs` runs; notes how deep the stack is in each.
    void planRuns(int runs);

    std::unique_ptr<CalibBench> at_;
    std::vector<std::intptr_t> depths_;
    QStringList startedFrom_;
};

void TestCalibBackToBack::planRuns(int runs) {
    depths_.clear();
    startedFrom_.clear();
    for (int run = 1; run <= runs; ++run) {
        at_->bench.person.plan([this, run](QDialog& dialog) {
            const char here = 0;
            depths_.push_back(reinterpret_cast<std::intptr_t>(&here));
            part<QTimer>(dialog, "Timer1").setInterval(1);
            startedFrom_ << QString::number(part<QSlider>(dialog, "SliderFmDev").value());
            // What the unit really holds then, whatever the dialog has shown.
            QVERIFY(at_->unit().setValue(0x3D, HexPad(run % 60, 2)));
            cancel(dialog);
            QTRY_VERIFY(!dialog.isVisible());
        });
    }
}

void TestCalibBackToBack::seventy() {
    planRuns(kRunsBackToBack);
    Bench& bench = at_->bench;
    int drains = 0;
    const auto startedAtMs = bench.clock.nowMs;
    for (int run = 1; run <= kRunsBackToBack; ++run) {
        bench.duringExchange(kLeave, [&, run] {
            ++drains;
            QVERIFY(Bench::isHourglassUp());
            if (run < kRunsBackToBack)
                at_->press();
        });
    }
    at_->press();
    QCOMPARE(bench.person.plansLeft(), std::size_t{0});
    QCOMPARE(drains, kRunsBackToBack);
    QCOMPARE(bench.journal.take(), QStringList(kRunsBackToBack, dialogOpened("Beltpack")));
    QCOMPARE(bench.status(), "black: Beltpack Calibration Cancelled.");
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(!at_->unit().inCalibrationMode());
    QStringList expected{"0"};
    for (int run = 1; run < kRunsBackToBack; ++run)
        expected << QString::number(run % 60);
    QCOMPARE(startedFrom_, expected);
    QCOMPARE(bench.text("TextFMDev"), QString::number(kRunsBackToBack % 60));
    for (const std::intptr_t depth : depths_)
        QVERIFY(std::abs(depth - depths_.front()) < 4096);  // no run stands upon another
    // Only the last one waits until the line is silent.
    QVERIFY(bench.clock.nowMs - startedAtMs < kRunsBackToBack * 500);
}

void TestCalibBackToBack::drainGivesWay_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("lines");  // behind the end of calibration mode
    QTest::newRow("another run") << "CommandCalibBp"
                                 << kReadBack + QStringList({"# 0138", "! 0309E803", kLeave}) + kReadBack;
    QTest::newRow("version") << "CommandDectPPVerReq" << QStringList("! 0108") + kReadBack;
    QTest::newRow("PLI") << "CmdUpdatePli" << QStringList({"# 02421F", "# 0102"}) + kReadBack;
    QTest::newRow("nothing") << "" << kReadBack;
}

void TestCalibBackToBack::drainGivesWay() {
    QFETCH(QString, button);
    QFETCH(QStringList, lines);
    Bench& bench = at_->bench;
    planRuns(button == "CommandCalibBp" ? 2 : 1);
    bench.control<QLineEdit>("TextPli").setText("1F");
    std::int64_t endedAtMs = 0;
    std::int64_t readBackAtMs = 0;
    bench.duringExchange("# 013D", [&] { readBackAtMs = bench.clock.nowMs; });
    bench.duringExchange(kLeave, [&] {
        QVERIFY(Bench::isHourglassUp());
        if (!button.isEmpty())
            bench.click(button);
        endedAtMs = bench.clock.nowMs;
    });
    at_->press();
    const qsizetype left = bench.wire.lines().indexOf(kLeave);
    QCOMPARE(bench.wire.lines().mid(left + 1), lines);
    QCOMPARE(readBackAtMs - endedAtMs < 100, !button.isEmpty());
    QVERIFY(!Bench::isHourglassUp());
    QCOMPARE(bench.person.plansLeft(), std::size_t{0});
    QVERIFY(!bench.text("TextFMDev").isEmpty());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibBackToBack, QApplication)
#include "test_calib_back_to_back.moc"
