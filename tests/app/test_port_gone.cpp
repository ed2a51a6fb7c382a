#include <QRegularExpression>

#include "simulator/active_antenna.h"
#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/port_deeds.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

using Fill = std::pair<const char*, const char*>;

/// One button that talks to a unit.
struct Deal {
    const char* name;
    bool isAntenna;
    sim::RfModule module;
    const char* button;
    std::vector<Fill> fills;  ///< fields and what is typed into them before
    bool readFirst;
    QString box;      ///< of the failure; empty for none
    QString failure;  ///< where it ends: the status line, or the version
    QString success;
    const char* version;  ///< the field that tells the outcome; null: the status line does
};

const QString kBoxNotReadBack = "Value could not read back from Beltpack!";
const QString kNoBeltpack = "black: Error communicating with Beltpack.";
const QString kBoxNoResponse = "No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.";
const QString kReadDone = "green: Settings read from Beltpack successfully.";
const QString kBoxNotWritten =
    "Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.";
const QString kWritten = "green: Settings written to Beltpack successfully!";
const QString kNoAntenna = "No Response from Active Antenna!";
const QString kAntennaFailed = "black: Error communicating with Active Antenna.";

const std::vector<Deal>& deals() {
    static const std::vector<Deal> all{
        {"read, RM5",
         false,
         kRm5,
         "CommandRdSettingsBp",
         {},
         false,
         kBoxNoResponse,
         kNoBeltpack,
         kReadDone,
         nullptr},
        {"read, Kirk",
         false,
         kKirk,
         "CommandRdSettingsBp",
         {},
         false,
         kBoxNoResponse,
         kNoBeltpack,
         kReadDone,
         nullptr},
        {"write", false, kRm5, "CommandWrite", {}, true, kBoxNotWritten, kNoBeltpack, kWritten, nullptr},
        {"production values",
         false,
         kRm5,
         "buttonSetProdSettiings",
         {},
         true,
         kBoxNotWritten,
         kNoBeltpack,
         kWritten,
         nullptr},
        {"PSN",
         false,
         kRm5,
         "CommandSetBpId",
         {{"TextBeltpackId", "77777"}},
         false,
         kBoxNotReadBack,
         "black: Beltpack's PSN could not be updated.",
         "black: Beltpack's PSN updated successfully.",
         nullptr},
        {"System ID",
         false,
         kRm5,
         "CommandSetSysID",
         {{"TextParkB", "1123456A00"}},
         false,
         kBoxNotReadBack,
         "black: Beltpack's System Id could not be updated.",
         "black: Beltpack's System Id updated succesfully.",
         nullptr},
        // Every reply passes then.
        {"System ID, incomplete",
         false,
         kRm5,
         "CommandSetSysID",
         {{"TextParkB", "1123456"}},
         false,
         kBoxNotReadBack,
         "black: Beltpack's System Id could not be updated.",
         "black: Beltpack's System Id updated succesfully.",
         nullptr},
        {"PLI",
         false,
         kRm5,
         "CmdUpdatePli",
         {{"TextPli", "27"}},
         false,
         kBoxNotReadBack,
         "black: Beltpack's PLI could not be updated.",
         "black: Beltpack's PLI updated successfully.",
         nullptr},
        {"carriers",
         false,
         kRm5,
         "CmdSetRfCarrs",
         {{"TextRfCarrs", "03FE0A0B0C"}},
         false,
         kBoxNotReadBack,
         "black: Beltpack's RF Carrier mask could not be updated.",
         "black: Beltpack's RF Carrier Mask updated successfully.",
         nullptr},
        {"version of a Beltpack",
         false,
         kRm5,
         "CommandDectPPVerReq",
         {},
         false,
         "",
         "Unavailable",
         "4.07",
         "TextDectVerBP"},
        {"version of an antenna",
         true,
         kRm5,
         "CommandDectVerReq",
         {},
         false,
         "",
         "Unavailable",
         "4.07",
         "TextDectVer"},
        {"antenna, RM5",
         true,
         kRm5,
         "CommandRdSettingsAA",
         {},
         false,
         kNoAntenna,
         kAntennaFailed,
         "black: Settings read from Active Antenna",
         nullptr},
        {"antenna, Kirk",
         true,
         kKirk,
         "CommandRdSettingsAA",
         {},
         false,
         kNoAntenna,
         kAntennaFailed,
         "black: Settings read from Active Antenna",
         nullptr},
        {"TBR6, RM5",
         true,
         kRm5,
         "CommandSetTbr6",
         {},
         false,
         kNoAntenna,
         kAntennaFailed,
         "black: Active Antenna is in TBR6 Mode",
         nullptr},
        {"TBR6, Kirk",
         true,
         kKirk,
         "CommandSetTbr6",
         {},
         false,
         kNoAntenna,
         kAntennaFailed,
         "black: Active Antenna is in TBR6 Mode",
         nullptr},
    };
    return all;
}

std::unique_ptr<sim::Unit> unitFor(const Deal& deal) {
    if (deal.isAntenna)
        return std::make_unique<sim::ActiveAntenna>(deal.module);
    return std::make_unique<sim::Beltpack>(deal.module);
}

}  // namespace

/// The port of an operation is changed, closed or lost in one of its waits: it ends as with a unit that
/// falls silent, and the unit at the other port hears nothing of it.
class TestPortGone : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void atEveryWait_data();
    void atEveryWait();
    void anotherBeltpackInTheWaitForAMissingValue();

