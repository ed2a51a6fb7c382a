#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <csignal>

#include "tests/support/bench_top.h"
#include "tests/support/cpu_time.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kLimitMs = 10'000;
constexpr int kAtOnceMs = 1500;  ///< sooner than a wait for a reply ends

const QString kTitle = "critical \"Quorvex Config\" [OK]: ";

}  // namespace

/// How the program ends: by its menu, by its window, by a fault.
class TestEnding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<BenchTop>(); }
    void cleanup() { bench_.reset(); }
    void atRest_data();
    void atRest();
    void duringAnExchange_data();
    void duringAnExchange();
    void duringACalibration_data() { atRest_data(); }
    void duringACalibration();
    void faultDuringACalibration();
    void deepInExchanges();
    void withoutAPort_data();
    void withoutAPort();
    void signalled_data();
    void signalled();
    void signalledAtRest();
    void storedPortIsNoNumber();
    void storedModuleIsNoNumber();
    void productionBeforeAnyRead();
    void idleCostsNothing();

private:
    QString storedFault(const QString& key) const;
    void leave(const QString& way);
    /// A Kirk antenna in calibration mode whose threshold is awaited.
    void startCalibration();

    std::unique_ptr<BenchTop> bench_;
};

void TestEnding::leave(const QString& way) {
    if (way == "menu")
        bench_->program().clickMenu("mnuFile", "mnuExit");
    else
        bench_->program().close("FrmMain");
}

void TestEnding::atRest_data() {
    QTest::addColumn<QString>("way");
    QTest::newRow("menu") << "menu";
    QTest::newRow("window") << "window";
}

void TestEnding::atRest() {
    QFETCH(QString, way);
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    QVERIFY(bench_->start());
    leave(way);
    QCOMPARE(bench_->program().end(), "exit 0");
    QCOMPARE(bench_->program().errors().contains("QObject"), false);
}

void TestEnding::duringAnExchange_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("line");
    for (const char* way : {"menu", "window"}) {
        const auto row = [way](const char* fault, const char* button, const char* line) {
            QTest::addRow("%s, %s", way, line) << way << fault << button << line;
        };
        row("no-reply=39", "CommandRdSettingsBp", "# 0139");
        row("no-reply=08", "CommandRdSettingsBp", "# 0108");
        row("no-version", "CommandDectPPVerReq", "! 0108");
    }
}

void TestEnding::duringAnExchange() {
    QFETCH(QString, way);
    QFETCH(QString, fault);
    QFETCH(QString, button);
    QFETCH(QString, line);
    bench_->plugIn(1, {"beltpack", "--module", "kirk", "--fault", fault});
    QVERIFY(bench_->start());
    bench_->program().click(button);
    QTRY_VERIFY_WITH_TIMEOUT(bench_->unit().received().contains(line), kLimitMs);
    leave(way);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(bench_->program().end(), "exit 0");
    QVERIFY2(timer.elapsed() < kAtOnceMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(bench_->unit().received().last(), line);  // nothing is sent any more
}

void TestEnding::startCalibration() {
    bench_->writeSettings("[Settings]\nRfModule=1\n");
    bench_->plugIn(1, {"antenna", "--module", "kirk", "--fault", "no-reply=0B"});
    QVERIFY(bench_->start());
    bench_->program().ask({{"do", "clickText"}, {"name", "SSTab1"}, {"text", "Active Antenna"}});
    QTRY_VERIFY_WITH_TIMEOUT(bench_->program().get("CommandCalibAAA", "visible").toBool(), kLimitMs);
    bench_->program().click("CommandCalibAAA");
    QTRY_VERIFY_WITH_TIMEOUT(bench_->unit().received().contains("# 010B"), kLimitMs);
}

// The antenna is in calibration mode already while its threshold is awaited; it must not stay there.
void TestEnding::duringACalibration() {
    QFETCH(QString, way);
    startCalibration();
    leave(way);
    QCOMPARE(bench_->program().end(), "exit 0");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->unit().received().last(), "! 03080000", kLimitMs);
}

