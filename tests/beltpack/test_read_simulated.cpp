#include <QTest>

#include "calibration/rf_module.h"
#include "identity/dect_version.h"
#include "identity/system_id.h"
#include "link/number_text.h"
#include "simulator/beltpack.h"
#include "simulator/fault.h"
#include "tests/support/beltpack_bench.h"
#include "tests/support/fake_store.h"
#include "tests/support/in_memory_unit.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

class IgnoredFrame : public CalibFrame {
public:
    void apply(const CalibLayout& /*layout*/) override {}
};

/// The core of the whole program, on a simulated Beltpack.
class Workshop : private BeltpackReadNeighbours {
public:
    explicit Workshop(sim::RfModule module, int storedType = 0) : beltpack(module) {
        store.put("RfModule", std::to_string(storedType));
        rfModule.load();
    }

    void read() { read_.CommandRdSettingsBp_Click(); }

    sim::Beltpack beltpack;
    Journal journal;
    FakeLoop loop;
    InMemoryUnit port{beltpack, loop};
    FakeStore store{journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    SettingsImage image;
    FakeField parkB{journal, "TextParkB"}, eic{journal, "TextEic"}, fpn{journal, "TextFpn"},
        fps{journal, "TextFps"}, version{journal, "TextDectVerBP"}, beltpackId{journal, "TextBeltpackId"},
        rfCarriers{journal, "TextRfCarrs"}, pli{journal, "TextPli"}, fmDeviation{journal, "TextFMDev"},
        freqAccuracy{journal, "TextFreqAccr"}, freqAccuracyRx{journal, "TextFreqAccrRx"},
        freqAccuracyTx{journal, "TextFreqAccrTx"}, rssiThreshold{journal, "TextRssiThr"};
    bool buttonsEnabled = false;

private:
    std::string showSystemId(const std::string& text) override { return systemId.showParkB(text); }
    void requestDectVersion(Operation& read) override { dectVersion.request(read); }
    void enableSettingsButtons() override { buttonsEnabled = true; }

    IgnoredFrame frame;
    RfModule rfModule{store, {frame, frame, frame}};
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
    DectVersion dectVersion{link, DectVersion::kBeltpackRequest, version};
    FakeOptions mic{journal, {"optionMICBal", "optionMICUnBal", "optionMICElectret"}};
    FakeCheck batteryAlarm{journal, "checkBattAlarm"};
    FakeList hwRevision{journal, "BPHWRevision"}, regulations{journal, "BPRegulations"};
    SettingsEditors editors{image, mic, batteryAlarm, hwRevision, regulations};
    BeltpackRead read_{link,
                       image,
                       rfModule,
                       editors,
                       {beltpackId,
                        rfCarriers,
                        pli,
                        {fmDeviation, freqAccuracy, freqAccuracyRx, freqAccuracyTx},
                        rssiThreshold},
                       *this};
};

const QString kSimulatedRead = "status green: Settings read from Beltpack successfully.";

QString value(const Workshop& shop, int index) {
    return shown(trimmedRight(shop.image[index].value.str()));
}

}  // namespace

/// Reads of simulated Beltpacks with everything behind them that a read sets in motion.
class TestReadSimulated : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheUnitHoldsIsShown_data();
    void whatTheUnitHoldsIsShown();
    void lines();
    void fault_data();
    void fault();
    void otherModuleThanStored();
    void unavailableSystemId();
    void versionBehindOtherLines();
    void goneAndBack();
    void pulledDuringTheRead();
};

void TestReadSimulated::whatTheUnitHoldsIsShown_data() {
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

void TestReadSimulated::whatTheUnitHoldsIsShown() {
    QFETCH(bool, kirk);
    Workshop shop(kirk ? sim::RfModule::kKirk : sim::RfModule::kRm5);
    QVERIFY(shop.beltpack.setValue(0x01, "00000186A0"));
    QVERIFY(shop.beltpack.setValue(0x03, "3123456A27"));
    QVERIFY(shop.beltpack.setValue(0x3C, "0C"));
    shop.beltpack.setVersion("5.11");
    shop.read();
    for (int i = 0; i <= 20; ++i)
        QCOMPARE(value(shop, i), shown(shop.beltpack.value(i + 1)));
    QCOMPARE(shown(shop.beltpackId.text()), "100000");
    // The display keeps the ends of a PARK B that is there; an empty field gets the usual ones.
    QCOMPARE(shown(shop.parkB.text()), "1123456A00");
    QCOMPARE(shown(shop.eic.text()), "1234");
    QCOMPARE(shown(shop.fpn.text()), "*5*6");
    QCOMPARE(shown(shop.fps.text()), "A");
    QCOMPARE(shown(shop.version.text()), "5.11");
    QCOMPARE(shown(shop.fmDeviation.text()), "33");
    QCOMPARE(shown(shop.freqAccuracy.text()), kirk ? "12" : "3");
    QCOMPARE(shown(shop.freqAccuracyRx.text()), kirk ? "3" : "");
    QCOMPARE(shown(shop.freqAccuracyTx.text()), kirk ? "2" : "");
    QCOMPARE(shown(shop.rssiThreshold.text()), kirk ? "72" : "");
    QVERIFY(shop.buttonsEnabled);
    QCOMPARE(shop.journal.entries().last(), kSimulatedRead);
    QCOMPARE(shop.loop.ticks(), 0);
}

void TestReadSimulated::lines() {
    Workshop rm5(sim::RfModule::kRm5);
    rm5.read();
    QCOMPARE(rm5.port.sentLines().size(), 25);
    QCOMPARE(rm5.port.sentLines().last(), "! 0108");
    Workshop kirk(sim::RfModule::kKirk);
    kirk.read();
    QCOMPARE(kirk.port.sentLines().size(), 28);
    QCOMPARE(kirk.port.sentLines().mid(22),
             QStringList({"# 013D", "# 013C", "# 0139", "# 013a", "# 0138", "! 0108"}));
}

void TestReadSimulated::fault_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("endsAt");
    const auto row = [](bool kirk, const char* fault, bool succeeds, int index, const char* value,
                        const char* version, int endsAt) {
        QTest::addRow("%s, %s, record %d", kirk ? "Kirk" : "RM5", fault, index)
            << kirk << fault << succeeds << index << value << version << endsAt;
    };
    const char* const none = "";
    const char* const some = "4.07";
    row(false, "no-reply=04", true, 3, "N/A", some, 2000);
    row(true, "no-reply=04,once", true, 3, "N/A", some, 2000);
    row(false, "no-reply=01", false, 0, "", none, 2000);
    row(false, "no-reply=3D", false, 20, "02", none, 2000);
    row(true, "no-reply=38", true, 20, "02", some, 2000);
    row(true, "no-reply=3A", false, 20, "02", none, 2000);
    row(false, "late=0D:1999", true, 12, "00", some, 1999);
    row(false, "late=0D:2001", true, 12, "N/A", some, 2001);
    // A reply that comes while the next one is awaited passes for it: no reader looks at numbers.
    row(false, "late=0D:2001", true, 13, "00# 068E03", some, 2001);
    row(false, "cut=0E:15", true, 13, "N/A", some, 2000);
    row(false, "cut=01:3", false, 0, "", none, 2000);
    row(true, "noise=01:40", true, 0, "0044303039", some, 0);
    // Neither at the family of a line: chatter of the right length is a reply.
    row(true, "chatter=02:1", true, 1, "00", some, 0);
    row(true, "no-version", true, 20, "02", "Unavailable", 2000);
    row(false, "gone-after=01", false, 1, "N/A", none, 42000);
    row(true, "gone-after=38", true, 20, "02", "Unavailable", 2000);
}

