#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <csignal>

#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

namespace {

const QString kEight = "COM1,COM2,COM3,COM4,COM5,COM6,COM7,COM8";
constexpr int kInterrupted = 128;

/// Processes that a process has started and that have not ended, each with its command line.
QMap<pid_t, QString> startedBy(qint64 process) {
    QMap<pid_t, QString> started;
    const auto ids =
        SettingsFolder::content(QString("/proc/%1/task/%1/children").arg(process)).simplified().split(' ');
    for (const QByteArray& id : ids) {
        QByteArray words = SettingsFolder::content("/proc/" + id + "/cmdline");
        if (!words.isEmpty())  // as it is once it has ended
            started.insert(id.toInt(), words.replace('\0', ' '));
    }
    return started;
}

bool hasEnded(pid_t process) {
    const QString words = QString("/proc/%1/cmdline").arg(process);
    return !QFile::exists(words) || SettingsFolder::content(words).isEmpty();
}

/// The lines of the table at the end of a text: "COM1 100001 done".
QStringList tableIn(const QString& out) {
    QStringList lines;
    for (const QString& line : out.section("\n\n", -1).trimmed().split('\n'))
        lines << line.simplified();
    return lines;
}

}  // namespace

/// One command on several ports, a process each.
class TestSideBySide : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tool_ = std::make_unique<ToolProcess>(); }
    void cleanup() {
        if (eight_)
            eight_->end();
        eight_.reset();
        tool_.reset();
    }
    void eightPaced();
    void eightGetPsns_data();
    void eightGetPsns();
    void psnsWhenPortsFail();
    void linesAreMarked();
    void object();
    void outcomes_data();
    void outcomes();
    void wrongUse();
    void filesOfEach();
    void interrupted_data();
    void interrupted();
    void interruptedAtOnce();
    void interruptedTooEarly();
    void crash();
    void killed();
    void progressOnATerminal();
    void outputThatIsNotTaken();

private:
    /// Eight paced Beltpacks at COM1 to COM8, which tell what they hold.
    void plugInEight();
    QByteArray heldAt(int number) { return eight_->holds(dump(number)); }
    QString dump(int number) const { return folder_.path(QString("unit%1").arg(number)); }
    /// A read of COM1 and COM2 that waits for an answer of COM2, COM1 being done.
    void startAndWaitForTwo(const QString& line);
    void signal(qint64 process, int number) { QCOMPARE(::kill(pid_t(process), number), 0); }

    SettingsFolder folder_;
    std::unique_ptr<ToolProcess> tool_;
    std::unique_ptr<UnitProcess> eight_;
};

void TestSideBySide::plugInEight() {
    QFile bench(folder_.path("bench.txt"));
    QVERIFY(bench.open(QIODevice::WriteOnly));
    for (int i = 1; i <= 8; ++i)
        bench.write(QString("beltpack --pace 19200 --module %1 --set 01=004430000%2 --link %3 --dump %4\n")
                        .arg(i % 2 == 0 ? "kirk" : "rm5")
                        .arg(i)
                        .arg(tool_->portLink(i), dump(i))
                        .toLocal8Bit());
    bench.close();
    eight_ = std::make_unique<UnitProcess>(QStringList{"bench", bench.fileName()});
    for (int i = 1; i <= 8; ++i)
        QTRY_VERIFY(QFile::exists(tool_->portLink(i)));
}

void TestSideBySide::eightPaced() {
    plugInEight();
    const QString file = folder_.make("new.bpc", {{5, "24"}});
    const auto written = tool_->run("--port " + kEight + " write " + file);
    QCOMPARE(written.err, "");
    QCOMPARE(written.status, 0);
    QStringList table{"Port PSN Outcome"};
    for (int i = 1; i <= 8; ++i) {
        table << QString("COM%1 %1 done").arg(i);
        QVERIFY2(written.out.contains(QString("COM%1: PSN %1: ").arg(i)), qPrintable(written.out));
        QVERIFY(heldAt(i).contains("\n04=24\n"));
    }
    QCOMPARE(tableIn(written.out), table);
    const auto read = tool_->run("--port " + kEight + " read " + folder_.path("{port}.bpc"));
    QCOMPARE(read.status, 0);
    QCOMPARE(tableIn(read.out), table);
    for (int i = 1; i <= 8; ++i) {
        const QByteArray saved = SettingsFolder::content(folder_.path(QString("COM%1.bpc").arg(i)));
        QCOMPARE(saved.split('\n').at(1), "004430000" + QByteArray::number(i) + '\r');
    }
    QCOMPARE(tableIn(tool_->run("--port " + kEight + " verify --without-identity " + file).out), table);
}

