#include <QTest>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "simulator/options.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

namespace {

std::vector<std::string> words(const QByteArray& text) {
    std::vector<std::string> list;
    for (const QByteArray& word : text.split(' ')) {
        if (!word.isEmpty())
            list.push_back(word.toStdString());
    }
    return list;
}

std::unique_ptr<Unit> unitFor(const QByteArray& text) {
    return makeUnit(parseOptions(words(text)));
}

}  // namespace

class TestOptions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads();
    void ownValues();
    void refuses_data();
    void refuses();
    void makesTheUnitAskedFor();
    void setsUpTheUnit();
    void setsUpTheStreams();
    void setsUpTheAntenna();
    void helpNamesEverything();
};

void TestOptions::reads() {
    const Options options = parseOptions(
        words("--link /tmp/port antenna --module rm5 --pace 19200 --set 01=2a --set 02=2B --unavailable 05 "
              "--version-text 3.1 --version-lines 4 --answer-writes --refuse-kirk-reads --no-carrier "
              "--stream-rate 10 --fault late:20 --fault no-reply=01,once --dump /tmp/dump --traffic"));
    QVERIFY(options.unit == Options::UnitKind::kActiveAntenna);
    QVERIFY(options.module == RfModule::kRm5);
    QCOMPARE(QByteArray::fromStdString(options.linkPath), "/tmp/port");
    QCOMPARE(QByteArray::fromStdString(options.dumpPath), "/tmp/dump");
    QCOMPARE(options.baud, 19200);
    QVERIFY((options.values == std::vector<std::pair<int, std::string>>{{1, "2a"}, {2, "2B"}}));
    QVERIFY(options.unavailable == std::vector<int>{5});
    QVERIFY(options.version == "3.1");
    QCOMPARE(options.linesBeforeVersion, 4);
    QVERIFY(options.answersWrites && options.refusesKirkReads && !options.carrierPresent && options.traffic);
    QCOMPARE(options.recordsPerSecond, 10);
    QCOMPARE(options.faults.size(), 2U);
    QVERIFY(options.faults[0].kind == FaultKind::kLate && options.faults[1].once);
}

void TestOptions::ownValues() {
    const Options options = parseOptions(words("beltpack --link x"));
    QVERIFY(options.unit == Options::UnitKind::kBeltpack);
    QVERIFY(options.module == RfModule::kKirk);
    QCOMPARE(options.baud, 0);
    QCOMPARE(options.framesPerSecond, 0);
    QVERIFY(options.dumpPath.empty() && !options.traffic && !options.help && !options.answersWrites);
    QVERIFY(parseOptions(words("--help")).help);
}

void TestOptions::refuses_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("part");
    const auto row = [](const char* name, const char* line, const char* part) {
        QTest::newRow(name) << QByteArray(line) << QByteArray(part);
    };
    row("nothing", "", "Say which unit");
    row("no unit", "--link x", "Say which unit");
    row("two units", "beltpack antenna --link x", "Say which unit");
    row("unknown unit", "headset --link x", "\"headset\" is neither");
    row("no link", "beltpack", "--link PATH");
    row("unknown option", "beltpack --link x --colour red", "There is no option --colour");
    row("short option", "beltpack --link x -v", "There is no option -v");
    row("argument missing", "beltpack --link", "--link needs PATH");
    row("module", "beltpack --link x --module rm6", "\"rm6\" is neither");
    row("pace is no number", "beltpack --link x --pace fast", "\"fast\" is no number from 300");
    row("pace with more", "beltpack --link x --pace 9600n", "\"9600n\" is no number");
    row("pace too small", "beltpack --link x --pace 299", "\"299\" is no number");
    row("pace too large", "beltpack --link x --pace 1000001", "to 1000000");
    row("set without value", "beltpack --link x --set 01", "NN=HEX");
    row("set number", "beltpack --link x --set 1=00", "\"1\" is no register number");
    row("set too long", "beltpack --link x --set 02=0000", "does not fit register 02 of the beltpack (Kirk)");
    row("set not hexadecimal", "beltpack --link x --set 02=XY", "does not fit register 02");
    row("set not held", "beltpack --module rm5 --link x --set 39=00", "register 39 of the beltpack (RM5)");
    row("unavailable number", "beltpack --link x --unavailable XY", "\"XY\" is no register number");
    row("unavailable not held", "antenna --link x --unavailable 03", "the antenna (Kirk) has no register 03");
    row("version lines", "beltpack --link x --version-lines -1", "\"-1\" is no number from 0 to 100");
    row("stream rate", "beltpack --link x --stream-rate 0", "from 1 to 50");
    row("display rate", "beltpack --link x --display-rate 51", "from 1 to 50");
    row("display of an antenna", "antenna --link x --display-rate 2", "is for a beltpack");
    row("probe of a beltpack", "beltpack --module rm5 --link x --refuse-kirk-reads", "is for an antenna");
    row("probe of a Kirk antenna", "antenna --link x --refuse-kirk-reads", "is for an antenna");
    row("fault", "beltpack --link x --fault lat", "no fault named \"lat\"");
    row("display too fast", "beltpack --link x --pace 19200 --display-rate 4", "cannot carry the streams");
    row("records too fast", "beltpack --link x --pace 1200 --stream-rate 10", "cannot carry the streams");
}

