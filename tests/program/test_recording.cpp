#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/bench_top.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kRecordLimitMs = 15'000;
const QString kFound = "Settings read from Beltpack successfully.";
const QString kLeft = "Settings written to Beltpack successfully!";
const QStringList kRecorded{"beltpack", "--module", "rm5", "--set", "01=00443186A0"};
}  // namespace

/// QUORVEX_RECORD: reads and writes of the window are kept in a folder.
class TestRecording : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { bench_.reset(); }
    void readAndWritten();
    void failedRead();
    void endInAWrite();
    void cannotBeKept();
    void toldBetweenOperations();
    void slowDisk();

private:
    QString record(const QString& name = {}) const { return folder_->filePath("record/" + name); }
    /// The journal's lines but for the header and their times.
    QStringList journal() const {
        QFile file(record("journal.csv"));
        if (!file.open(QIODevice::ReadOnly))
            return {"none"};
        QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
        lines.removeFirst();
        return lines.replaceInStrings(QRegularExpression("^\\d{4}-\\d\\d-\\d\\dT\\d{6},"), "");
    }
    QStringList files() const { return QDir(record("100000")).entryList(QDir::Files | QDir::Hidden); }
    void click(const QString& button, const QString& status) {
        bench_->program().click(button);
        QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), status, kRecordLimitMs);
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<BenchTop> bench_;
};

void TestRecording::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    bench_ = std::make_unique<BenchTop>();
    bench_->setEnvironment("QUORVEX_RECORD", record());
}

void TestRecording::readAndWritten() {
    bench_->plugIn(1, kRecorded);
    QVERIFY(bench_->start());
    click("CommandRdSettingsBp", kFound);
    click("CommandWrite", kLeft);
    QTRY_COMPARE(journal(), QStringList({"COM1,100000,read,done,", "COM1,100000,write,done,"}));
    QCOMPARE(files().size(), 2);
    QCOMPARE(files().filter("-as-found.bpc").size(), 1);
    QCOMPARE(files().filter("-as-left.bpc").size(), 1);
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
}

void TestRecording::failedRead() {
    bench_->plugIn(1, {"beltpack", "--unavailable", "01"});
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_VERIFY_WITH_TIMEOUT(bench_->program().box().contains("No Response from Beltpack!"), kRecordLimitMs);
    QTRY_COMPARE(journal(), QStringList("COM1,,read,failed,"));
    bench_->program().clickOk();
}

// The program ends in the middle of a write: what is known by then is kept.
void TestRecording::endInAWrite() {
    bench_->plugIn(1, kRecorded + QStringList({"--pace", "19200"}));
    QVERIFY(bench_->start());
    click("CommandRdSettingsBp", kFound);
    bench_->program().click("CommandWrite");
    QTRY_VERIFY_WITH_TIMEOUT(bench_->unit().received().contains("# 024430        "), kRecordLimitMs);
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
    const QStringList lines = journal();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[1].startsWith("COM1,100000,write,interrupted,"), qPrintable(lines[1]));
    QCOMPARE(files().size(), 1);
}

// Told once, and everything works.
void TestRecording::cannotBeKept() {
    bench_->setEnvironment("QUORVEX_RECORD", "/dev/null");
    bench_->plugIn(1, kRecorded);
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(
        bench_->program().box(),
        "critical \"Quorvex Config\" [OK]: The record is not kept. /dev/null is no folder.", kRecordLimitMs);
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LabelComPort"), "COM1", kRecordLimitMs);
    click("CommandRdSettingsBp", kFound);
    click("CommandWrite", kLeft);
    QCOMPARE(bench_->program().box(), "");
}

// What cannot be kept comes to light in the middle of a write, which must not end behind the box.
void TestRecording::toldBetweenOperations() {
    QVERIFY(QDir().mkpath(record("journal.csv")));
    QLockFile held(record("record.lock"));
    QVERIFY(held.tryLock());
    bench_->plugIn(1, kRecorded + QStringList({"--pace", "19200"}));
    QVERIFY(bench_->start());
    click("CommandRdSettingsBp", kFound);
    bench_->program().click("CommandWrite");
    QTRY_VERIFY_WITH_TIMEOUT(bench_->unit().received().contains("# 024430        "), kRecordLimitMs);
    held.unlock();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), kLeft, kRecordLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(),
                              "critical \"Quorvex Config\" [OK]: The record is not kept. " +
                                  record("journal.csv") + ": It is no ordinary file.",
                              kRecordLimitMs);
    bench_->program().clickOk();
}

// Reads and writes go on while the disk does not answer, and the end waits no more than a few seconds.
void TestRecording::slowDisk() {
    constexpr int kLivelyReadMs = 2000;  // and not the ten seconds for which the lock is waited for
    QVERIFY(QDir().mkpath(record()));
    QLockFile held(record("record.lock"));
    QVERIFY(held.tryLock());
    bench_->plugIn(1, kRecorded);
    QVERIFY(bench_->start());
    click("CommandRdSettingsBp", kFound);
    click("CommandWrite", kLeft);
    QElapsedTimer since;
    since.start();
    click("CommandRdSettingsBp", kFound);
    QVERIFY2(since.elapsed() < kLivelyReadMs, qPrintable(QString::number(since.elapsed())));
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
    const QString errors = bench_->program().errors();
    QVERIFY2(errors.contains("The record is not kept. The disk took too long."), qPrintable(errors));
    QCOMPARE(journal(), QStringList("none"));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestRecording, QCoreApplication)
#include "test_recording.moc"