private:
    void setUp(const Deal& deal);
    void press(const Deal& deal);
    QString outcome(const Deal& deal);
    /// The lines of the undisturbed run.
    QStringList undisturbed(const Deal& deal);
    void loseAt(const Deal& deal, const QStringList& whole, qsizetype lines, const QString& way);

    std::unique_ptr<sim::Unit> first_, other_;
    std::unique_ptr<Bench> bench_;
};

void TestPortGone::setUp(const Deal& deal) {
    bench_.reset();
    first_ = unitFor(deal);
    other_ = unitFor(deal);
    renew(bench_);
    bench_->wire.plugIn(1, first_.get());
    bench_->wire.plugIn(2, other_.get());
    bench_->store.put("RfModule", deal.module == kKirk ? "1" : "0");
    bench_->start();
    if (deal.readFirst)
        bench_->click("CommandRdSettingsBp");
    if (deal.isAntenna)
        bench_->clickTab("Active Antenna");
    for (const auto& [field, text] : deal.fills) {
        keys::empty(*bench_, field);
        keys::type(text);
    }
    bench_->journal.take();
    bench_->wire.forgetLines();
}

void TestPortGone::press(const Deal& deal) {
    bench_->click(deal.button);
    QVERIFY(!Bench::isHourglassUp());
}

QString TestPortGone::outcome(const Deal& deal) {
    return deal.version ? bench_->text(deal.version) : bench_->status();
}

QStringList TestPortGone::undisturbed(const Deal& deal) {
    setUp(deal);
    press(deal);
    return bench_->wire.lines();
}

void TestPortGone::loseAt(const Deal& deal, const QStringList& whole, qsizetype lines, const QString& way) {
    setUp(deal);
    const std::string before = other_->dump();
    std::int64_t lostAtMs = -1;
    qsizetype sent = 0;
    QStringList expected;
    afterLines(*bench_, lines, [&] {
        expected = losePort(*bench_, way);
        sent = bench_->wire.lines().size();
        lostAtMs = bench_->clock.nowMs;
    });
    press(deal);
    QCOMPARE(bench_->clock.nowMs, lostAtMs);  // at once
    QCOMPARE(bench_->wire.lines().size(), sent);
    QCOMPARE(bench_->wire.lines(), whole.first(sent));
    QStringList happened = bench_->journal.take();
    // A module that is not answered about is taken for the other kind.
    happened.removeAll("store RfModule=0");
    happened.removeAll("store RfModule=1");
    if (!deal.box.isEmpty())
        expected << failureEntry(deal.box);
    QCOMPARE(happened, expected);
    QCOMPARE(outcome(deal), deal.failure);
    QCOMPARE(QString::fromStdString(other_->dump()), QString::fromStdString(before));

    choosePort(*bench_, 2);
    bench_->wire.forgetLines();
    press(deal);
    QCOMPARE(outcome(deal), deal.success);
    QCOMPARE(bench_->wire.lines(), whole);
}

void TestPortGone::atEveryWait_data() {
    QTest::addColumn<int>("deal");
    QTest::addColumn<QString>("way");
    for (std::size_t i = 0; i < deals().size(); ++i) {
        for (const char* way : {"another", "again", "fails", "lost"})
            QTest::addRow("%s, %s", deals()[i].name, way) << static_cast<int>(i) << way;
    }
}

void TestPortGone::atEveryWait() {
    QFETCH(int, deal);
    QFETCH(QString, way);
    const Deal& its = deals()[static_cast<std::size_t>(deal)];
    static const QRegularExpression kWrite("^# 0[26][4-7]");
    const QStringList whole = undisturbed(its);
    QCOMPARE(outcome(its), its.success);
    for (qsizetype lines = 1; lines <= whole.size(); ++lines) {
        if (kWrite.match(whole[lines - 1]).hasMatch())
            continue;  // nobody waits for an answer to that
        loseAt(its, whole, lines, way);
        if (QTest::currentTestFailed()) {
            qWarning("in the wait behind %s", qPrintable(whole[lines - 1]));
            return;
        }
    }
}

void TestPortGone::anotherBeltpackInTheWaitForAMissingValue() {
    const Deal& read = deals().front();
    setUp(read);
    first_->setAvailable(0x06, false);
    other_->setValue(0x01, "0044312FD1");
    const std::string before = other_->dump();
    bench_->duringExchange("# 0106", [&] {
        choosePort(*bench_, 2);
        bench_->wire.forgetLines();
    });
    press(read);
    QCOMPARE(bench_->journal.take(),
             QStringList({dialogEntry("ComSelect", "Select Serial Port"), "close", "open 2",
                          "store ComPort=2", failureEntry(kBoxNoResponse)}));
    QCOMPARE(bench_->status(), kNoBeltpack);
    QCOMPARE(bench_->wire.lines(), QStringList());
    QVERIFY(!bench_->control("CommandWrite").isEnabled());

    press(read);
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), kReadDone);
    QCOMPARE(bench_->text("TextBeltpackId"), "77777");
    const auto image = imageOf(*bench_);
    QCOMPARE(image.at("01"), "0044312FD1");
    QCOMPARE(image.at("06"), "01        ");
    bench_->click("CommandWrite");
    QCOMPARE(bench_->status(), kWritten);
    QCOMPARE(QString::fromStdString(other_->dump()), QString::fromStdString(before));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortGone, QApplication)
#include "test_port_gone.moc"