void TestReadSimulated::fault() {
    QFETCH(bool, kirk);
    QFETCH(QString, fault);
    QFETCH(bool, succeeds);
    QFETCH(int, index);
    QFETCH(QString, value);
    QFETCH(QString, version);
    QFETCH(int, endsAt);
    Workshop shop(kirk ? sim::RfModule::kKirk : sim::RfModule::kRm5, kirk ? 1 : 0);
    shop.beltpack.addFault(sim::parseFault(fault.toStdString()));
    shop.read();
    QCOMPARE(shop.journal.entriesOf("box").size(), succeeds ? 0 : 1);
    QCOMPARE(shop.journal.entries().last() == kSimulatedRead, succeeds);
    QCOMPARE(shop.buttonsEnabled, succeeds);
    QCOMPARE(::value(shop, index), value);
    QCOMPARE(shown(shop.version.text()), version);
    QVERIFY(!shop.console.isHourglassUp());
    QCOMPARE(shop.loop.ticks(), endsAt);
}

void TestReadSimulated::otherModuleThanStored() {
    Workshop rm5(sim::RfModule::kRm5, 1);
    rm5.read();
    QCOMPARE(rm5.journal.entriesOf("store"), QStringList{"store RfModule=0"});
    Workshop kirk(sim::RfModule::kKirk, 0);
    kirk.read();
    kirk.read();
    QCOMPARE(kirk.journal.entriesOf("store"), QStringList{"store RfModule=1"});
    QCOMPARE(kirk.journal.entriesOf("status green").size(), 2);
}

void TestReadSimulated::unavailableSystemId() {
    Workshop shop(sim::RfModule::kRm5);
    shop.read();
    shop.beltpack.setAvailable(0x03, false);
    shop.journal.take();
    shop.read();
    // The red text has told; the last unit's System ID must not stay.
    QCOMPARE(shop.journal.entriesOf("box"), QStringList());
    QCOMPARE(shown(shop.eic.text() + shop.fpn.text() + shop.fps.text() + shop.parkB.text()), "");
    QCOMPARE(shop.journal.entries().last(), kSimulatedRead);
}

void TestReadSimulated::versionBehindOtherLines() {
    Workshop shop(sim::RfModule::kKirk);
    shop.beltpack.setLinesBeforeVersion(30);
    shop.read();
    QCOMPARE(shown(shop.version.text()), "4.07");
}

void TestReadSimulated::goneAndBack() {
    Workshop shop(sim::RfModule::kRm5);
    shop.port.unplug();
    shop.read();
    QCOMPARE(shop.journal.entriesOf("box").size(), 1);
    QCOMPARE(shop.journal.entriesOf("store"), QStringList{"store RfModule=1"});
    shop.port.open(1);
    shop.read();
    QCOMPARE(shop.journal.entriesOf("store"), QStringList({"store RfModule=1", "store RfModule=0"}));
    QCOMPARE(shop.journal.entries().last(), kSimulatedRead);
}

void TestReadSimulated::pulledDuringTheRead() {
    Workshop shop(sim::RfModule::kRm5);
    shop.beltpack.addFault(sim::parseFault("late=05:1000"));
    shop.loop.at(400, [&] { shop.port.unplug(); });
    shop.read();
    QCOMPARE(shop.loop.ticks(), 400);
    QCOMPARE(value(shop, 3), "30");
    QCOMPARE(value(shop, 4), "N/A");
    QVERIFY(!shop.buttonsEnabled);
    QCOMPARE(shop.journal.entriesOf("box").size(), 1);
}

QUORVEX_TEST(TestReadSimulated, quorvex::NoApplication)
#include "test_read_simulated.moc"
