#include <QJsonArray>
#include <QLockFile>
#include <QRegularExpression>
#include <QTest>
#include <csignal>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

namespace {
const QStringList kUnit{"beltpack", "--set", "01=00443186A0"};
}

/// --record: what the built tool leaves in the folder.
class TestToolRecord : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { tool_.reset(); }
    void leaves_data();
    void leaves();
    void foundAndLeft();
    void silentUnit();
    void interrupted();
    void twoTools();
    void cannotBeKept_data();
    void cannotBeKept();
    void slowDisk();
    void noFolderNamed();

private:
    QString settings(const QMap<int, QString>& changes) const { return folder_->make("new.bpc", changes); }
    QString record(const QString& name = {}) const { return folder_->path("record/" + name); }
    ToolProcess::Ended run(const QString& words) {
        return tool_->run("--port COM1 --record " + record() + " " + words);
    }
    /// The journal's lines but for the header and their times.
    QStringList journal() const {
        QStringList lines =
            QString::fromUtf8(SettingsFolder::content(record("journal.csv"))).split('\n', Qt::SkipEmptyParts);
        lines.removeFirst();
        return lines.replaceInStrings(QRegularExpression("^\\d{4}-\\d\\d-\\d\\dT\\d{6},"), "");
    }
    /// The files of the unit 100000, oldest first, but for their times.
    QStringList kinds() const {
        return names().replaceInStrings(QRegularExpression("^[^-]*-..-...\\d*(_\\d+)?-"), "");
    }
    QStringList names(const QString& psn = "100000") const {
        return QDir(record(psn)).entryList(QDir::Files | QDir::Hidden);
    }
    QByteArray file(const QString& kind) const {
        const QStringList those = names().filter(kind);
        return those.isEmpty() ? "none" : SettingsFolder::content(record("100000/" + those.last()));
    }

    std::unique_ptr<SettingsFolder> folder_;
    std::unique_ptr<ToolProcess> tool_;
};

void TestToolRecord::init() {
    folder_ = std::make_unique<SettingsFolder>();
    tool_ = std::make_unique<ToolProcess>();
}

void TestToolRecord::leaves_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("files");
    const QString found = "as-found.bpc";
    const QString left = "as-left.bpc";
    const QString read = "COM1,100000,read,done,";
    const auto row = [](const char* words, int status, const QStringList& lines, const QStringList& files) {
        QTest::newRow(words) << words << status << lines << files;
    };
    row("read", 0, {read}, {found});
    row("verify FILE", 1, {read}, {found});
    row("write FILE --dry-run", 0, {read}, {found});
    row("write FILE", 0,
        {read,
         "COM1,100000,write,done,Headset Limit: 30 -> 24; Headset Mic Type: 01 -> 02; Master Volume: 10 -> "
         "1F"},
        {found, left});
    row("production-values", 0,
        {read,
         "COM1,100000,production-values,done,Headset Limit: 30 -> 24; Low Battery Alarm: 01 -> 00; "
         "Headset Mic Gain: 02 -> 08; Master Volume: 10 -> 13"},
        {found, left});
    row("set pli 27", 0, {"COM1,,set System Id Length,done,System Id Length: ? -> 27"}, {});
    row("set psn 100001", 0, {"COM1,100001,set Beltpack PSN/ID,done,Beltpack PSN/ID: ? -> 00443186A1"}, {});
}

void TestToolRecord::leaves() {
    QFETCH(QString, words);
    QFETCH(int, status);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, files);
    tool_->plugIn(1, kUnit);
    const auto ended = run(words.replace("FILE", settings({{5, "24"}})));
    QCOMPARE(ended.err, "");
    QCOMPARE(ended.status, status);
    QCOMPARE(journal(), lines);
    QCOMPARE(kinds(), files);
}

// Both as `read FILE.bpc` saves them before and afterwards.
void TestToolRecord::foundAndLeft() {
    tool_->plugIn(1, kUnit);
    tool_->run("--port COM1 read " + folder_->path("before.bpc"));
    run("write " + settings({{5, "24"}}));
    tool_->run("--port COM1 read " + folder_->path("after.bpc"));
    QCOMPARE(file("found"), SettingsFolder::content(folder_->path("before.bpc")));
    QCOMPARE(file("left"), SettingsFolder::content(folder_->path("after.bpc")));
    QVERIFY(file("found") != file("left"));
}

