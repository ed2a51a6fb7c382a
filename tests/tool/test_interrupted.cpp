#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <csignal>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

namespace {
constexpr int kSignalled = 128;
}

/// A signal in the middle of a command: the line on the wire is finished, no other follows, and the result
/// says how far it got.
class TestInterrupted : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tool_ = std::make_unique<ToolProcess>(); }
    void cleanup() { tool_.reset(); }
    void read_data();
    void read();
    void hangUpThatIsIgnored();
    void write();
    void screen();

private:
    void signal(int number) { QCOMPARE(::kill(pid_t(tool_->process().processId()), number), 0); }

    SettingsFolder folder_;
    std::unique_ptr<ToolProcess> tool_;
};

void TestInterrupted::read_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestInterrupted::read() {
    QFETCH(int, number);
    UnitProcess& unit = tool_->plugIn(1, {"beltpack", "--fault", "late=08:60000"});
    const QString path = folder_.path("found.bpc");
    tool_->start("--json --port COM1 read " + path);
    QTRY_VERIFY(unit.received().contains("# 0108"));
    signal(number);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kSignalled + number);
    QCOMPARE(ended.object()["status"].toInt(), kSignalled + number);
    QCOMPARE(ended.err, "quorvex-tool: Interrupted. The last line that was answered: \"# 0107\".\n");
    QCOMPARE(unit.received().last(), "# 0108");
    QVERIFY(!QFile::exists(path));
}

// As nohup starts it: the read goes on to its end.
void TestInterrupted::hangUpThatIsIgnored() {
    UnitProcess& unit = tool_->plugIn(1, {"beltpack", "--fault", "late=08:1000"});
    const auto before = std::signal(SIGHUP, SIG_IGN);
    tool_->start("--port COM1 read");
    std::signal(SIGHUP, before);
    QTRY_VERIFY(unit.received().contains("# 0108"));
    signal(SIGHUP);
    QCOMPARE(tool_->end().status, 0);
}

// On a paced line, so that there is time to interrupt it between two lines.
void TestInterrupted::write() {
    UnitProcess& unit = tool_->plugIn(1, {"beltpack", "--pace", "19200"});
    tool_->start("--json --port COM1 write " + folder_.make("new.bpc", {{5, "24"}}));
    QTRY_VERIFY(unit.received().contains("# 024702        "));
    signal(SIGINT);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kSignalled + SIGINT);
    QVERIFY2(ended.err.startsWith("quorvex-tool: Interrupted. The last line that was answered: \"# 01"),
             qPrintable(ended.err));
    // What was verified is told; nothing was cut short.
    const QStringList sent = unit.received();
    const QJsonArray written = ended.object()["written"].toArray();
    QVERIFY(written.contains("Headset Limit"));
    QVERIFY(!written.contains("Feature Map"));
    QVERIFY(!sent.contains("# 025502        "));
    const int writes = int(sent.filter(QRegularExpression("^# 0[26][45]")).size());
    QVERIFY2(writes == written.size() || writes == written.size() + 1, qPrintable(sent.join('\n')));
    const QRegularExpression whole("^(# 01[0-9A-Fa-f]{2}|# 024.{11}|# 025.{11}|# 064.{11}|! 0108)$");
    for (const QString& line : sent)
        QVERIFY2(whole.match(line).hasMatch(), qPrintable(line));
}

void TestInterrupted::screen() {
    tool_->plugIn(1, {"beltpack"});
    const QString path = folder_.path("display.bmp");
    tool_->start("--port COM1 screen " + path);
    QTRY_VERIFY(tool_->hasOpen(1));
    signal(SIGTERM);
    const auto ended = tool_->end();
    QCOMPARE(ended.status, kSignalled + SIGTERM);
    QVERIFY(!QFile::exists(path));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestInterrupted, QCoreApplication)
#include "test_interrupted.moc"