void TestOptions::refuses() {
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, part);
    try {
        static_cast<void>(unitFor(line));
    } catch (const std::invalid_argument& error) {
        QVERIFY2(QByteArray(error.what()).contains(part), error.what());
        QVERIFY2(QByteArray(error.what()).endsWith('.'), error.what());
        return;
    }
    QFAIL("taken");
}

void TestOptions::makesTheUnitAskedFor() {
    for (const bool kirk : {false, true}) {
        const QByteArray rest = kirk ? " --module kirk --link x" : " --module rm5 --link x";
        const auto beltpack = unitFor("beltpack" + rest);
        const auto antenna = unitFor("antenna" + rest);
        QVERIFY(dynamic_cast<Beltpack*>(beltpack.get()) != nullptr);
        QVERIFY(dynamic_cast<ActiveAntenna*>(antenna.get()) != nullptr);
        QVERIFY((beltpack->module() == RfModule::kKirk) == kirk);
        QVERIFY((antenna->module() == RfModule::kKirk) == kirk);
    }
}

void TestOptions::setsUpTheUnit() {
    const auto unit = unitFor(
        "beltpack --link x --set 02=12 --unavailable 04 --version-text 9.9 "
        "--version-lines 1 --answer-writes --fault no-reply=06");
    QCOMPARE(exchange(*unit, "# 0102"), "# 028212\r\n");
    QCOMPARE(exchange(*unit, "# 0104"), "");
    QCOMPARE(exchange(*unit, "# 0105"), "# 028500\r\n");
    QCOMPARE(exchange(*unit, "# 0106"), "");
    QCOMPARE(exchange(*unit, "# 0247AA"), "# 01C7\r\n");
    const QByteArray version = exchange(*unit, "! 0108");
    QVERIFY(version.contains("9.9"));
    QCOMPARE(version.count('\n'), 2);
}

void TestOptions::setsUpTheStreams() {
    const auto unit = unitFor("beltpack --link x --stream-rate 4 --display-rate 10 --no-carrier");
    QCOMPARE(takeAll(*unit, 99).size(), 516);
    QCOMPARE(takeAll(*unit, 100).size(), 516);
    const auto quiet = unitFor("beltpack --link x --stream-rate 4 --no-carrier");
    exchange(*quiet, "! 0309E803");
    QCOMPARE(takeAll(*quiet, 249), "");
    QVERIFY(takeAll(*quiet, 250).startsWith("! 04070000"));
}

void TestOptions::setsUpTheAntenna() {
    QCOMPARE(exchange(*unitFor("antenna --link x --module rm5"), "# 0107"), "");
    QCOMPARE(exchange(*unitFor("antenna --link x --module rm5 --refuse-kirk-reads"), "# 0107"), "# 01BF\r\n");
}

void TestOptions::helpNamesEverything() {
    const QByteArray help = QByteArray::fromStdString(helpText());
    for (const char* option : {"--link PATH", "--module rm5|kirk", "--pace BAUD", "--set NN=HEX",
                               "--unavailable NN", "--version-text TEXT", "--version-lines N",
                               "--answer-writes", "--refuse-kirk-reads", "--no-carrier", "--stream-rate N",
                               "--display-rate N", "--fault FAULT", "--dump FILE", "--traffic", "--help"})
        QVERIFY2(help.contains(option), option);
    for (const FaultRule& rule : faultTable())
        QVERIFY2(help.contains("\n  " + QByteArray(rule.name.data(), static_cast<int>(rule.name.size()))),
                 rule.name.data());
    for (const QByteArray& line : help.split('\n'))
        QVERIFY2(line.size() <= 110, line.constData());
}

QUORVEX_TEST(TestOptions, quorvex::NoApplication)
#include "test_options.moc"
