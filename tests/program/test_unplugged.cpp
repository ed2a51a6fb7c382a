#include <QFile>
#include <QTest>

#include "tests/support/bench_top.h"
#include "tests/support/cpu_time.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kUnpluggedLimitMs = 15'000;
constexpr int kMeasureMs = 800;
constexpr double kIdleShare = 0.05;

const QString kUnitGone =
    "critical \"Quorvex Config\" [OK]: No Response from Beltpack!\r\n\r\nCheck "
    "connection to Beltpack.";
const QString kUnitBack = "Settings read from Beltpack successfully.";
const QStringList kRm5{"beltpack", "--module", "rm5"};

}  // namespace

/// A cable that is pulled, at rest and in the middle of an exchange, and put
/// back.
class TestUnplugged : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<BenchTop>(); }
    void cleanup() { bench_.reset(); }
    void atRest();
    void atRestTwice();
    void midReply_data();
    void midReply();
    void closedAfterwards();
    void exitAfterwards();

private:
    void read(const QString& outcome);
    void expectIdle();

    std::unique_ptr<BenchTop> bench_;
};

void TestUnplugged::read(const QString& outcome) {
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), outcome, kUnpluggedLimitMs);
}

void TestUnplugged::expectIdle() {
    const double share = cpuShare(bench_->program().id(), kMeasureMs);
    QVERIFY2(share >= 0 && share < kIdleShare, qPrintable(QString::number(share)));
}

void TestUnplugged::atRest() {
    bench_->plugIn(1, kRm5);
    QVERIFY(bench_->start());
    bench_->unit().pull();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "No Comms", kUnpluggedLimitMs);
    expectIdle();
    QCOMPARE(bench_->program().box(), "");
    // Exchanges end as after silence.
    read("Error communicating with Beltpack.");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kUnitGone, kUnpluggedLimitMs);
    bench_->program().clickOk();
    bench_->program().click("CommandDectPPVerReq");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("TextDectVerBP"), "Unavailable", kUnpluggedLimitMs);
    bench_->plugIn(1, kRm5);
    bench_->chooseAgain(1);
    read(kUnitBack);
    QCOMPARE(bench_->unit().received().size(), 25);
}

void TestUnplugged::atRestTwice() {
    bench_->plugIn(1, kRm5);
    QVERIFY(bench_->start());
    for (int i = 0; i < 2; ++i) {
        bench_->unit().pull();
        QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "No Comms", kUnpluggedLimitMs);
        bench_->plugIn(1, kRm5);
        bench_->chooseAgain(1);
    }
    read(kUnitBack);
}

void TestUnplugged::midReply_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("lastLine");
    QTest::newRow("before the PSN") << "late=01:60000"
                                    << "# 0101";
    QTest::newRow("before a parameter") << "late=08:60000"
                                        << "# 0108";
    QTest::newRow("within a parameter") << "cut=08:5"
                                        << "# 0108";
    QTest::newRow("before the FM deviation") << "late=3D:60000"
                                             << "# 013D";
}

void TestUnplugged::midReply() {
    QFETCH(QString, fault);
    QFETCH(QString, lastLine);
    bench_->plugIn(1, QStringList(kRm5) << "--fault" << fault);
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_VERIFY_WITH_TIMEOUT(bench_->unit().received().contains(lastLine), kUnpluggedLimitMs);
    QCOMPARE(bench_->program().pointer(), "hourglass");
    bench_->unit().pull();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kUnitGone, kUnpluggedLimitMs);
    QCOMPARE(bench_->program().text("LblStatus"), "Error communicating with Beltpack.");
    QCOMPARE(bench_->program().pointer(), "normal");
    expectIdle();
    bench_->program().clickOk();
    QCOMPARE(bench_->program().box(), "");
    QCOMPARE(bench_->program().text("LabelComPort"), "No Comms");
    QVERIFY(!bench_->program().get("CommandWrite", "enabled").toBool());
    bench_->plugIn(1, kRm5);
    bench_->chooseAgain(1);
    read(kUnitBack);
}

// The port has closed by itself: the window unloads as one without a port does.
void TestUnplugged::closedAfterwards() {
    bench_->plugIn(1, kRm5);
    QVERIFY(bench_->start());
    bench_->unit().pull();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "No Comms", kUnpluggedLimitMs);
    bench_->program().close("FrmMain");
    QCOMPARE(bench_->program().end(), "exit 0");
}

void TestUnplugged::exitAfterwards() {
    bench_->plugIn(1, kRm5);
    QVERIFY(bench_->start());
    bench_->unit().pull();
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestUnplugged, QCoreApplication)
#include "test_unplugged.moc"
