#include <QTest>

#include "link/runtime_fault.h"
#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// The option buttons and lists that edit single parameters.
class TestSettingsEditors : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void micOptions_data();
    void micOptions();
    void batteryAlarm_data();
    void batteryAlarm();
    void hwRevisionScrolled_data();
    void hwRevisionScrolled();
    void regulationsScrolled_data();
    void regulationsScrolled();
    void lists();
    void refillStartsOver();
    void beyondSixteenBits_data();
    void beyondSixteenBits();
};

void TestSettingsEditors::micOptions_data() {
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("entry");
    QTest::newRow("balanced") << 0 << "00        "
                              << "optionMICBal on";
    QTest::newRow("unbalanced") << 1 << "01        "
                                << "optionMICUnBal on";
    QTest::newRow("electret") << 2 << "02        "
                              << "optionMICElectret on";
}

void TestSettingsEditors::micOptions() {
    QFETCH(int, option);
    QFETCH(QString, value);
    QFETCH(QString, entry);
    BeltpackBench bench;
    bench.image[6].value = "N/A";
    bench.image[6].available = "0";
    switch (option) {
        case 0:
            bench.editors.optionMICBal_Click();
            break;
        case 1:
            bench.editors.optionMICUnBal_Click();
            break;
        default:
            bench.editors.optionMICElectret_Click();
            break;
    }
    QCOMPARE(shown(bench.image[6].value.str()), value);
    QCOMPARE(bench.mic.selected(), option);
    // Nothing else changes: no other record, no availability, no line to the unit.
    QCOMPARE(bench.journal.entries(), QStringList{entry});
    QCOMPARE(shown(bench.image[6].available.str()), "0 ");
    for (int i = 0; i <= 21; ++i)
        QVERIFY(i == 6 || bench.image[i].value.isBlank());
}

void TestSettingsEditors::batteryAlarm_data() {
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("boxAfter");
    QTest::newRow("clear") << 0 << "00        " << 0;
    QTest::newRow("checked") << 1 << "01        " << 1;
    QTest::newRow("greyed counts as checked") << 2 << "01        " << 1;
}

void TestSettingsEditors::batteryAlarm() {
    QFETCH(int, box);
    QFETCH(QString, value);
    QFETCH(int, boxAfter);
    BeltpackBench bench;
    bench.batteryAlarm.setValue(box);
    bench.editors.checkBattAlarm_Click();
    QCOMPARE(shown(bench.image[5].value.str()), value);
    QCOMPARE(bench.batteryAlarm.value(), boxAfter);
}

void TestSettingsEditors::hwRevisionScrolled_data() {
    QTest::addColumn<int>("topIndex");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("topIndexAfter");
    QTest::newRow("first") << 0 << "00        " << 0;
    QTest::newRow("second") << 1 << "01        " << 1;
    QTest::newRow("third") << 2 << "02        " << 2;
    // A step past the last item wraps to the first and stores nothing.
    QTest::newRow("past the last") << 3 << "1F        " << 0;
}

void TestSettingsEditors::hwRevisionScrolled() {
    QFETCH(int, topIndex);
    QFETCH(QString, value);
    QFETCH(int, topIndexAfter);
    BeltpackBench bench;
    bench.hwRevision.refill({"RV 4417", "MX 318825", "MX 318825XT", "past the last"});
    bench.hwRevision.setTopIndex(topIndex);
    bench.image[20].value = "1F";
    bench.editors.BPHWRevision_Scroll();
    QCOMPARE(shown(bench.image[20].value.str()), value);
    QCOMPARE(bench.hwRevision.topIndex(), topIndexAfter);
}

void TestSettingsEditors::regulationsScrolled_data() {
    QTest::addColumn<int>("topIndex");
    QTest::addColumn<QString>("value");
    QTest::newRow("Europe") << 0 << "00        ";
    QTest::newRow("USA") << 1 << "01        ";
    QTest::newRow("Japan") << 2 << "02        ";
    // No wrap here.
    QTest::newRow("past the last") << 3 << "1F        ";
}

void TestSettingsEditors::regulationsScrolled() {
    QFETCH(int, topIndex);
    QFETCH(QString, value);
    BeltpackBench bench;
    bench.regulations.refill({"STANDARD - EUROPE", "FCC - USA", "JDECT - JAPAN", "past the last"});
    bench.regulations.setTopIndex(topIndex);
    bench.image[15].value = "1F";
    bench.editors.BPRegulations_Scroll();
    QCOMPARE(shown(bench.image[15].value.str()), value);
    QCOMPARE(bench.regulations.topIndex(), topIndex);
}

void TestSettingsEditors::lists() {
    BeltpackBench bench;
    bench.editors.refillLists();
    QCOMPARE(bench.journal.entries(),
             QStringList({"BPHWRevision refilled: RV 4417, MX 318825, MX 318825XT",
                          "BPRegulations refilled: STANDARD - EUROPE, FCC - USA, JDECT - JAPAN"}));
}

void TestSettingsEditors::refillStartsOver() {
    BeltpackBench bench;
    bench.editors.refillLists();
    bench.regulations.setTopIndex(2);
    bench.editors.refillLists();
    QCOMPARE(bench.regulations.items().size(), 3U);
    QCOMPARE(bench.hwRevision.items().size(), 3U);
    QCOMPARE(shown(bench.regulations.top()), "STANDARD - EUROPE");
}

void TestSettingsEditors::beyondSixteenBits_data() {
    QTest::addColumn<int>("record");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("fault");
    constexpr int kOverflow = 6;
    constexpr int kInvalidValue = 380;
    const std::pair<const char*, int> records[] = {
        {"battery alarm", 5}, {"microphone", 6}, {"regulations", 15}, {"revision", 20}};
    for (const auto& [name, record] : records) {
        QTest::addRow("%s, highest", name) << record << "32767" << (record == 5 ? kInvalidValue : 0);
        QTest::addRow("%s, above it", name) << record << "32768" << kOverflow;
        QTest::addRow("%s, below the lowest", name) << record << "-32769" << kOverflow;
    }
}

void TestSettingsEditors::beyondSixteenBits() {
    QFETCH(int, record);
    QFETCH(QString, value);
    QFETCH(int, fault);
    BeltpackBench bench;
    bench.editors.refillLists();
    for (const int i : {5, 6, 15, 20}) {
        bench.image[i].value = "00";
        bench.image[i].available = "1";
    }
    bench.image[record].value = value.toStdString();
    int met = 0;
    try {
        bench.editors.showImage();
    } catch (const RuntimeFault& thrown) {
        met = thrown.number();
    }
    QCOMPARE(met, fault);
}

QUORVEX_TEST(TestSettingsEditors, quorvex::NoApplication)
#include "test_settings_editors.moc"
