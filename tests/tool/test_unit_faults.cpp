#include <QTest>

#include "simulator/fault.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

/// A command, its unit, and the register at which faults strike it.
struct Struck {
    const char* words;
    bool isBeltpack;
    const char* number;
};
constexpr Struck kStruck[] = {
    {"read", true, "05"},
    {"write FILE", true, "05"},
    {"verify --without-identity FILE", true, "05"},
    {"production-values", true, "05"},
    {"set psn 12345", true, "01"},
    {"version beltpack", true, "05"},
    {"antenna", false, "05"},
    {"antenna --tbr6", false, "05"},
    {"version antenna", false, "05"},
};

/// What the commands end with, in their order: the exit status. "NN" stands for the register.
struct FaultRow {
    const char* fault;
    const char* statuses;
};
// A parameter that the unit does not tell of is one that it does not have; that it has it now and then is
// not.
constexpr FaultRow kRows[] = {
    {"no-reply", "333333333"},
    {"no-reply,once", "333333333"},
    {"no-reply=NN", "001030330"},
    {"no-reply=NN,once", "011130330"},
    {"late", "000000000"},
    {"late=NN:1990", "000000000"},
    {"late=NN:2500,once", "333330000"},
    {"cut", "333333333"},
    {"cut=NN", "333330330"},
    {"cut=NN,once", "333330330"},
    {"garbled", "333333333"},
    {"garbled=NN", "333330330"},
    {"garbled=NN,once", "333330330"},
    {"echo", "333330000"},
    {"echo=NN", "333330000"},
    {"noise", "000000000"},
    {"noise=NN:300", "000000000"},
    {"chatter", "333330000"},
    {"chatter=NN:5", "333330000"},
    {"other-value", "011110000"},
    {"other-value=NN", "011110000"},
    {"other-value=NN,once", "011110000"},
    {"gone-after=NN", "333330330"},
    {"no-version", "000003003"},
    {"no-tbr6-ack", "000000030"},
};

/// Those that strike what the tool does not do, or only a picture of the display.
constexpr const char* kElsewhere[] = {"stream-stops",  "half-records",    "display-broken-marker",
                                      "display-short", "display-garbage", "display-inner-marker"};

}  // namespace

/// Every command with every fault of a simulated unit that can strike it.
class TestUnitFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ends_data();
    void ends();
    void noneIsLeftOut();
};

void TestUnitFaults::ends_data() {
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");
    for (int i = 0; i < int(std::size(kStruck)); ++i) {
        for (const FaultRow& row : kRows) {
            const QString fault = QString(row.fault).replace("NN", kStruck[i].number);
            QTest::addRow("%s | %s", kStruck[i].words, qPrintable(fault))
                << i << fault << row.statuses[i] - '0';
        }
    }
}

void TestUnitFaults::ends() {
    QFETCH(int, command);
    QFETCH(QString, fault);
    QFETCH(int, status);
    const Struck& struck = kStruck[command];
    const SettingsFolder folder;
    const QString file = folder.make("new.bpc");
    ToolBench bench(struck.isBeltpack ? ToolBench::beltpack(sim::RfModule::kRm5)
                                      : ToolBench::antenna(sim::RfModule::kKirk));
    if (QString(struck.words).startsWith("verify"))
        bench.run("write " + file);
    bench.unit().addFault(sim::parseFault(fault.toStdString()));
    const tool::Result result = bench.run(QString(struck.words).replace("FILE", file));
    QCOMPARE(int(result.status), status);
    QVERIFY2((status == 3) == !result.problem.isEmpty() || status == 1, qPrintable(result.problem));
}

void TestUnitFaults::noneIsLeftOut() {
    for (const sim::FaultRule& rule : sim::faultTable()) {
        const QString name = QString::fromLatin1(rule.name.data(), qsizetype(rule.name.size()));
        const bool isTried = std::any_of(std::begin(kRows), std::end(kRows), [&](const FaultRow& row) {
            return QString(row.fault).startsWith(name);
        });
        const bool isElsewhere =
            std::find(std::begin(kElsewhere), std::end(kElsewhere), name) != std::end(kElsewhere);
        QVERIFY2(isTried != isElsewhere, qPrintable(name));
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestUnitFaults, quorvex::NoApplication)
#include "test_unit_faults.moc"
