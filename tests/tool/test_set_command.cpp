#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

/// set: one value of a Beltpack.
class TestSetCommand : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<ToolBench>(ToolBench::beltpack(sim::RfModule::kRm5)); }
    void sets_data();
    void sets();
    void refuses_data();
    void refuses();
    void otherwise_data();
    void otherwise();
    void prefixReadBackOtherwise();
    void nothingComesBack();

private:
    std::unique_ptr<ToolBench> bench_;
};

void TestSetCommand::sets_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("held");
    const auto row = [](const char* words, const QStringList& lines, const char* name, const char* held) {
        QTest::newRow(words) << words << lines << name << held;
    };
    row("psn 12345", {"# 06410044303039", "# 0101"}, "Beltpack PSN/ID", "0044303039");
    row("psn 0", {"# 06410044300000", "# 0101"}, "Beltpack PSN/ID", "0044300000");
    row("psn 1048575", {"# 064100443FFFFF", "# 0101"}, "Beltpack PSN/ID", "00443FFFFF");
    row("psn 007", {"# 06410044300007", "# 0101"}, "Beltpack PSN/ID", "0044300007");
    row("system-id 1abcd12300", {"# 06431ABCD12300", "# 0103"}, "System Id", "1ABCD12300");
    // The window, which looks for "1" and "00" at the ends, calls this not updated.
    row("system-id 3FFFFFFF27", {"# 06433FFFFFFF27", "# 0103"}, "System Id", "3FFFFFFF27");
    row("pli 1f", {"# 02421F", "# 0102"}, "System Id Length", "1F");
    row("rf-carriers 01234abcde", {"# 064E01234ABCDE", "# 010E"}, "RD Carrier Mask", "01234ABCDE");
}

void TestSetCommand::sets() {
    QFETCH(QString, words);
    QFETCH(QStringList, lines);
    QFETCH(QString, name);
    QFETCH(QString, held);
    const tool::Result result = bench_->run("set " + words);
    QCOMPARE(result.problem, "");
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(bench_->lines(), lines);
    QCOMPARE(result.object, QJsonObject({{"name", name}, {"value", held}, {"read", held}}));
    QCOMPARE(result.text, QString("%1 is %2 now.\n").arg(name, held));
}

void TestSetCommand::refuses_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    const auto row = [](const char* words, const char* told) { QTest::newRow(words) << words << told; };
    const char* psn = "is no PSN: it takes a decimal number, 0 to 1048575.";
    row("psn 1048576", psn);
    row("psn -1", psn);
    row("psn 12.5", psn);
    row("psn 12a", psn);
    row("psn +5", psn);
    row("psn 99999999999", psn);
    const char* systemId = "is no System Id: it takes 10 hexadecimal digits.";
    row("system-id 100ECE100", systemId);
    row("system-id 100ECE10000", systemId);
    row("system-id 100G1E1000", systemId);
    row("system-id 1****E1000", systemId);
    row("pli 1", "is no System Id Length: it takes 2 hexadecimal digits.");
    row("pli 123", "is no System Id Length: it takes 2 hexadecimal digits.");
    row("pli ZZ", "is no System Id Length: it takes 2 hexadecimal digits.");
    row("rf-carriers 03FF", "is no RD Carrier Mask: it takes 10 hexadecimal digits.");
    row("volume 10", "\"volume\" cannot be set; what can is psn, system-id, pli, rf-carriers.");
}

void TestSetCommand::refuses() {
    QFETCH(QString, words);
    QFETCH(QString, told);
    const QString refusal = refusalOf("set " + words);
    QVERIFY2(refusal.startsWith("2 ") && refusal.endsWith(told), qPrintable(refusal));
}

void TestSetCommand::otherwise_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    QTest::newRow("psn") << "psn 12345"
                         << "Beltpack PSN/ID: 0044303039 was sent, FFBBCFCFC6 read back.";
    QTest::newRow("system id") << "system-id 100ECE1000"
                               << "System Id: 100ECE1000 was sent, EFF131EFFF read back.";
    QTest::newRow("pli") << "pli 1F"
                         << "System Id Length: 1F was sent, E0 read back.";
    QTest::newRow("carriers") << "rf-carriers 03FF000000"
                              << "RD Carrier Mask: 03FF000000 was sent, FC00FFFFFF read back.";
}

void TestSetCommand::otherwise() {
    QFETCH(QString, words);
    QFETCH(QString, told);
    bench_->unit().addFault(sim::parseFault("other-value"));
    const tool::Result result = bench_->run("set " + words);
    QVERIFY(result.status == tool::Status::differs);
    QCOMPARE(result.problem, told);
    QCOMPARE(result.text, "");
}

// The window compares the last five digits alone.
void TestSetCommand::prefixReadBackOtherwise() {
    const auto prefixed = [](FaultyPort& port, const auto&) { port.say("# 06810055503039\r\n"); };
    bench_->port().plan({FaultyPort::Place::reply, 0, true, prefixed, {}});
    const tool::Result result = bench_->run("set psn 12345");
    QVERIFY(result.status == tool::Status::differs);
    QCOMPARE(result.problem, "Beltpack PSN/ID: 0044303039 was sent, 0055503039 read back.");
}

void TestSetCommand::nothingComesBack() {
    bench_->unit().addFault(sim::parseFault("no-reply"));
    const tool::Result result = bench_->run("set pli 1F");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem,
             "System Id Length was sent, but the Beltpack did not tell what it holds now. No line was "
             "answered. Sent and not confirmed: \"# 02421F\".");
    QVERIFY(result.object["read"].isNull());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSetCommand, quorvex::NoApplication)
#include "test_set_command.moc"