void TestSideBySide::eightGetPsns_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<int>>("psns");
    QTest::addColumn<QString>("next");
    QTest::newRow("first") << "100001"
                           << QList<int>{100001, 100002, 100003, 100004, 100005, 100006, 100007, 100008}
                           << "Next PSN: 100009";
    QTest::newRow("list") << "5,9,3,1048574,7,8,200,100" << QList<int>{5, 9, 3, 1048574, 7, 8, 200, 100}
                          << "Next PSN: 1048575";
    QTest::newRow("none is left") << "1048568" << QList<int>{1048568, 1048569, 1048570, 1048571,
                                                             1048572, 1048573, 1048574, 1048575}
                                  << "COM8 1048575 done";
}

void TestSideBySide::eightGetPsns() {
    QFETCH(QString, value);
    QFETCH(QList<int>, psns);
    QFETCH(QString, next);
    plugInEight();
    const auto ended = tool_->run("--port " + kEight + " set psn " + value);
    QCOMPARE(ended.status, 0);
    const QStringList table = tableIn(ended.out);
    for (int i = 1; i <= 8; ++i) {
        const int psn = psns.at(i - 1);
        QCOMPARE(table.at(i), QString("COM%1 %2 done").arg(i).arg(psn));
        const QByteArray digits = QByteArray::number(psn, 16).toUpper().rightJustified(5, '0');
        QVERIFY2(heldAt(i).startsWith("01=00443" + digits + '\n'), heldAt(i).constData());
    }
    QCOMPARE(table.last(), next);
}

// A number that was meant for one that failed is given to no other.
void TestSideBySide::psnsWhenPortsFail() {
    const QStringList ports{"COM1", "COM2", "COM3", "COM4", "COM5"};
    for (const int sound : {1, 5})
        tool_->plugIn(sound, {"beltpack", "--dump", dump(sound)});
    tool_->plugIn(3, {"beltpack", "--fault", "no-reply", "--dump", dump(3)});
    tool_->plugIn(4, {"beltpack", "--fault", "other-value=01", "--dump", dump(4)});
    const auto ended = tool_->run("--port " + ports.join(',') + " set psn 100001");
    QCOMPARE(ended.status, 4);
    QCOMPARE(tableIn(ended.out),
             QStringList({"Port PSN Outcome", "COM1 100001 done", "COM2 100002 port fault",
                          "COM3 100003 no answer", "COM4 100004 differs", "COM5 100005 done",
                          "Next PSN: 100006"}));
    for (const int i : {1, 3, 4, 5})
        tool_->end(i);
    for (const int i : {1, 3, 4, 5})  // the third has taken it, and did not say so
        QVERIFY(SettingsFolder::content(dump(i)).startsWith("01=00443186A" + QByteArray::number(i) + '\n'));
}

void TestSideBySide::linesAreMarked() {
    tool_->plugIn(1, {"beltpack", "--set", "01=0044300007"});
    tool_->plugIn(2, {"beltpack", "--set", "01=0044300008"});
    const auto ended = tool_->run("--port COM1,COM2,COM9 read");
    QCOMPARE(ended.status, 4);
    const QRegularExpression said("^COM9: quorvex-tool: COM9 cannot be opened. .*Absent: .*\n$");
    QVERIFY2(said.match(ended.err).hasMatch(), qPrintable(ended.err));
    // What one says stands together and is what it says alone.
    const QString text = ended.out.section("\n\n", 0, 0) + '\n';
    for (int i = 1; i <= 2; ++i) {
        const QString port = QString("COM%1").arg(i);
        QString alone = tool_->run("--port " + port + " read").out;
        alone.chop(1);
        const QString marked = port + ": " + alone.replace('\n', "\n" + port + ": ") + '\n';
        QVERIFY2(text.contains(marked), qPrintable(text));
    }
    QCOMPARE(text.count('\n'), 2 * tool_->run("--port COM1 read").out.count('\n'));
}

void TestSideBySide::object() {
    tool_->plugIn(2, {"beltpack", "--set", "01=0044300007"});
    tool_->plugIn(1, {"beltpack", "--fault", "no-reply"});
    const auto ended = tool_->run("--json --port COM2,COM1,COM9 read");
    QCOMPARE(ended.status, 4);
    QCOMPARE(ended.out.count('\n'), 1);
    const QJsonObject whole = ended.object();
    QCOMPARE(whole.keys(), QStringList({"command", "ports", "status"}));
    QCOMPARE(whole["command"].toString(), "read");
    QCOMPARE(whole["status"].toInt(), 4);
    const QJsonArray ports = whole["ports"].toArray();
    QCOMPARE(ports.size(), 3);
    const QString alone = tool_->run("--json --port COM2 read").out;
    QCOMPARE(QJsonDocument(ports[0].toObject()).toJson(QJsonDocument::Compact) + '\n', alone.toUtf8());
    QCOMPARE(ports[1]["port"].toString(), "COM1");
    QCOMPARE(ports[1]["status"].toInt(), 3);
    QVERIFY(ports[1]["problem"].toString().contains("No line was answered."));
    QCOMPARE(ports[2]["port"].toString(), "COM9");
    QCOMPARE(ports[2]["status"].toInt(), 4);
    const QJsonObject set = tool_->run("--json --port COM2,COM9 set psn 20").object();
    QCOMPARE(set["nextPsn"].toInt(), 22);
    QCOMPARE(set["ports"][1]["psn"].toInt(), 21);
}

