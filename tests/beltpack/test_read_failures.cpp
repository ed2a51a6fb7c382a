#include <QTest>
#include <functional>
#include <limits>

#include "link/runtime_fault.h"
#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

/// How every failed read ends.
const QStringList kFailure{
    "hourglass down", "status black: Error communicating with Beltpack.",
    "box critical: No Response from Beltpack!\r\n\r\nCheck connection to Beltpack. []"};
const QString kSuccess = "status green: Settings read from Beltpack successfully.";

QStringList last(const QStringList& entries, qsizetype count) {
    return entries.mid(entries.size() - count);
}

}  // namespace

/// A read that meets silence, faults and pulled cables.
class TestReadFailures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deadUnit_data();
    void deadUnit();
    void silentParameter_data();
    void silentParameter();
    void allButThePsnUnavailable();
    void silentCalibration_data();
    void silentCalibration();
    void silentRssiThreshold();
    void closedPort();
    void unplugged_data();
    void unplugged();
    void unpluggedInTheMiddleOfAReply();
    void portFault_data();
    void portFault();
    void neighbourFault_data();
    void neighbourFault();
    void faultBeforeTheHourglassIsNotCaught();
    void faultBehindTheHourglassIsCaught();
    void succeedsAfterAFailure();
};

void TestReadFailures::deadUnit_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("typeAfter");
    QTest::newRow("RM5 before") << 0 << 1;
    QTest::newRow("Kirk before") << 1 << 1;
    QTest::newRow("unknown type before") << 5 << 5;
}

void TestReadFailures::deadUnit() {
    QFETCH(int, type);
    QFETCH(int, typeAfter);
    BeltpackBench bench;
    bench.module.hold(type);
    bench.read.CommandRdSettingsBp_Click();
    QStringList expected{"> # 0139"};
    if (type != typeAfter)
        expected.append("module type becomes 1");
    expected += QStringList{"hourglass up", "status black: Reading settings from Beltpack...", "> # 0101"};
    QCOMPARE(bench.journal.entries().mid(2), expected + kFailure);
    QCOMPARE(static_cast<int>(bench.module.type()), typeAfter);
    QCOMPARE(bench.values(), QStringList(21, "          "));
    QCOMPARE(shown(bench.image[0].available.str()), "  ");
    // Two exchanges, each of 2 s of silence.
    QCOMPARE(bench.loop.ticks(), 4000);
}

void TestReadFailures::silentParameter_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("warning");
    int index = 0;
    for (const char* name :
         {"System Id Length    ", "System Id           ", "Headset Limit       ", "RSSI Warning Alarm  ",
          "Low Battery Alarm   ", "Headset Mic Type    ", "Headset Mic Gain    ", "Headphone Off Level ",
          "Sidetone Volume     ", "Master Volume       ", "Programming Mode    ", "PTT Switch          ",
          "RD Carrier Mask     ", "Page Change Mode    ", "FCC Enabled         ", "Keylock             ",
          "Vibrator Enabled    ", "Mic Noise Gate Enabl", "Keytap Mode         ", "Feature Map         "})
        QTest::newRow(name) << ++index << QString("status red: Option %1unavailable!").arg(name);
}

