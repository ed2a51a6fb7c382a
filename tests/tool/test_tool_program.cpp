#include <QFile>
#include <QTest>

#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

/// The built tool on simulated units: what goes where, and the exit status.
class TestToolProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tool_ = std::make_unique<ToolProcess>(); }
    void cleanup() { tool_.reset(); }
    void done_data();
    void done();
    void textOrObject();
    void wrongUse_data();
    void wrongUse();
    void noAnswer();
    void differs();
    void file();
    void portCannotBeOpened_data();
    void portCannotBeOpened();
    void portInUse();
    void unplugged();
    void portByPath();
    void portOfTheWindow();
    void settingsStay();
    void noProgressInPipes();
    void progressOnATerminal();
    void outputThatIsNotTaken();
    void readerThatHasGone();
    void trace();
    void traceThatCannotBeWritten_data();
    void traceThatCannotBeWritten();
    void helpAndVersion();

private:
    QString settings(const QMap<int, QString>& changes = {}) { return folder_.make("new.bpc", changes); }

    SettingsFolder folder_;
    std::unique_ptr<ToolProcess> tool_;
};

void TestToolProgram::done_data() {
    QTest::addColumn<QStringList>("unit");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("key");
    const QStringList beltpack{"beltpack"};
    const QStringList antenna{"antenna"};
    const auto row = [](const QStringList& unit, const char* words, const char* key) {
        QTest::newRow(words) << unit << words << key;
    };
    row(beltpack, "read", "parameters");
    row(beltpack, "write FILE", "changes");
    row(beltpack, "write FILE --dry-run", "changes");
    row(beltpack, "set psn 100001", "read");
    row(beltpack, "set system-id 100ECE1000", "read");
    row(beltpack, "set pli 27", "read");
    row(beltpack, "set rf-carriers 03FE0A0B0C", "read");
    row(beltpack, "production-values", "changes");
    row(beltpack, "version beltpack", "DECT Version");
    row(antenna, "version antenna", "DECT Version");
    row(antenna, "antenna", "moduleA");
    row(antenna, "antenna --tbr6", "moduleB");
    row({}, "show FILE", "parameters");
    row({}, "check FILE", "defects");
    row({}, "diff FILE FILE", "differences");
    row({}, "ports", "ports");
}

void TestToolProgram::done() {
    QFETCH(QStringList, unit);
    QFETCH(QString, words);
    QFETCH(QString, key);
    QString line = QString(words).replace("FILE", settings());
    if (!unit.isEmpty()) {
        tool_->plugIn(3, unit);
        line = "--port COM3 " + line;
    }
    const auto ended = tool_->run("--json " + line);
    QCOMPARE(ended.err, "");
    QCOMPARE(ended.status, 0);
    QCOMPARE(ended.out.count('\n'), 1);
    const QJsonObject object = ended.object();
    QVERIFY2(object.contains(key), qPrintable(ended.out));
    QCOMPARE(object["command"].toString(), words.section(' ', 0, 0));
    QCOMPARE(object["status"].toInt(-1), 0);
    QCOMPARE(object["port"].toString(), unit.isEmpty() ? "" : "COM3");
}

void TestToolProgram::textOrObject() {
    tool_->plugIn(1, {"beltpack", "--set", "01=00443186A0"});
    const auto text = tool_->run("--port COM1 read");
    QCOMPARE(text.status, 0);
    QCOMPARE(text.err, "");
    QVERIFY(text.out.startsWith("PSN 100000\n\nParam "));
    const auto object = tool_->run("--port COM1 read --json");
    QCOMPARE(object.object()["psn"].toInt(), 100000);
}

void TestToolProgram::wrongUse_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    QTest::newRow("no command") << ""
                                << "quorvex-tool: Say what to do: ports, read, ";
    QTest::newRow("no such command") << "reset"
                                     << "quorvex-tool: \"reset\" is no command; there are ports, read, ";
    QTest::newRow("no such port")
        << "--port COM13 read"
        << "quorvex-tool: --port: \"COM13\" is neither COM1 to COM12 nor a device such as "
           "/dev/ttyUSB0.\n";
    QTest::newRow("no PSN") << "--port COM1 set psn x"
                            << "quorvex-tool: \"x\" is no PSN: it takes a decimal number, 0 to 1048575.\n";
    QTest::newRow("no number") << "--port COM1 screen a.bmp --frames 0"
                               << "quorvex-tool: --frames: \"0\" is no number from 1 to 255.\n";
    QTest::newRow("no bitmap")
        << "--port COM1 screen a.png"
        << "quorvex-tool: \"a.png\" is no name that ends in .bmp, as display.bmp does.\n";
    QTest::newRow("no name") << "--port COM1 screen .bmp"
                             << "quorvex-tool: \".bmp\" is no name that ends in .bmp, as display.bmp does.\n";
}