void TestToolRecord::silentUnit() {
    tool_->plugIn(1, {"beltpack", "--unavailable", "01"});
    QCOMPARE(run("read").status, 3);
    QCOMPARE(journal(), QStringList("COM1,,read,failed,"));
    QCOMPARE(QDir(record()).entryList(QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList("journal.csv"));
}

void TestToolRecord::interrupted() {
    UnitProcess& unit = tool_->plugIn(1, kUnit + QStringList({"--pace", "19200"}));
    tool_->start("--port COM1 --record " + record() + " write " + settings({{5, "24"}}));
    QTRY_VERIFY_WITH_TIMEOUT(unit.received().contains("# 024424        "), 20'000);
    QCOMPARE(::kill(pid_t(tool_->process().processId()), SIGINT), 0);
    QCOMPARE(tool_->end().status, 128 + SIGINT);
    const QStringList lines = journal();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[1].startsWith("COM1,100000,write,interrupted,"), qPrintable(lines[1]));
    QCOMPARE(kinds(), QStringList("as-found.bpc"));
}

void TestToolRecord::twoTools() {
    tool_->plugIn(1, kUnit);
    tool_->plugIn(2, {"beltpack", "--set", "01=00443186A1"});
    ToolProcess second;
    qputenv("QUORVEX_PORTS", QFileInfo(tool_->portLink(1)).path().toLocal8Bit());
    constexpr int kTimes = 5;
    for (int i = 0; i < kTimes; ++i) {
        tool_->start("--port COM1 --record " + record() + " production-values");
        second.start("--port COM2 --record " + record() + " production-values");
        QCOMPARE(tool_->end().status, 0);
        QCOMPARE(second.end().status, 0);
    }
    QCOMPARE(journal().size(), 4 * kTimes);
    QCOMPARE(journal().filter(QRegularExpression("^COM[12],10000[01],(read|production-values),done,")).size(),
             4 * kTimes);
    for (const char* psn : {"100000", "100001"})
        QCOMPARE(names(psn).size(), 2 * kTimes);
}

void TestToolRecord::cannotBeKept_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("status");
    QTest::newRow("done") << "write FILE" << 5;
    QTest::newRow("not done") << "verify FILE" << 1;
}

// The unit gets what it is to get all the same.
void TestToolRecord::cannotBeKept() {
    QFETCH(QString, words);
    QFETCH(int, status);
    QFile taken(folder_->path("record"));
    QVERIFY(taken.open(QIODevice::WriteOnly));
    tool_->plugIn(1, kUnit);
    const auto ended = tool_->run("--json --port COM1 --record " + taken.fileName() + " " +
                                  words.replace("FILE", settings({{5, "24"}})));
    QCOMPARE(ended.status, status);
    QCOMPARE(ended.err, "quorvex-tool: The record is not kept. " + taken.fileName() + " is no folder.\n");
    QCOMPARE(ended.object()["status"].toInt(), status);
    QCOMPARE(ended.object()[status == 5 ? "changes" : "differences"].toArray().size(), 3);
}

// Until the unit has done all, nothing waits for the disk.
void TestToolRecord::slowDisk() {
    QVERIFY(QDir().mkpath(record()));
    QLockFile held(record("record.lock"));
    QVERIFY(held.tryLock());
    tool_->plugIn(1, kUnit + QStringList({"--pace", "19200"}));
    tool_->start("--port COM1 --record " + record() + " write " + settings({{5, "24"}}));
    QTRY_VERIFY(tool_->hasOpen(1));
    QTRY_VERIFY_WITH_TIMEOUT(!tool_->hasOpen(1), 30'000);
    QCOMPARE(tool_->process().state(), QProcess::Running);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, 5);
    QCOMPARE(ended.err, "quorvex-tool: The record is not kept. The disk took too long.\n");
    QVERIFY2(ended.out.startsWith("PSN 100000: 3 parameters changed.\n"), qPrintable(ended.out));
}

void TestToolRecord::noFolderNamed() {
    UnitProcess& unit = tool_->plugIn(1, kUnit);
    const auto ended = tool_->run("--port COM1 --record= read");
    QCOMPARE(ended.status, 2);
    QCOMPARE(ended.err, "quorvex-tool: --record needs DIR after it.\n");
    QCOMPARE(unit.received(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestToolRecord, QCoreApplication)
#include "test_tool_record.moc"
