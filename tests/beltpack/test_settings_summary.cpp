#include <QTest>

#include "beltpack/settings_summary.h"
#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

const QStringList kHead{"Param  Description              Data",
                        "--------------------------------------------"};

/// What stands before the value.
const QStringList kRows{"01     Beltpack PSN/ID          ", "02     System Id Length         ",
                        "03     System Id                ", "04     Headset Limit            ",
                        "05     RSSI Warning Alarm       ", "06     Low Battery Alarm        ",
                        "07     Headset Mic Type         ", "08     Headset Mic Gain         ",
                        "09     Headphone Off Level      ", "0A     Sidetone Volume          ",
                        "0B     Master Volume            ", "0C     Programming Mode         ",
                        "0D     PTT Switch               ", "0E     RD Carrier Mask          ",
                        "0F     Page Change Mode         ", "10     FCC Enabled              ",
                        "11     Keylock                  ", "12     Vibrator Enabled         ",
                        "13     Mic Noise Gate Enabl     ", "14     Keytap Mode              ",
                        "15     Feature Map              "};

QStringList linesOf(const SettingsImage& image) {
    return shown(summaryText(image)).split("\r\n");
}

}  // namespace

/// The text of the summary.
class TestSettingsSummary : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values_data();
    void values();
    void whole();
    void unavailable();
    void afterAnEdit();
    void recordBeyondTheTable();
};

void TestSettingsSummary::values_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shownValue");
    QTest::newRow("never filled") << ""
                                  << "          ";
    QTest::newRow("one digit") << "0"
                               << "0         ";
    QTest::newRow("two digits") << "1F"
                                << "1F        ";
    QTest::newRow("ten digits") << "03FF00000F"
                                << "03FF00000F";
    QTest::newRow("unavailable") << "N/A"
                                 << "N/A       ";
    QTest::newRow("longer than the field") << "0123456789AB"
                                           << "0123456789";
    QTest::newRow("blanks before") << "  1F"
                                   << "  1F      ";
}

void TestSettingsSummary::values() {
    QFETCH(QString, value);
    QFETCH(QString, shownValue);
    SettingsImage image;
    QStringList expected = kHead;
    for (int i = 0; i <= 20; ++i) {
        image[i].value = value.toStdString();
        expected << kRows[i] + shownValue;
        QCOMPARE(expected.last().size(), 42);
    }
    expected << QString();  // the last row ends its line, and nothing follows
    QCOMPARE(linesOf(image), expected);
}

void TestSettingsSummary::whole() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.read.CommandRdSettingsBp_Click();
    bench.journal.take();
    QStringList expected = kHead;
    for (int i = 0; i <= 20; ++i)
        expected << kRows[i] + shown(BeltpackBench::kParameters.at(static_cast<std::size_t>(i)).digits)
                                   .leftJustified(10);
    QCOMPARE(linesOf(bench.image), expected + QStringList{""});
    QCOMPARE(shown(summaryText(bench.image)).size(), 36 + 44 + 21 * 42 + 23 * 2);
    QCOMPARE(bench.journal.entries(), QStringList());
}

void TestSettingsSummary::unavailable() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.silenceParameter(20);
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(linesOf(bench.image)[22], kRows[20] + "N/A       ");
}

void TestSettingsSummary::afterAnEdit() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.read.CommandRdSettingsBp_Click();
    bench.editors.optionMICElectret_Click();
    QCOMPARE(linesOf(bench.image)[8], kRows[6] + "02        ");
}

void TestSettingsSummary::recordBeyondTheTable() {
    SettingsImage image;
    image[21].value = "XXXXXXXXXX";
    QVERIFY(!shown(summaryText(image)).contains("X"));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsSummary, quorvex::NoApplication)
#include "test_settings_summary.moc"
