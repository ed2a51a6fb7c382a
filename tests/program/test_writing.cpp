#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/bench_top.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kWriteLimitMs = 15'000;

const QString kRead = "Settings read from Beltpack successfully.";
const QString kWritten = "Settings written to Beltpack successfully!";
const QString kSuccessGreen = "#009600";
const QString kReadBackBox = "none \"Quorvex Config\" [OK]: Rd Error";
const QString kVerifyBox =
    "critical \"Quorvex Config\" [OK]: Error occured while verifying settings written to Beltpack!";
const QString kWriteBox =
    "critical \"Quorvex Config\" [OK]: Error occured while writing settings to Beltpack!\r\n\r\nCheck "
    "connection to Beltpack.";

/// What a write sends for each parameter of a unit that holds `kUnitHolds`, in order.
const QStringList kWrites{"# 064100443186A0", "# 024227        ", "# 0643312F45A727", "# 024430        ",
                          "# 024500        ", "# 024601        ", "# 024702        ", "# 024802        ",
                          "# 024903        ", "# 024A00        ", "# 024B10        ", "# 024C01        ",
                          "# 024D00        ", "# 064E03FE0A0B0C", "# 024F00        ", "# 025001        ",
                          "# 025100        ", "# 025201        ", "# 025300        ", "# 025400        ",
                          "# 025502        "};

const QStringList kUnitHolds{"--set", "01=00443186A0", "--set", "02=27", "--set", "03=312F45A727",
                             "--set", "06=01",         "--set", "07=02", "--set", "0E=03FE0A0B0C",
                             "--set", "10=01",         "--set", "15=02"};

constexpr int kMicType = 7;
constexpr int kAllParameters = 21;

/// The write and the read-back of the first `count` parameters.
QStringList sentFor(int count) {
    QStringList sent;
    for (int number = 1; number <= count; ++number)
        sent << kWrites[number - 1]
             << QStringLiteral("# 01%1").arg(number, 2, 16, QLatin1Char('0')).toUpper();
    return sent;
}

QStringList linesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()).split('\n') : QStringList();
}

}  // namespace

/// Writing to a Beltpack that does not do what it is told.
class TestWriting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<BenchTop>(); }
    void cleanup() { bench_.reset(); }
    void everythingVerified();
    void otherValueReadBack();
    void otherValuesReadBack();
    void goneHalfWay();
    void pulledHalfWay();

private:
    /// A unit with `faults`, read, and nothing on its record yet.
    void read(const QStringList& faults);
    void write() { bench_->program().click("CommandWrite"); }
    void waitForBox(const QString& box);
    QString status() { return bench_->program().text("LblStatus"); }
    void verifyWritten();

    std::unique_ptr<BenchTop> bench_;
};

void TestWriting::read(const QStringList& faults) {
    bench_->plugIn(1, QStringList({"beltpack", "--module", "rm5"}) + kUnitHolds + faults);
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(status(), kRead, kWriteLimitMs);
    bench_->unit().forget();
}

void TestWriting::waitForBox(const QString& box) {
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), box, kWriteLimitMs);
}

void TestWriting::verifyWritten() {
    QTRY_COMPARE_WITH_TIMEOUT(status(), kWritten, kWriteLimitMs);
    QCOMPARE(bench_->program().colour("LblStatus"), kSuccessGreen);
    QCOMPARE(bench_->program().box(), "");
    QCOMPARE(bench_->program().pointer(), "normal");
    QCOMPARE(bench_->unit().received().join('\n'), sentFor(kAllParameters).join('\n'));
}

void TestWriting::everythingVerified() {
    read({});
    write();
    verifyWritten();
}

void TestWriting::otherValueReadBack() {
    read({"--fault", "other-value=07"});
    write();
    waitForBox(kReadBackBox);
    QCOMPARE(bench_->program().pointer(), "hourglass");
    QCOMPARE(bench_->unit().received().join('\n'), sentFor(kMicType).join('\n'));
    bench_->program().clickOk();
    waitForBox(kVerifyBox);
    bench_->program().clickOk();
    verifyWritten();
}

void TestWriting::otherValuesReadBack() {
    read({"--fault", "other-value"});
    write();
    for (int i = 0; i < kAllParameters; ++i) {
        waitForBox(kReadBackBox);
        bench_->program().clickOk();
        waitForBox(kVerifyBox);
        bench_->program().clickOk();
    }
    verifyWritten();
}

// What was read from one unit goes into the next, which falls silent and keeps what it has got by then.
void TestWriting::goneHalfWay() {
    read({});
    const QTemporaryDir folder;
    const QString held = folder.filePath("held");
    bench_->plugIn(1, {"beltpack", "--module", "rm5", "--fault", "gone-after=07", "--dump", held});
    bench_->chooseAgain(1);
    write();
    waitForBox(kWriteBox);
    QCOMPARE(bench_->program().pointer(), "normal");
    QCOMPARE(status(), "Writing settings to Beltpack...");
    QCOMPARE(bench_->unit().received().join('\n'), sentFor(kMicType).join('\n'));
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(status(), "Error communicating with Beltpack.", kWriteLimitMs);
    QVERIFY(bench_->program().isRunning());
    bench_->unit().end();
    const QStringList written{"01=00443186A0", "02=27", "03=312F45A727", "06=01", "07=02"};
    for (const QString& value : written)
        QVERIFY2(linesOf(held).contains(value), qPrintable(value));
    QVERIFY(linesOf(held).contains("0E=03FF000000"));  // its own, never written
}

// The cable comes off while the first of the two boxes is open; what is sent after that is lost.
void TestWriting::pulledHalfWay() {
    read({"--fault", "other-value=07"});
    write();
    waitForBox(kReadBackBox);
    bench_->unit().pull();
    bench_->program().clickOk();
    waitForBox(kVerifyBox);
    bench_->program().clickOk();
    waitForBox(kWriteBox);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(status(), "Error communicating with Beltpack.", kWriteLimitMs);
    QCOMPARE(bench_->program().pointer(), "normal");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWriting, QCoreApplication)
#include "test_writing.moc"
