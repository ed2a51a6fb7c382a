#include <QProcess>
#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

namespace {

constexpr int kFirstPsn = 100001, kBeltpacks = 20;
constexpr int kBashLimitMs = 30'000;

const QString kTwenty = "twenty Beltpacks", kEightAtOnce = "eight Beltpacks at once";

/// The script on the page of the tool, as it stands there.
QString scriptOfPage(const QString& name) {
    const QString page = SettingsFolder::content(QUORVEX_TOOL_PAGE);
    return page.section("## Set up " + name + "\n", 1).section("```bash\n", 1).section("```", 0, 0);
}

}  // namespace

/// The walk-throughs on the page of the tool, run as they are written: somebody connects one Beltpack after
/// the other, or eight at once.
class TestWalkThrough : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void twentyBeltpacks();
    void stopsAtABadOne();
    void eightBeltpacks();
    void stopsAtABadOneOfEight();

private:
    void begin(const QString& name);
    /// Waits until the script asks for a Beltpack, connects it and presses Enter.
    void connectNext(const QStringList& unit, int psn);
    QString untilAsked();

    std::unique_ptr<ToolProcess> bench_;
    std::unique_ptr<SettingsFolder> folder_;
    std::unique_ptr<QProcess> bash_;
};

void TestWalkThrough::init() {
    bench_ = std::make_unique<ToolProcess>();
    folder_ = std::make_unique<SettingsFolder>();
    folder_->make("workshop.bpc", {{5, "24"}, {2, "0044300001"}});
}

void TestWalkThrough::begin(const QString& name) {
    const QString script = scriptOfPage(name);
    QVERIFY(script.contains("quorvex-tool"));
    bash_ = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", qEnvironmentVariable("QUORVEX_BIN") + ":" + environment.value("PATH"));
    bash_->setProcessEnvironment(environment);
    bash_->setWorkingDirectory(folder_->path(""));
    bash_->start("bash", {"-c", script});
    QVERIFY(bash_->waitForStarted());
}

QString TestWalkThrough::untilAsked() {
    QString told;
    while (!told.endsWith("press Enter.\n") && bash_->waitForReadyRead(kBashLimitMs))
        told += QString::fromUtf8(bash_->readAllStandardOutput());
    return told;
}

void TestWalkThrough::connectNext(const QStringList& unit, int psn) {
    const QString told = untilAsked();
    QVERIFY2(told.endsWith(QString("Connect the Beltpack for %1 to COM1 and press Enter.\n").arg(psn)),
             qPrintable(told));
    bench_->plugIn(1, QStringList("beltpack") + unit);
    bash_->write("\n");
}

void TestWalkThrough::twentyBeltpacks() {
    begin(kTwenty);
    // Each tells what it holds when the next one takes its place.
    for (int psn = kFirstPsn; psn < kFirstPsn + kBeltpacks; ++psn) {
        const QString dump = folder_->path(QString("unit%1").arg(psn));
        connectNext({"--dump", dump, "--module", psn % 2 == 0 ? "kirk" : "rm5", "--set", "04=55"}, psn);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(bash_->waitForFinished(kBashLimitMs));
    QVERIFY(bash_->readAllStandardOutput().endsWith("All are set up.\n"));
    QCOMPARE(bash_->readAllStandardError(), "");
    QCOMPARE(bash_->exitCode(), 0);
    bench_->end(1);
    for (int psn = kFirstPsn; psn < kFirstPsn + kBeltpacks; ++psn) {
        const QList<QByteArray> held =
            SettingsFolder::content(folder_->path(QString("unit%1").arg(psn))).split('\n');
        QVERIFY2(held.contains("01=00443" + QByteArray::number(psn, 16).toUpper()),
                 qPrintable(held.join(' ')));
        QVERIFY(held.contains("04=24"));
        const QString found = folder_->path(QString("found/%1").arg(psn));
        QCOMPARE(SettingsFolder::content(found + ".bpc").split('\n').at(4), "55        \r");
        QVERIFY(SettingsFolder::content(found + ".txt").startsWith("PSN 12345\n"));
    }
}

void TestWalkThrough::stopsAtABadOne() {
    begin(kTwenty);
    connectNext({}, kFirstPsn);
    connectNext({"--fault", "other-value=08"}, kFirstPsn + 1);
    QVERIFY(bash_->waitForFinished(kBashLimitMs));
    QCOMPARE(bash_->exitCode(), 1);
    QVERIFY(bash_->readAllStandardOutput().contains("Not read back as written:\nHeadset Mic Gain "));
}

void TestWalkThrough::eightBeltpacks() {
    const auto dump = [&](int number) { return folder_->path(QString("unit%1").arg(number)); };
    for (int i = 1; i <= 8; ++i)
        bench_->plugIn(i, {"beltpack", "--dump", dump(i), "--set", "04=55"});
    begin(kEightAtOnce);
    QVERIFY(bash_->waitForFinished(kBashLimitMs));
    QCOMPARE(bash_->readAllStandardError(), "");
    const QByteArray told = bash_->readAllStandardOutput();
    QVERIFY2(told.endsWith("COM8  100008  done\nAll eight are set up.\n"), told.constData());
    QVERIFY(told.contains("\nNext PSN: 100009\n"));
    for (int i = 1; i <= 8; ++i) {
        bench_->end(i);
        const QList<QByteArray> held = SettingsFolder::content(dump(i)).split('\n');
        QVERIFY2(held.contains("01=00443186A" + QByteArray::number(i)), qPrintable(held.join(' ')));
        QVERIFY(held.contains("04=24"));
        const QString found = folder_->path(QString("found/100001-COM%1.bpc").arg(i));
        QCOMPARE(SettingsFolder::content(found).split('\n').at(4), "55        \r");
    }
    QVERIFY(SettingsFolder::content(folder_->path("found/100001.txt")).contains("COM8  12345  done\n"));
}

void TestWalkThrough::stopsAtABadOneOfEight() {
    for (int i = 1; i <= 8; ++i)
        bench_->plugIn(i, {"beltpack", "--fault", i == 5 ? "other-value=08" : "late:1"});
    begin(kEightAtOnce);
    QVERIFY(bash_->waitForFinished(kBashLimitMs));
    QCOMPARE(bash_->exitCode(), 1);
    const QByteArray told = bash_->readAllStandardOutput();
    QVERIFY2(told.endsWith("COM4  12345  done\nCOM5  12345  differs\nCOM6  12345  done\n"
                           "COM7  12345  done\nCOM8  12345  done\n"),
             told.constData());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWalkThrough, QCoreApplication)
#include "test_walk_through.moc"
