#include <QTest>
#include <functional>

#include "link/number_text.h"
#include "tests/faults/faults.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

using Place = FaultyPort::Place;
using Tick = FaultyPort::Tick;

constexpr int kPsnAt = 0x01;
constexpr Tick kReplyLimit = 2'000, kAntennaLimit = 12'000;
constexpr Tick kLongestMs = 400'000;  ///< a unit that jabbers for 20 s is waited for at every line

std::string upper(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

/// Whether what was told of each parameter is what the unit holds; one that is told as none may be there.
QString untruthIn(const QJsonObject& parameters, sim::Unit& unit) {
    const SettingsImage table;
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const QString name = QString::fromStdString(std::string(trimmedRight(table[i].name.str())));
        const QJsonValue value = parameters[name];
        const std::string held = unit.value(table[i].number);
        if (!value.isNull() && upper(value.toString().toStdString()) != held)
            return QString("%1: %2 told, %3 held").arg(name, value.toString(), QString::fromStdString(held));
    }
    return {};
}

QString differenceTo(const SettingsImage& file, sim::Unit& unit) {
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const std::string wanted(trimmedRight(file[i].value.str()));
        if (i != SettingsImage::kPsn && i != SettingsImage::kSystemId && unit.value(file[i].number) != wanted)
            return QString("%1 holds %2").arg(i).arg(QString::fromStdString(unit.value(file[i].number)));
    }
    return {};
}

QString untruthOfModules(const QJsonObject& object, sim::Unit& unit) {
    struct Told {
        const char *module, *name;
        int number;
    };
    const bool isRm5 = object["moduleA"]["RF Module"] == "Plextek RM5";
    for (const auto& [module, name, number] : {Told{"moduleA", "FM Deviation", 0x01},
                                               {"moduleB", "FM Deviation", 0x02},
                                               {"moduleA", "Mid", 0x05},
                                               {"moduleB", "Mid", 0x06},
                                               {"moduleA", "Receive", 0x07},
                                               {"moduleB", "Transmit", 0x0A}}) {
        const QJsonValue told = object[module][name];
        if (!(isRm5 && told.isUndefined()) && told.toInt(-1) != int(hexValue(unit.value(number))))
            return QString("%1, %2").arg(module, name);
    }
    return {};
}

/// A command, and what is untrue where it tells that all went well.
struct TriedCommand {
    const char* words;
    std::unique_ptr<sim::Unit> (*unit)();
    std::function<QString(const tool::Result&, sim::Unit&)> untruth;
};

std::unique_ptr<sim::Unit> rm5Beltpack() {
    return ToolBench::beltpack(sim::RfModule::kRm5);
}
std::unique_ptr<sim::Unit> kirkBeltpack() {
    return ToolBench::beltpack(sim::RfModule::kKirk);
}
std::unique_ptr<sim::Unit> kirkAntenna() {
    return ToolBench::antenna(sim::RfModule::kKirk);
}

QString readUntruth(const tool::Result& result, sim::Unit& unit) {
    return untruthIn(result.object["parameters"].toObject(), unit);
}

std::vector<TriedCommand> triedCommands(const SettingsImage& file) {
    const auto holdsFile = [file](const tool::Result&, sim::Unit& unit) { return differenceTo(file, unit); };
    const auto holdsPsn = [](const tool::Result&, sim::Unit& unit) {
        return unit.value(kPsnAt) == "0044303039" ? QString() : QString::fromStdString(unit.value(kPsnAt));
    };
    const auto tellsVersion = [](const tool::Result& result, sim::Unit&) {
        return result.object["DECT Version"] == "4.07" ? QString() : result.text;
    };
    const auto tellsModules = [](const tool::Result& result, sim::Unit& unit) {
        return untruthOfModules(result.object, unit);
    };
    return {{"read", rm5Beltpack, readUntruth},
            {"read", kirkBeltpack, readUntruth},
            {"write FILE", rm5Beltpack, holdsFile},
            {"set psn 12345", rm5Beltpack, holdsPsn},
            {"version beltpack", rm5Beltpack, tellsVersion},
            {"antenna --tbr6", kirkAntenna, tellsModules}};
}

