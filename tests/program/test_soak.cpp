#include <QDir>
#include <QFile>
#include <QTest>
#include <algorithm>
#include <vector>

#include "tests/support/bench_top.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kSoakLimitMs = 15'000;
constexpr int kWarmUp = 100;       ///< reads before the first look
constexpr int kMostMoreKb = 1024;  ///< of memory
constexpr double kMostDrift = 1.5;

/// What the process holds.
struct Holds {
    qint64 residentKb = 0;
    qsizetype descriptors = 0;
    qsizetype threads = 0;
};

Holds lookAt(qint64 process) {
    const QString folder = QString("/proc/%1/").arg(process);
    QFile file(folder + "smaps_rollup");
    Holds holds;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("Private_Dirty:"))
                holds.residentKb = line.simplified().split(' ').value(1).toLongLong();
        }
    }
    holds.descriptors = QDir(folder + "fd").entryList(QDir::AllEntries | QDir::System).size();
    holds.threads = QDir(folder + "task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    return holds;
}

double median(std::vector<qint64> values) {
    std::sort(values.begin(), values.end());
    return static_cast<double>(values.at(values.size() / 2));
}

}  // namespace

/// A day's work and more by the built program: it must hold no more at its end than after its first hundred
/// reads, and read as fast. QUORVEX_SOAK is the share of the whole to do, in percent.
class TestSoak : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesOn();

private:
    void plugIn();
    void press(const QString& button, const QString& outcome);
    void read();
    void calibrate();
    void pullAndPutBack();

    std::unique_ptr<BenchTop> bench_ = std::make_unique<BenchTop>();
    std::vector<qint64> readMs_;
};

void TestSoak::plugIn() {
    bench_->plugIn(1, {"beltpack", "--module", "kirk"});
}

void TestSoak::press(const QString& button, const QString& outcome) {
    bench_->unit().forget();
    bench_->program().click(button);
    QTRY_VERIFY_WITH_TIMEOUT(!bench_->unit().traffic().isEmpty(), kSoakLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), outcome, kSoakLimitMs);
}

void TestSoak::read() {
    press("CommandRdSettingsBp", "Settings read from Beltpack successfully.");
    const auto& traffic = bench_->unit().traffic();
    readMs_.push_back(traffic.last().atMs - traffic.first().atMs);
}

void TestSoak::calibrate() {
    Program& program = bench_->program();
    bench_->unit().forget();
    program.click("CommandCalibBp");
    QTRY_COMPARE_WITH_TIMEOUT(program.dialogs(), QStringList("FormCalib"), kSoakLimitMs);
    QTRY_VERIFY_WITH_TIMEOUT(program.text("LabelRssi") != "RSSI:", kSoakLimitMs);
    program.click("CommandOK");
    QTRY_COMPARE_WITH_TIMEOUT(program.dialogs(), QStringList(), kSoakLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(program.text("LblStatus"), "Beltpack Calibrated successfully.", kSoakLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->unit().received().last(), "# 0138", kSoakLimitMs);
}

void TestSoak::pullAndPutBack() {
    bench_->unit().pull();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "No Comms", kSoakLimitMs);
    plugIn();
    bench_->chooseAgain(1);
}

void TestSoak::goesOn() {
    bool given = false;
    const int asked = qEnvironmentVariableIntValue("QUORVEX_SOAK", &given);
    const int percent = given ? asked : 1;
    plugIn();
    QVERIFY(bench_->start());
    // Each kind of work once, so that what it needs for ever is there.
    read();
    press("CommandWrite", "Settings written to Beltpack successfully!");
    calibrate();
    pullAndPutBack();
    for (int i = 0; i < kWarmUp; ++i)
        read();
    const Holds before = lookAt(bench_->program().id());
    const double msBefore = median(readMs_);

    struct Work {
        int whole;
        std::function<void()> deed;
    };
    const Work day[] = {
        {10'000, [this] { read(); }},
        {1'000, [this] { press("CommandWrite", "Settings written to Beltpack successfully!"); }},
        {200, [this] { calibrate(); }},
        {200, [this] { pullAndPutBack(); }}};
    for (const Work& work : day) {
        for (int i = 0; i < std::max(1, work.whole * percent / 100); ++i) {
            work.deed();
            if (QTest::currentTestFailed())
                return;
        }
    }
    readMs_.clear();
    for (int i = 0; i < kWarmUp; ++i)
        read();
    const Holds after = lookAt(bench_->program().id());
    const double msAfter = median(readMs_);
    qInfo(
        "%d %% of the whole: %lld kB more (%lld kB), descriptors %lld to %lld, threads %lld to %lld, a read "
        "%.0f to "
        "%.0f ms",
        percent, static_cast<long long>(after.residentKb - before.residentKb),
        static_cast<long long>(after.residentKb), static_cast<long long>(before.descriptors),
        static_cast<long long>(after.descriptors), static_cast<long long>(before.threads),
        static_cast<long long>(after.threads), msBefore, msAfter);
    QVERIFY(before.residentKb > 0 && before.descriptors > 0 && before.threads > 0);
    QVERIFY(after.residentKb - before.residentKb < kMostMoreKb);
    QVERIFY(after.descriptors <= before.descriptors);
    QVERIFY(after.threads <= before.threads);
    QVERIFY(msAfter <= msBefore * kMostDrift + 1);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSoak, QCoreApplication)
#include "test_soak.moc"