void TestToolProgram::wrongUse() {
    QFETCH(QString, words);
    QFETCH(QString, told);
    const auto ended = tool_->run(words);
    QCOMPARE(ended.status, 2);
    QVERIFY2(ended.err.startsWith(told), qPrintable(ended.err));
    QCOMPARE(ended.out, "");
    const QJsonObject object = tool_->run("--json " + words).object();
    QCOMPARE(object["status"].toInt(), 2);
    QCOMPARE("quorvex-tool: " + object["problem"].toString() + "\n", ended.err);
}

void TestToolProgram::noAnswer() {
    tool_->plugIn(1, {"beltpack", "--fault", "no-reply"});
    const auto ended = tool_->run("--json --port COM1 set pli 1F");
    QCOMPARE(ended.status, 3);
    QCOMPARE(ended.object()["status"].toInt(), 3);
    QCOMPARE("quorvex-tool: " + ended.object()["problem"].toString() + "\n", ended.err);
}

void TestToolProgram::differs() {
    tool_->plugIn(1, {"beltpack", "--fault", "other-value=02"});
    const auto ended = tool_->run("--json --port COM1 set pli 1F");
    QCOMPARE(ended.status, 1);
    QCOMPARE(ended.object()["read"].toString(), "E0");
    QCOMPARE(tool_->run("--port COM1 verify " + settings()).status, 1);
}

void TestToolProgram::file() {
    const auto ended = tool_->run("--json check " + settings({{5, "zz"}}));
    QCOMPARE(ended.status, 5);
    QCOMPARE(ended.object()["defects"].toArray().size(), 1);
    QCOMPARE(tool_->run("show none.bpc").status, 5);
    QCOMPARE(tool_->run("--port COM1 write none.bpc").status, 5);
}

void TestToolProgram::portCannotBeOpened_data() {
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("told");
    QTest::newRow("absent") << "COM7"
                            << "Absent: connect the adapter, or choose another port.";
    QTest::newRow("absent path") << "/dev/none"
                                 << "/dev/none: Absent: connect the adapter, or choose another port.";
    const QString other = ": No serial port: choose another one.";
    QTest::newRow("file") << "/etc/passwd"
                          << "/etc/passwd" + other;
    QTest::newRow("folder") << "/etc"
                            << "/etc" + other;
    QTest::newRow("other device") << "/dev/null"  // which some program always has open
                                  << "/dev/null" + other;
}

void TestToolProgram::portCannotBeOpened() {
    QFETCH(QString, port);
    QFETCH(QString, told);
    const auto ended = tool_->run("--json read --port " + port);
    QCOMPARE(ended.status, 4);
    QVERIFY2(ended.err.startsWith("quorvex-tool: " + port + " cannot be opened. "), qPrintable(ended.err));
    QVERIFY2(ended.err.contains(told), qPrintable(ended.err));
    QCOMPARE(ended.object()["status"].toInt(), 4);
}

void TestToolProgram::portInUse() {
    tool_->plugIn(1, {"beltpack", "--fault", "late=01:60000"});
    ToolProcess second;
    qputenv("QUORVEX_PORTS", QFileInfo(tool_->portLink(1)).path().toLocal8Bit());
    tool_->start("--port COM1 read");
    const qint64 holder = tool_->process().processId();
    const auto inUse = [&] { return second.run("ports").out.contains("COM1  in use"); };
    QTRY_VERIFY(inUse());
    const QString told = QString("In use by quorvex-tool (%1): close that program first.").arg(holder);
    const auto ended = second.run("--port COM1 read");
    QCOMPARE(ended.status, 4);
    QVERIFY2(ended.err.contains(told), qPrintable(ended.err));
    const QJsonObject port = second.run("ports --json").object()["ports"].toArray().at(0).toObject();
    QCOMPARE(port["state"].toString(), "in use");
    QCOMPARE(port["advice"].toString(), told);
}

void TestToolProgram::unplugged() {
    UnitProcess& unit = tool_->plugIn(1, {"beltpack", "--fault", "late=08:60000"});
    tool_->start("--json --port COM1 read");
    QTRY_VERIFY(unit.received().contains("# 0108"));
    unit.pull();
    const auto ended = tool_->end();
    QCOMPARE(ended.status, 4);
    QCOMPARE(
        ended.err,
        "quorvex-tool: The connection to the port was lost. The last line that was answered: \"# 0107\".\n");
}

void TestToolProgram::portByPath() {
    tool_->plugIn(1, {"beltpack"});
    const QString device = QFileInfo(tool_->portLink(1)).canonicalFilePath();
    for (const QString& port : {device, tool_->portLink(1), QString("com1")})
        QCOMPARE(tool_->run("version beltpack --port " + port).out, "4.07\n");
}

