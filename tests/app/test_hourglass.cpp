#include <limits>

#include "simulator/active_antenna.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kOverflow = failureEntry("Run-time error '6':\r\n\r\nOverflow");
const QString kReadSteps = failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kWrite =
    failureEntry("Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kAntennaRead = failureEntry("No Response from Active Antenna!");

}  // namespace

/// The hourglass is down at every end, a fault's too.
class TestHourglass : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void afterAFaultInAWait_data();
    void afterAFaultInAWait();

private:
    std::unique_ptr<Bench> bench_;
};

void TestHourglass::afterAFaultInAWait_data() {
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("field");  // to be filled before; empty for none
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("line");      // the first one whose wait is the fault; empty for the first one
    QTest::addColumn<QStringList>("told");  // a fault of its own ends the program
    const QStringList end{kOverflow, "close", "end 1"};
    const QString bp = "BeltPack", aa = "Active Antenna";
    QTest::newRow("detection") << bp << "CommandRdSettingsBp"
                               << ""
                               << ""
                               << "" << end;
    QTest::newRow("read") << bp << "CommandRdSettingsBp"
                          << ""
                          << ""
                          << "# 0107" << QStringList(kReadSteps);
    QTest::newRow("version in it") << bp << "CommandRdSettingsBp"
                                   << ""
                                   << ""
                                   << "! 0108" << QStringList(kReadSteps);
    QTest::newRow("write") << bp << "CommandWrite"
                           << ""
                           << ""
                           << "" << QStringList(kWrite);
    QTest::newRow("production") << bp << "buttonSetProdSettiings"
                                << ""
                                << ""
                                << "" << QStringList(kWrite);
    QTest::newRow("version") << bp << "CommandDectPPVerReq"
                             << ""
                             << ""
                             << "" << end;
    QTest::newRow("PSN") << bp << "CommandSetBpId"
                         << "TextBeltpackId"
                         << "77777"
                         << "" << end;
    QTest::newRow("System ID") << bp << "CommandSetSysID"
                               << "TextParkB"
                               << "1123456A00"
                               << "" << end;
    QTest::newRow("PLI") << bp << "CmdUpdatePli"
                         << "TextPli"
                         << "27"
                         << "" << QStringList();
    QTest::newRow("carriers") << bp << "CmdSetRfCarrs"
                              << "TextRfCarrs"
                              << "03FE0A0B0C"
                              << "" << end;
    QTest::newRow("antenna") << aa << "CommandRdSettingsAA"
                             << ""
                             << ""
                             << "" << QStringList(kAntennaRead);
    QTest::newRow("antenna detection") << aa << "CommandRdSettingsAA"
                                       << ""
                                       << ""
                                       << "# 0107" << QStringList(kAntennaRead);
    QTest::newRow("TBR6") << aa << "CommandSetTbr6"
                          << ""
                          << ""
                          << "! 0E030002100ECE00001503FF000000" << QStringList(kAntennaRead);
}

// The tick count ends within the limit of a reply.
void TestHourglass::afterAFaultInAWait() {
    QFETCH(QString, tab);
    QFETCH(QString, button);
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, line);
    QFETCH(QStringList, told);
    sim::ActiveAntenna antenna(kRm5);
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    if (tab != "BeltPack")
        bench_->wire.plugIn(&antenna);
    bench_->clickTab(tab);
    if (!field.isEmpty()) {
        keys::empty(*bench_, field);
        keys::type(typed);
    }
    const auto endTheCount = [&] { bench_->clock.nowMs = std::numeric_limits<std::int32_t>::max() - 500; };
    bool upInTheBox = false;
    bench_->person.beforeOk([&](QMessageBox&) { upInTheBox |= Bench::isHourglassUp(); });
    bench_->wire.onLine([&](const QString& sent) {
        if (line.isEmpty() || sent == line)
            endTheCount();
    });
    bench_->click(button);
    QCOMPARE(bench_->journal.take(), told);
    QVERIFY(!upInTheBox);
    QVERIFY(!Bench::isHourglassUp());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestHourglass, QApplication)
#include "test_hourglass.moc"
