#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/bench_top.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kTraceLimitMs = 15'000;
const QString kReadDone = "Settings read from Beltpack successfully.";
}  // namespace

/// QUORVEX_TRACE: what passed over the line goes into a file, from which the simulator plays the unit.
class TestTrace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<BenchTop>(); }
    void cleanup() { bench_.reset(); }
    void recordedAndReplayed();
    void noFileToWrite();

private:
    QString path() const { return folder_.filePath("wire.trace"); }
    void readAndEnd();

    QTemporaryDir folder_;
    std::unique_ptr<BenchTop> bench_;
};

void TestTrace::readAndEnd() {
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), kReadDone, kTraceLimitMs);
    QCOMPARE(bench_->program().text("TextBeltpackId"), "100000");
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
}

void TestTrace::recordedAndReplayed() {
    bench_->setEnvironment("QUORVEX_TRACE", path());
    bench_->plugIn(1, {"beltpack", "--module", "kirk", "--set", "01=00443186A0", "--pace", "19200"});
    readAndEnd();
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QVERIFY(lines[0].startsWith("# trace of "));
    QVERIFY(lines[1].endsWith(" * open COM1"));
    QVERIFY(lines[lines.size() - 2].endsWith(" * close"));
    const auto sent =
        std::ranges::count_if(lines, [](const QByteArray& line) { return line.contains(" > "); });
    QCOMPARE(sent, 28);

    bench_->setEnvironment("QUORVEX_TRACE", "");
    bench_->plugIn(1, {"replay", path()});
    readAndEnd();
}

void TestTrace::noFileToWrite() {
    bench_->setEnvironment("QUORVEX_TRACE", folder_.filePath("none/wire.trace"));
    bench_->plugIn(1, {"beltpack"});
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(),
                              "critical \"Quorvex Config\" [OK]: The trace " +
                                  folder_.filePath("none/wire.trace") +
                                  " cannot be written: No such file or directory.",
                              kTraceLimitMs);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "COM1", kTraceLimitMs);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTrace, QCoreApplication)
#include "test_trace.moc"