void TestToolProgram::portOfTheWindow() {
    tool_->plugIn(4, {"beltpack"});
    QFile stored(tool_->settingsFile());
    QVERIFY(stored.open(QIODevice::WriteOnly));
    stored.write("[Settings]\nComPort=4\n");
    stored.close();
    const auto ended = tool_->run("version beltpack --json");
    QCOMPARE(ended.status, 0);
    QCOMPARE(ended.object()["port"].toString(), "COM4");
    QVERIFY(stored.open(QIODevice::WriteOnly));
    stored.write("[Settings]\nComPort=four\n");
    stored.close();
    const auto odd = tool_->run("version beltpack");
    QCOMPARE(odd.status, 4);
    QVERIFY2(odd.err.contains("Say which port: --port COM1."), qPrintable(odd.err));
    QVERIFY(QFile::remove(tool_->settingsFile()));
    QVERIFY(tool_->run("version beltpack").err.startsWith("quorvex-tool: COM1 cannot be opened."));
}

// The window goes by its own: neither the port nor the radio module is stored.
void TestToolProgram::settingsStay() {
    tool_->plugIn(2, {"beltpack", "--module", "kirk"});
    QFile stored(tool_->settingsFile());
    QVERIFY(stored.open(QIODevice::WriteOnly));
    stored.write("[Settings]\nComPort=1\nRfModule=0\n");
    stored.close();
    QCOMPARE(tool_->run("--port COM2 read").status, 0);
    QCOMPARE(SettingsFolder::content(tool_->settingsFile()), "[Settings]\nComPort=1\nRfModule=0\n");
}

void TestToolProgram::noProgressInPipes() {
    tool_->plugIn(1, {"beltpack"});
    QCOMPARE(tool_->run("--port COM1 write " + settings()).err, "");
}

// It goes away in the end, so that the result stands alone.
void TestToolProgram::progressOnATerminal() {
    tool_->plugIn(1, {"beltpack"});
    const PseudoTerminal terminal;
    QProcess process;
    process.setStandardErrorFile(terminal.path());
    process.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tool",
                  {"--port", "COM1", "write", settings({{5, "24"}})});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    const QByteArray told = terminal.arrived();
    for (const char* text : {"Reading settings from Beltpack...", "Writing settings to Beltpack..."})
        QVERIFY2(told.contains(text), told.constData());
    QVERIFY(told.endsWith("\r\033[K"));
}

void TestToolProgram::outputThatIsNotTaken() {
    if (!QFile::exists("/dev/full"))
        QSKIP("no device that is full");
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tool", {"show", settings()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 5);
    QCOMPARE(process.readAllStandardError(), "quorvex-tool: the standard output does not take the result.\n");
}

void TestToolProgram::readerThatHasGone() {
    tool_->plugIn(1, {"beltpack"});
    QProcess process;
    process.start("bash",
                  {"-c", "exec 3> >(:); wait $!; \"$QUORVEX_BIN/quorvex-tool\" --port COM1 set pli 27 >&3"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 5);
    QCOMPARE(process.readAllStandardError(), "quorvex-tool: the standard output does not take the result.\n");
}

void TestToolProgram::trace() {
    tool_->plugIn(1, {"beltpack"});
    const QString path = folder_.path("line.trace");
    for (int i = 0; i < 2; ++i)
        QCOMPARE(tool_->run("--port COM1 --trace " + path + " set pli 27").status, 0);
    const QByteArray text = SettingsFolder::content(path);
    QCOMPARE(text.count("# trace of "), 2);
    for (const char* line : {"* open COM1\n", "> # 024227\\x0D\\x0A | 23 20 30 32 34 32 32 37 0D 0A\n",
                             "> # 0102\\x0D\\x0A | ", "< # 028227", "* close\n"})
        QCOMPARE(text.count(line), 2);
}

void TestToolProgram::traceThatCannotBeWritten_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("no folder") << folder_.path("none/line.trace");
    QTest::newRow("a folder") << folder_.path("");
}

void TestToolProgram::traceThatCannotBeWritten() {
    QFETCH(QString, path);
    UnitProcess& unit = tool_->plugIn(1, {"beltpack"});
    const auto ended = tool_->run("--port COM1 set pli 27 --trace " + path);
    QCOMPARE(ended.status, 5);
    QVERIFY2(ended.err.startsWith("quorvex-tool: The trace "), qPrintable(ended.err));
    QCOMPARE(unit.received(), QStringList());
}

void TestToolProgram::helpAndVersion() {
    const auto help = tool_->run("--help");
    QCOMPARE(help.status, 0);
    QVERIFY(help.out.startsWith(
        "Usage: quorvex-tool [--port PORT[,PORT...]] [--json] [--trace FILE] [--record DIR] COMMAND ...\n"));
    QCOMPARE(tool_->run("write --help").out, tool::helpText(&tool::commandTable()[2]));
    QCOMPARE(tool_->run("--version").out, "quorvex-tool " QUORVEX_VERSION "\n");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestToolProgram, QCoreApplication)
#include "test_tool_program.moc"