// The fault of another handler ends the program in the middle of the run.
void TestEnding::faultDuringACalibration() {
    startCalibration();
    bench_->program().click("TextFmDevB");
    for (int i = 0; i < 5; ++i)
        bench_->program().key("TextFmDevB", Qt::Key_9);
    bench_->program().click("CommandCalibAAB");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + "Run-time error '6':\r\n\r\nOverflow",
                              kLimitMs);
    bench_->program().clickOk();
    QCOMPARE(bench_->program().end(), "exit 1");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->unit().received().last(), "! 03080000", kLimitMs);
}

// Each press asks for the version inside the wait of the one before, until no further one is started.
void TestEnding::deepInExchanges() {
    constexpr int kPresses = 70;
    bench_->plugIn(1, {"beltpack", "--module", "rm5", "--fault", "no-version"});
    QVERIFY(bench_->start());
    for (int i = 0; i < kPresses; ++i)
        bench_->program().click("CommandDectPPVerReq");
    leave("menu");
    QCOMPARE(bench_->program().end(), "exit 0");
}

void TestEnding::withoutAPort_data() {
    atRest_data();
}

void TestEnding::withoutAPort() {
    QFETCH(QString, way);
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + "Could not open COM 1", kLimitMs);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList("ComSelect"), kLimitMs);
    bench_->program().click("CmdCancel");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList(), kLimitMs);
    QCOMPARE(bench_->program().text("LabelComPort"), "No Comms");
    leave(way);
    QCOMPARE(bench_->program().end(), "exit 0");
}

void TestEnding::signalled_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("terminated") << SIGTERM;
    QTest::newRow("interrupted") << SIGINT;
    QTest::newRow("terminal gone") << SIGHUP;
}

// As by "&Exit": the antenna, in calibration mode while its threshold is awaited, is told to leave it.
void TestEnding::signalled() {
    QFETCH(int, number);
    startCalibration();
    QCOMPARE(::kill(static_cast<pid_t>(bench_->program().id()), number), 0);
    QCOMPARE(bench_->program().end(), "exit 0");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->unit().received().last(), "! 03080000", kLimitMs);
}

void TestEnding::signalledAtRest() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    QVERIFY(bench_->start());
    QCOMPARE(::kill(static_cast<pid_t>(bench_->program().id()), SIGTERM), 0);
    QCOMPARE(bench_->program().end(), "exit 0");
    QCOMPARE(bench_->unit().received(), QStringList());
}

/// The report of a setting that holds "abc": what to mend, and where.
QString TestEnding::storedFault(const QString& key) const {
    return "Run-time error '13':\r\n\r\nType mismatch\r\n\r\nThe setting \"" + key +
           "\" holds \"abc\".\r\nIt is kept in " + bench_->settingsFile() + ".";
}

void TestEnding::storedPortIsNoNumber() {
    bench_->writeSettings("[Settings]\nComPort=abc\n");
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + "Could not open COM ", kLimitMs);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + storedFault("ComPort"), kLimitMs);
    bench_->program().clickOk();
    QCOMPARE(bench_->program().end(), "exit 1");
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=abc\n");
}

void TestEnding::storedModuleIsNoNumber() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    bench_->writeSettings("[Settings]\nRfModule=abc\n");
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + "Could not open COM ", kLimitMs);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList("ComSelect"), kLimitMs);
    bench_->program().click("CmdOK");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "COM1", kLimitMs);
    bench_->program().clickMenu("mnuFile", "mnuRfModule");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + storedFault("RfModule"), kLimitMs);
    bench_->program().clickOk();
    QCOMPARE(bench_->program().end(), "exit 1");
}

void TestEnding::productionBeforeAnyRead() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    QVERIFY(bench_->start());
    bench_->program().click("buttonSetProdSettiings");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kTitle + "Run-time error '13':\r\n\r\nType mismatch",
                              kLimitMs);
    bench_->program().clickOk();
    QCOMPARE(bench_->program().end(), "exit 1");
    QCOMPARE(bench_->unit().received(), QStringList());
}

void TestEnding::idleCostsNothing() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    QVERIFY(bench_->start());
    constexpr int kMeasureMs = 1500;
    constexpr double kIdleShare = 0.03;
    const double share = cpuShare(bench_->program().id(), kMeasureMs);
    QVERIFY2(share >= 0 && share < kIdleShare, qPrintable(QString::number(share)));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestEnding, QCoreApplication)
#include "test_ending.moc"