/// A forged answer cannot be told from a true one, and a version is whatever stands there.
bool mayDeceive(const TestedFault& fault, const QString& words) {
    return fault.name == "another value" ||
           (words.startsWith("version") &&
            (fault.name == "no hexadecimal digits" || fault.name == "lower case" ||
             fault.name == "one byte fewer" || fault.name == "one byte more" || fault.name == "NUL inside" ||
             fault.name == "byte E9 inside"));
}

}  // namespace

/// Every fault of the line at every line and reply of a command: what is told as done is done.
class TestLineFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void neverUntrue_data();
    void neverUntrue();

private:
    int replyCount(const TriedCommand& command, Place place);
    void tryAt(const TriedCommand& command, const TestedFault& fault, int first, bool once);

    SettingsFolder folder_;
    QString file_;
    std::vector<TriedCommand> commands_;
    int runs_ = 0;
};

void TestLineFaults::initTestCase() {
    file_ = folder_.make("new.bpc", {{5, "24"}, {2, "0044300001"}});
    commands_ = triedCommands(tool::loadSettings(file_, tool::Ranges::demanded));
}

void TestLineFaults::neverUntrue_data() {
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("fault");
    for (int command = 0; command < int(commands_.size()); ++command) {
        for (int fault = 0; fault < int(testedFaults().size()); ++fault)
            QTest::addRow("%d %s | %s", command, commands_[std::size_t(command)].words,
                          testedFaults()[std::size_t(fault)].name.c_str())
                << command << fault;
    }
}

int TestLineFaults::replyCount(const TriedCommand& command, Place place) {
    ToolBench bench(command.unit());
    bench.run(QString(command.words).replace("FILE", file_));
    return place == Place::line ? int(bench.lines().size()) : bench.port().replies();
}

void TestLineFaults::tryAt(const TriedCommand& command, const TestedFault& fault, int first, bool once) {
    ToolBench bench(command.unit());
    const bool isAntenna = QString(command.words).startsWith("antenna");
    bench.port().plan({fault.place, first, once, fault.strike,
                       [isAntenna](int) { return isAntenna ? kAntennaLimit : kReplyLimit; }});
    if (fault.closedAtStart)
        bench.port().pull();
    const tool::Result result = bench.run(QString(command.words).replace("FILE", file_));
    ++runs_;
    const QString where =
        QString("%1 %2 from %3: ").arg(once ? "once" : "stays").arg(first).arg(int(result.status));
    QVERIFY2(bench.loop().ticks() < kLongestMs, qPrintable(where + QString::number(bench.loop().ticks())));
    if (result.status != tool::Status::done) {
        QVERIFY2(!result.problem.isEmpty() || result.status == tool::Status::differs, qPrintable(where));
        return;
    }
    if (mayDeceive(fault, command.words))
        return;
    const QString untruth = command.untruth(result, bench.unit());
    QVERIFY2(untruth.isEmpty(), qPrintable(where + untruth));
}

void TestLineFaults::neverUntrue() {
    QFETCH(int, command);
    QFETCH(int, fault);
    const TriedCommand& tried = commands_[std::size_t(command)];
    const TestedFault& tested = testedFaults()[std::size_t(fault)];
    const int places = tested.place == Place::none ? 1 : replyCount(tried, tested.place);
    QVERIFY(places > 0);
    for (int first = 0; first < places && !QTest::currentTestFailed(); ++first) {
        tryAt(tried, tested, first, true);
        if (tested.mayStay && !QTest::currentTestFailed())
            tryAt(tried, tested, first, false);
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestLineFaults, quorvex::NoApplication)
#include "test_line_faults.moc"