void TestSideBySide::outcomes_data() {
    QTest::addColumn<QStringList>("unit");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<int>("status");
    const QStringList beltpack{"beltpack", "--set", "01=0044300002"};
    QTest::newRow("done") << beltpack << "version beltpack"
                          << "COM2 - done" << 0;
    QTest::newRow("differs") << beltpack << "verify FILE"
                             << "COM2 2 differs" << 1;
    QTest::newRow("read back otherwise")
        << beltpack + QStringList{"--fault", "other-value=02"} << "set pli 27"
        << "COM2 - differs" << 1;
    QTest::newRow("no answer") << beltpack + QStringList{"--fault", "garbled"} << "read"
                               << "COM2 - no answer" << 3;
    QTest::newRow("absent") << QStringList() << "read"
                            << "COM2 - port fault" << 4;
}

void TestSideBySide::outcomes() {
    QFETCH(QStringList, unit);
    QFETCH(QString, words);
    QFETCH(QString, outcome);
    QFETCH(int, status);
    tool_->plugIn(1, {"beltpack"});
    if (!unit.isEmpty())
        tool_->plugIn(2, unit);
    // The file is what the first one holds.
    QCOMPARE(tool_->run("--port COM1 read " + folder_.path("new.bpc")).status, 0);
    const auto ended = tool_->run("--port COM1,COM2 " + words.replace("FILE", folder_.path("new.bpc")));
    QCOMPARE(ended.status, status);
    QCOMPARE(tableIn(ended.out).at(2), outcome);
    QVERIFY(tableIn(ended.out).at(1).endsWith(" done"));
}

// Told once, and nothing is sent to anybody.
void TestSideBySide::wrongUse() {
    UnitProcess& unit = tool_->plugIn(1, {"beltpack"});
    tool_->plugIn(2, {"beltpack"});
    const auto ended = tool_->run("--port COM1,COM2 set psn 1048575");
    QCOMPARE(ended.status, 2);
    QCOMPARE(ended.out, "");
    QCOMPARE(ended.err, "quorvex-tool: \"1048576\" is no PSN: it takes a decimal number, 0 to 1048575.\n");
    const auto object = tool_->run("--json --port COM1,COM1 read");
    QCOMPARE(object.status, 2);
    QCOMPARE(object.object()["problem"].toString(), "--port: COM1 and COM1 are the same port.");
    QCOMPARE(unit.received(), QStringList());
}

void TestSideBySide::filesOfEach() {
    for (int i = 1; i <= 2; ++i)
        tool_->plugIn(i, {"beltpack", "--display-rate", "3"});
    const QString device = QFileInfo(tool_->portLink(2)).canonicalFilePath();
    const auto ended = tool_->run("--port COM1," + device + " --trace " + folder_.path("{port}.trace") +
                                  " screen " + folder_.path("{port}.bmp"));
    QCOMPARE(ended.err, "");
    QCOMPARE(ended.status, 0);
    for (const QString& name : {QString("COM1"), QFileInfo(device).fileName()}) {
        QVERIFY(SettingsFolder::content(folder_.path(name + ".bmp")).startsWith("BM"));
        QVERIFY(SettingsFolder::content(folder_.path(name + ".trace")).contains("* open "));
    }
}

void TestSideBySide::startAndWaitForTwo(const QString& line) {
    tool_->plugIn(1, {"beltpack"});
    UnitProcess& unit = tool_->plugIn(2, {"beltpack", "--fault", "late=08:60000"});
    tool_->start(line);
    QTRY_VERIFY(unit.received().contains("# 0108"));
    QTRY_COMPARE(startedBy(tool_->process().processId()).size(), 1);
}

void TestSideBySide::interrupted_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

// The tool alone gets the signal, and passes it on.
void TestSideBySide::interrupted() {
    QFETCH(int, number);
    startAndWaitForTwo("--port COM1,COM2 read " + folder_.path("{port}-found.bpc"));
    signal(tool_->process().processId(), number);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kInterrupted + number);
    QCOMPARE(ended.err, "COM2: quorvex-tool: Interrupted. The last line that was answered: \"# 0107\".\n");
    QCOMPARE(tableIn(ended.out), QStringList({"Port PSN Outcome", "COM1 12345 done", "COM2 - interrupted"}));
    QVERIFY(QFile::exists(folder_.path("COM1-found.bpc")));
    QVERIFY(!QFile::exists(folder_.path("COM2-found.bpc")));
}

