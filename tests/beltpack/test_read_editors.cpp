#include <QTest>

#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {
constexpr const char* kUnavailable = nullptr;
constexpr int kRefused = -1;
}  // namespace

/// What a read makes of single values in the editing controls. Values count as decimal text there.
class TestReadEditors : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void regulations_data();
    void regulations();
    void microphone_data();
    void microphone();
    void hwRevision_data();
    void hwRevision();
    void batteryAlarm_data();
    void batteryAlarm();
    void refusedBatteryAlarmLeavesTheRestDone();

private:
    static void hold(BeltpackBench& bench, int index, const QString& digits) {
        bench.connectRm5();
        if (digits.isNull())
            bench.silenceParameter(index);
        else
            bench.setDigits(index, digits.toStdString());
        bench.read.CommandRdSettingsBp_Click();
    }
};

void TestReadEditors::regulations_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("scrolled");
    QTest::addColumn<QString>("value");
    const QString europe = "BPRegulations: STANDARD - EUROPE";
    const QString usa = "BPRegulations: FCC - USA";
    const QString japan = "BPRegulations: JDECT - JAPAN";
    const auto row = [](const char* name, const char* digits, const QStringList& scrolled,
                        const char* value) { QTest::newRow(name) << QString(digits) << scrolled << value; };
    row("Europe", "00", {europe}, "00        ");
    row("USA", "01", {usa}, "01        ");
    row("Japan", "02", {japan}, "02        ");
    row("above the last", "03", {europe}, "00        ");
    row("5", "05", {europe}, "00        ");
    row("largest", "99", {europe}, "00        ");
    row("0A is 0", "0A", {europe}, "0A        ");
    row("A5 is 0", "A5", {europe}, "A5        ");
    row("1F is 1", "1F", {usa}, "1F        ");
    row("2B is 2", "2B", {japan}, "2B        ");
    row("3C is 3", "3C", {europe}, "00        ");
    row("10 is 10", "10", {europe}, "00        ");
    row("below 0", "-1", {}, "-1        ");
    row("unavailable", kUnavailable, {}, "N/A       ");
}

void TestReadEditors::regulations() {
    QFETCH(QString, digits);
    QFETCH(QStringList, scrolled);
    QFETCH(QString, value);
    BeltpackBench bench;
    hold(bench, 15, digits);
    QCOMPARE(bench.journal.entriesOf("BPRegulations:"), scrolled);
    QCOMPARE(shown(bench.image[15].value.str()), value);
    QCOMPARE(bench.journal.entriesOf("status green").size(), 1);
}

void TestReadEditors::microphone_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("clicked");
    QTest::addColumn<QString>("value");
    const QString balanced = "optionMICBal on";
    const auto row = [](const char* name, const char* digits, const QStringList& clicked, const char* value) {
        QTest::newRow(name) << QString(digits) << clicked << value;
    };
    row("balanced", "00", {balanced}, "00        ");
    row("unbalanced", "01", {"optionMICUnBal on"}, "01        ");
    row("electret", "02", {"optionMICElectret on"}, "02        ");
    row("none of them", "03", {}, "03        ");
    row("10 is 10", "10", {}, "10        ");
    // The option's handler stores its own two digits.
    row("0F is 0", "0F", {balanced}, "00        ");
    row("F1 is 0", "F1", {balanced}, "00        ");
    row("1E is 1", "1E", {"optionMICUnBal on"}, "01        ");
    row("2A is 2", "2A", {"optionMICElectret on"}, "02        ");
    row("unavailable counts as 0", kUnavailable, {balanced}, "00        ");
}

void TestReadEditors::microphone() {
    QFETCH(QString, digits);
    QFETCH(QStringList, clicked);
    QFETCH(QString, value);
    BeltpackBench bench;
    hold(bench, 6, digits);
    QCOMPARE(bench.journal.entriesOf("option"), clicked);
    QCOMPARE(shown(bench.image[6].value.str()), value);
    QCOMPARE(shown(bench.image[6].available.str()), digits.isNull() ? "0 " : "1 ");
}

void TestReadEditors::hwRevision_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("selected");
    const auto row = [](const char* name, const char* digits, const QStringList& selected) {
        QTest::newRow(name) << QString(digits) << selected;
    };
    row("first", "00", {"BPHWRevision: RV 4417"});
    row("second", "01", {"BPHWRevision: MX 318825"});
    row("third", "02", {"BPHWRevision: MX 318825XT"});
    row("above the last", "03", {});
    row("1F is 1", "1F", {"BPHWRevision: MX 318825"});
    row("FF is 0", "FF", {"BPHWRevision: RV 4417"});
    row("below 0", "-2", {});
    row("unavailable", kUnavailable, {});
}

void TestReadEditors::hwRevision() {
    QFETCH(QString, digits);
    QFETCH(QStringList, selected);
    BeltpackBench bench;
    hold(bench, 20, digits);
    QCOMPARE(bench.journal.entriesOf("BPHWRevision:"), selected);
    QCOMPARE(shown(bench.image[20].value.str()), (digits.isNull() ? "N/A" : digits).leftJustified(10, ' '));
}

void TestReadEditors::batteryAlarm_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<int>("value");
    QTest::newRow("clear") << "00" << 0;
    QTest::newRow("checked") << "01" << 1;
    QTest::newRow("greyed") << "02" << 2;
    QTest::newRow("0A is 0") << "0A" << 0;
    QTest::newRow("1F is 1") << "1F" << 1;
    QTest::newRow("unavailable clears it") << QString(kUnavailable) << 0;
    QTest::newRow("5") << "05" << kRefused;
    QTest::newRow("3") << "03" << kRefused;
    QTest::newRow("99") << "99" << kRefused;
    QTest::newRow("below 0") << "-1" << kRefused;
}

void TestReadEditors::batteryAlarm() {
    QFETCH(QString, digits);
    QFETCH(int, value);
    BeltpackBench bench;
    bench.batteryAlarm.setValue(1);
    hold(bench, 5, digits);
    if (value == kRefused) {
        QCOMPARE(bench.batteryAlarm.value(), 1);
        QCOMPARE(bench.journal.entriesOf("box").size(), 1);
        QCOMPARE(bench.journal.entriesOf("status green"), QStringList());
    } else {
        QCOMPARE(bench.batteryAlarm.value(), value);
        QCOMPARE(bench.journal.entriesOf("box"), QStringList());
        QCOMPARE(bench.journal.entriesOf("status green").size(), 1);
    }
}

void TestReadEditors::refusedBatteryAlarmLeavesTheRestDone() {
    BeltpackBench bench;
    hold(bench, 5, "05");
    // The box is the last control that is set, so everything before it stands; nothing after it comes.
    const QStringList expected{
        "BPRegulations: FCC - USA",
        "optionMICUnBal on",
        "BPHWRevision: MX 318825XT",
        "hourglass down",
        "status black: Error communicating with Beltpack.",
        "box critical: No Response from Beltpack!\r\n\r\nCheck connection to Beltpack. []",
    };
    QCOMPARE(bench.journal.entries().mid(bench.journal.entries().size() - expected.size()), expected);
    QCOMPARE(shown(bench.image[5].value.str()), "05        ");
    QCOMPARE(shown(bench.pli.text()), "1F        ");
}

QUORVEX_TEST(TestReadEditors, quorvex::NoApplication)
#include "test_read_editors.moc"