void TestReadFailures::silentParameter() {
    QFETCH(int, index);
    QFETCH(QString, warning);
    BeltpackBench bench;
    bench.connectRm5();
    bench.silenceParameter(index);
    bench.read.CommandRdSettingsBp_Click();
    const QString request =
        QString("> ") + BeltpackBench::kParameters.at(static_cast<std::size_t>(index)).request;
    const qsizetype sentAt = bench.journal.entries().indexOf(request);
    QVERIFY(sentAt > 0);
    QCOMPARE(bench.journal.entries().at(sentAt + 1), warning);
    QCOMPARE(bench.journal.entriesOf("status red"), QStringList{warning});
    QCOMPARE(bench.journal.entries().last(), kSuccess);
    // A microphone type that the unit does not have is set to balanced by its option button.
    QCOMPARE(shown(bench.image[index].value.str()), index == 6 ? "00        " : "N/A       ");
    QCOMPARE(shown(bench.image[index].available.str()), "0 ");
    QCOMPARE(bench.port.sent().size(), 24U);
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestReadFailures::allButThePsnUnavailable() {
    BeltpackBench bench;
    bench.connectRm5();
    for (int i = 1; i <= 20; ++i)
        bench.silenceParameter(i);
    bench.read.CommandRdSettingsBp_Click();
    QStringList values(21, "N/A       ");
    values[0] = "0044303039";
    values[6] = "00        ";
    QCOMPARE(bench.values(), values);
    QCOMPARE(bench.journal.entriesOf("status red").size(), 20);
    QCOMPARE(bench.journal.entries().last(), kSuccess);
    QCOMPARE(shown(bench.rfCarriers.text()), "N/A       ");
    QCOMPARE(bench.journal.entriesOf("System ID"), QStringList{"System ID: N/A       "});
    QCOMPARE(bench.journal.entriesOf("BPRegulations:"), QStringList());
    QCOMPARE(bench.journal.entriesOf("BPHWRevision:"), QStringList());
    QCOMPARE(bench.loop.ticks(), 40000);
}

void TestReadFailures::silentCalibration_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("RM5, FM deviation") << false << "# 013D" << QStringList();
    QTest::newRow("RM5, frequency") << false << "# 013C" << QStringList{"TextFMDev = 33"};
    QTest::newRow("Kirk, FM deviation") << true << "# 013D" << QStringList();
    QTest::newRow("Kirk, frequency") << true << "# 013C" << QStringList{"TextFMDev = 33"};
    QTest::newRow("Kirk, receive") << true << "# 0139" << QStringList{"TextFMDev = 33", "TextFreqAccr = 10"};
    QTest::newRow("Kirk, transmit") << true << "# 013a"
                                    << QStringList{"TextFMDev = 33", "TextFreqAccr = 10",
                                                   "TextFreqAccrRx = 163"};
}

void TestReadFailures::silentCalibration() {
    QFETCH(bool, kirk);
    QFETCH(QString, line);
    QFETCH(QStringList, shown);
    BeltpackBench bench;
    if (kirk)
        bench.connectKirk();
    else
        bench.connectRm5();
    if (line == "# 0139")
        bench.port.answer("# 0139", {Reply{"# 02B9A3\r\n"}, Reply{}});
    else
        bench.silence(line.toStdString());
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.port.sentLines().last(), line);
    QCOMPARE(bench.afterLastLine(), kFailure);
    QCOMPARE(bench.journal.entriesOf("Text"), shown);
    QCOMPARE(bench.journal.entriesOf("settings buttons"), QStringList());
    // The parameters had all come.
    QVERIFY(!bench.values().contains("          "));
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestReadFailures::silentRssiThreshold() {
    BeltpackBench bench;
    bench.connectKirk();
    bench.rssiThreshold.type("55");
    bench.silence("# 0138");
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.rssiThreshold.text()), "55");
    QCOMPARE(bench.journal.entriesOf("TextRssiThr"), QStringList());
    QCOMPARE(bench.journal.entriesOf("status red"), QStringList());
    QCOMPARE(bench.journal.entries().last(), kSuccess);
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestReadFailures::closedPort() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.port.unplug();
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(last(bench.journal.entries(), 3), kFailure);
    QCOMPARE(static_cast<int>(bench.module.type()), 1);
    QCOMPARE(bench.values(), QStringList(21, "          "));
    // Nobody waits on a port that is not there.
    QCOMPARE(bench.loop.ticks(), 0);
}

void TestReadFailures::unplugged_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("available");
    QTest::newRow("at the module detection") << false << "# 0139" << 0;
    QTest::newRow("at the PSN") << false << "# 0101" << 0;
    QTest::newRow("at the second parameter") << false << "# 0102" << 1;
    QTest::newRow("at the last parameter") << false << "# 0115" << 20;
    QTest::newRow("at the calibration") << false << "# 013C" << 21;
    // The threshold is the one value whose silence is borne, but a port that is gone is not.
    QTest::newRow("at the RSSI threshold") << true << "# 0138" << 21;
}