// As Ctrl+C does it: each process gets the signal by itself, at any moment.
void TestSideBySide::interruptedAtOnce() {
    tool_->plugIn(1, {"beltpack", "--fault", "late=01:60000"});
    tool_->plugIn(2, {"beltpack", "--fault", "late=01:60000"});
    tool_->start("--json --port COM1,COM2 read");
    const qint64 parent = tool_->process().processId();
    QTRY_COMPARE(startedBy(parent).size(), 2);
    for (const auto& [process, words] : startedBy(parent).asKeyValueRange())
        signal(process, SIGINT);
    signal(parent, SIGINT);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kInterrupted + SIGINT);
    QCOMPARE(ended.object()["status"].toInt(), kInterrupted + SIGINT);
    for (const auto& port : ended.object()["ports"].toArray())
        QCOMPARE(port.toObject()["status"].toInt(), kInterrupted + SIGINT);
}

void TestSideBySide::crash() {
    startAndWaitForTwo("--json --port COM1,COM2 read");
    const auto started = startedBy(tool_->process().processId());
    QVERIFY2(started.first().contains("--port=COM2"), qPrintable(started.first()));
    signal(started.firstKey(), SIGKILL);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, 128);
    const QJsonArray ports = ended.object()["ports"].toArray();
    QCOMPARE(ports[0]["status"].toInt(), 0);
    QCOMPARE(ports[1]["status"].toInt(), 128);
    QCOMPARE(ports[1]["problem"].toString(), "The process for this port ended without a result.");
    QCOMPARE(ended.err, "COM2: quorvex-tool: The process for this port ended without a result.\n");
}

// One that ends by the signal itself, as before it is ready for it, is interrupted, too.
void TestSideBySide::interruptedTooEarly() {
    startAndWaitForTwo("--json --port COM1,COM2 read");
    const pid_t process = startedBy(tool_->process().processId()).firstKey();
    const auto hasLine = [&](const QByteArray& line) {
        return SettingsFolder::content(QString("/proc/%1/status").arg(process)).contains(line);
    };
    signal(process, SIGSTOP);
    QTRY_VERIFY(hasLine("State:\tT"));  // or the other signal may come before it
    signal(tool_->process().processId(), SIGTERM);
    QTRY_VERIFY(hasLine("ShdPnd:\t" + QByteArray::number(1 << (SIGTERM - 1), 16).rightJustified(16, '0')));
    signal(process, SIGKILL);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kInterrupted + SIGTERM);
    QCOMPARE(ended.err, "COM2: quorvex-tool: Interrupted.\n");
    QCOMPARE(ended.object()["ports"][1]["status"].toInt(), kInterrupted + SIGTERM);
}

// Nobody is left behind on a port.
void TestSideBySide::killed() {
    startAndWaitForTwo("--port COM1,COM2 read");
    const pid_t left = startedBy(tool_->process().processId()).firstKey();
    tool_->process().kill();
    QVERIFY(tool_->process().waitForFinished());
    QTRY_VERIFY(hasEnded(left));
}

void TestSideBySide::progressOnATerminal() {
    startAndWaitForTwo("--port COM1,COM2 read");  // not on a terminal
    signal(tool_->process().processId(), SIGTERM);
    QVERIFY(!tool_->end().err.contains("have ended"));
    tool_->plugIn(2, {"beltpack"});
    const PseudoTerminal terminal;
    QProcess process;
    process.setStandardErrorFile(terminal.path());
    process.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tool",
                  {"--port", "COM1,COM2,COM9", "set", "pli", "27"});
    QVERIFY(process.waitForFinished());
    const QByteArray told = terminal.arrived();
    for (const char* text : {"\r\033[K0 of 3 have ended", "\r\033[KCOM9: quorvex-tool: COM9 cannot"})
        QVERIFY2(told.contains(text), told.constData());
    QVERIFY(told.endsWith("\r\033[K"));
}

void TestSideBySide::outputThatIsNotTaken() {
    if (!QFile::exists("/dev/full"))
        QSKIP("no device that is full");
    for (int i = 1; i <= 2; ++i)
        tool_->plugIn(i, {"beltpack"});
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tool",
                  {"--port", "COM1,COM2", "version", "beltpack"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 5);
    QCOMPARE(process.readAllStandardError(), "quorvex-tool: the standard output does not take the result.\n");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSideBySide, QCoreApplication)
#include "test_side_by_side.moc"
