#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

/// antenna, and version of both units.
class TestAntennaCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kirk();
    void rm5();
    void tbr6();
    void tbr6NotAcknowledged();
    void nothingComesBack();
    void lateProbe();
    void dataMissing();
    void versions_data();
    void versions();
    void noVersion();
    void versionTooShort();
    void versionElsewhere();
    void versionOfWhat();

private:
    ToolBench& withAntenna(sim::RfModule module) {
        bench_ = std::make_unique<ToolBench>(ToolBench::antenna(module));
        return *bench_;
    }

    std::unique_ptr<ToolBench> bench_;
};

void TestAntennaCommands::kirk() {
    const tool::Result result = withAntenna(sim::RfModule::kKirk).run("antenna");
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.object["moduleA"].toObject(), QJsonObject({{"RF Module", "Kirk KRM 1800"},
                                                               {"FM Deviation", 33},
                                                               {"Mid", 4},
                                                               {"Receive", 3},
                                                               {"Transmit", 2}}));
    QCOMPARE(result.object["moduleB"].toObject(), QJsonObject({{"RF Module", "Kirk KRM 1800"},
                                                               {"FM Deviation", 40},
                                                               {"Mid", 3},
                                                               {"Receive", 5},
                                                               {"Transmit", 6}}));
    QCOMPARE(result.object["tbr6"], QJsonValue(false));
    QVERIFY(result.text.startsWith(
        "Module A\n  RF Module             Kirk KRM 1800\n  FM Deviation          33\n"));
    QVERIFY(result.text.contains("\nModule B\n"));
}

void TestAntennaCommands::rm5() {
    const tool::Result result = withAntenna(sim::RfModule::kRm5).run("antenna");
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.object["moduleB"].toObject(),
             QJsonObject({{"RF Module", "Plextek RM5"}, {"FM Deviation", 40}, {"Frequency Accuracy", -4}}));
}

void TestAntennaCommands::tbr6() {
    const tool::Result result = withAntenna(sim::RfModule::kKirk).run("antenna --tbr6");
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.object["tbr6"], QJsonValue(true));
    QVERIFY(result.text.endsWith("The Active Antenna is in TBR6 mode.\n"));
    QVERIFY(static_cast<sim::ActiveAntenna&>(bench_->unit()).inTbr6Mode());
}

void TestAntennaCommands::tbr6NotAcknowledged() {
    withAntenna(sim::RfModule::kKirk).unit().addFault(sim::parseFault("no-tbr6-ack"));
    const tool::Result result = bench_->run("antenna --tbr6");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem,
             "No Response from Active Antenna! The last line that was answered: \"# 010a\". Sent "
             "and not confirmed: \"! 0E030002100ECE00001503FF000000\".");
    QVERIFY(result.object["tbr6"].isUndefined());
}

void TestAntennaCommands::nothingComesBack() {
    withAntenna(sim::RfModule::kKirk).unit().addFault(sim::parseFault("no-reply"));
    const tool::Result result = bench_->run("antenna");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem, "No Response from Active Antenna! No line was answered.");
    QCOMPARE(result.text, "");
}

// The window takes an antenna for one with RM5 modules then.
void TestAntennaCommands::lateProbe() {
    withAntenna(sim::RfModule::kKirk).unit().addFault(sim::parseFault("late=07:2400"));
    const tool::Result result = bench_->run("antenna");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem, "The answer to \"# 0107\" came too late: \"# 028703\".");
}

// The window takes a reply without data for 0.
void TestAntennaCommands::dataMissing() {
    withAntenna(sim::RfModule::kKirk);
    bench_->port().plan(
        {FaultyPort::Place::reply,
         3,
         true,
         [](FaultyPort& port, const auto& struck) { port.say(struck.body.substr(0, 6) + struck.end); },
         {}});
    const tool::Result result = bench_->run("antenna");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem, "What came back for \"# 0105\" is no answer to it: \"# 0285\".");
}

void TestAntennaCommands::versions_data() {
    QTest::addColumn<bool>("beltpack");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("line");
    QTest::newRow("beltpack") << true << "version beltpack"
                              << "! 0108";
    QTest::newRow("antenna") << false << "version antenna"
                             << "! 0107";
}

void TestAntennaCommands::versions() {
    QFETCH(bool, beltpack);
    QFETCH(QString, words);
    QFETCH(QString, line);
    ToolBench bench(beltpack ? ToolBench::beltpack(sim::RfModule::kKirk)
                             : ToolBench::antenna(sim::RfModule::kKirk));
    bench.unit().setVersion("4.13");
    bench.unit().setLinesBeforeVersion(3);
    const tool::Result result = bench.run(words);
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.text, "4.13\n");
    QCOMPARE(result.object, QJsonObject({{"DECT Version", "4.13"}}));
    QCOMPARE(bench.lines(), QStringList(line));
}

void TestAntennaCommands::noVersion() {
    withAntenna(sim::RfModule::kKirk).unit().addFault(sim::parseFault("no-version"));
    const tool::Result result = bench_->run("version antenna");
    QVERIFY(result.status == tool::Status::noAnswer);
    QCOMPARE(result.problem, "The unit did not tell its DECT version.");
}

void TestAntennaCommands::versionTooShort() {
    withAntenna(sim::RfModule::kKirk).unit().setVersion("");
    QVERIFY(bench_->run("version antenna").status == tool::Status::noAnswer);
}

// The window would show ":4.07".
void TestAntennaCommands::versionElsewhere() {
    withAntenna(sim::RfModule::kKirk);
    bench_->port().plan({FaultyPort::Place::reply,
                         0,
                         true,
                         [](FaultyPort& port, const auto&) { port.say("! DECT Version:4.07;\r\n"); },
                         {}});
    QVERIFY(bench_->run("version antenna").status == tool::Status::noAnswer);
}

void TestAntennaCommands::versionOfWhat() {
    QCOMPARE(refusalOf("version display"), "2 \"display\" is neither \"beltpack\" nor \"antenna\".");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAntennaCommands, quorvex::NoApplication)
#include "test_antenna_commands.moc"