void TestReadFailures::unplugged() {
    QFETCH(bool, kirk);
    QFETCH(QString, line);
    QFETCH(int, available);
    BeltpackBench bench;
    if (kirk)
        bench.connectKirk();
    else
        bench.connectRm5();
    bench.port.onLine([&](const std::string& sent) {
        if (fromLatin1(sent) == line)
            bench.port.unplug();
    });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(last(bench.journal.entries(), 3), kFailure);
    QCOMPARE(bench.port.sentLines().last(), line);
    int count = 0;
    for (int i = 0; i <= 20; ++i)
        count += bench.image[i].available.str() == "1 " ? 1 : 0;
    QCOMPARE(count, available);
    QCOMPARE(bench.loop.ticks(), 0);
}

void TestReadFailures::unpluggedInTheMiddleOfAReply() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.port.answer("# 0103", {Reply{"# 0683100ECE1000\r\n", 10, 10}});
    bench.loop.at(95, [&] { bench.port.unplug(); });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(last(bench.journal.entries(), 3), kFailure);
    // Half a value is no value.
    QCOMPARE(shown(bench.image[2].value.str()), "N/A       ");
    QCOMPARE(bench.loop.ticks(), 95);
}

void TestReadFailures::portFault_data() {
    QTest::addColumn<QString>("line");
    QTest::newRow("PSN") << "# 0101";
    QTest::newRow("other parameter") << "# 0108";
    QTest::newRow("calibration") << "# 013C";
    QTest::newRow("RSSI threshold") << "# 0138";
}

void TestReadFailures::portFault() {
    QFETCH(QString, line);
    BeltpackBench bench;
    bench.connectKirk();
    bench.port.onLine([&](const std::string& sent) {
        if (fromLatin1(sent) == line)
            bench.port.failReads();
    });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.port.sentLines().last(), line);
    QCOMPARE(bench.afterLastLine(), kFailure);
}

void TestReadFailures::neighbourFault_data() {
    QTest::addColumn<bool>("inVersionRequest");
    QTest::newRow("while the System ID is shown") << false;
    QTest::newRow("while the version is requested") << true;
}

void TestReadFailures::neighbourFault() {
    QFETCH(bool, inVersionRequest);
    BeltpackBench bench;
    bench.connectRm5();
    auto& hook = inVersionRequest ? bench.neighbours.onRequestDectVersion : bench.neighbours.onShowSystemId;
    hook = [] { throw RuntimeFault::overflow(); };
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(last(bench.journal.entries(), 3), kFailure);
    QCOMPARE(bench.journal.entriesOf("settings buttons"), QStringList());
    QCOMPARE(bench.journal.entriesOf("DECT").size(), inVersionRequest ? 1 : 0);
}

void TestReadFailures::faultBeforeTheHourglassIsNotCaught() {
    BeltpackBench bench(std::numeric_limits<std::int32_t>::max() - 1000);
    bench.connectRm5();
    int fault = 0;
    try {
        bench.read.CommandRdSettingsBp_Click();
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, 6);
    QCOMPARE(bench.journal.entriesOf("hourglass"), QStringList());
    QCOMPARE(bench.journal.entriesOf("status"), QStringList());
    QCOMPARE(bench.journal.entriesOf("box"), QStringList());
}

void TestReadFailures::faultBehindTheHourglassIsCaught() {
    // The silence of the module detection brings the tick count too near to its end for the next limit.
    BeltpackBench bench(std::numeric_limits<std::int32_t>::max() - 2500);
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.port.sentLines(), QStringList({"# 0139", "# 0101"}));
    QCOMPARE(bench.afterLastLine(), kFailure);
}

void TestReadFailures::succeedsAfterAFailure() {
    BeltpackBench bench;
    bench.read.CommandRdSettingsBp_Click();
    bench.connectRm5();
    bench.journal.take();
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entriesOf("module type"), QStringList{"module type becomes 0"});
    QCOMPARE(bench.journal.entriesOf("box"), QStringList());
    QCOMPARE(bench.journal.entries().last(), kSuccess);
}

QUORVEX_TEST(TestReadFailures, quorvex::NoApplication)
#include "test_read_failures.moc"
