#include <QTest>

#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

const QStringList kListsRefilled{"BPHWRevision refilled: RV 4417, MX 318825, MX 318825XT",
                                 "BPRegulations refilled: STANDARD - EUROPE, FCC - USA, JDECT - JAPAN"};
const QStringList kParameterLines{"> # 0101", "> # 0102", "> # 0103", "> # 0104", "> # 0105", "> # 0106",
                                  "> # 0107", "> # 0108", "> # 0109", "> # 010A", "> # 010B", "> # 010C",
                                  "> # 010D", "> # 010E", "> # 010F", "> # 0110", "> # 0111", "> # 0112",
                                  "> # 0113", "> # 0114", "> # 0115"};
const QStringList kIdentity{"TextBeltpackId = 12345", "System ID: 100ECE1000", "TextRfCarrs = 03FF00000F",
                            "TextPli = 1F        "};
const QStringList kEditors{"BPRegulations: FCC - USA", "optionMICUnBal on", "BPHWRevision: MX 318825XT",
                           "checkBattAlarm = 1"};
const QStringList kEnd{"DECT version requested", "hourglass down", "settings buttons enabled",
                       "status green: Settings read from Beltpack successfully."};

}  // namespace

/// A read that goes well: every line, every text and every control, in order.
class TestRead : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rm5();
    void kirk();
    void image_data();
    void image();
    void imageIsBlankBeforeTheFirstLine();
    void detectsTheModule_data();
    void detectsTheModule();
    void frequencyAccuracy_data();
    void frequencyAccuracy();
    void numbersAreDecimal();
    void beltpackId_data();
    void beltpackId();
    void secondReadFindsNothingOfTheFirst();
    void hourglassIsUpThroughTheVersionRequest();
    void progressGoesByParameters();
    void slowUnit_data();
    void slowUnit();
    void noiseAndLineEnds();
};

void TestRead::rm5() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.read.CommandRdSettingsBp_Click();
    const QStringList expected =
        kListsRefilled +
        QStringList{"> # 0139", "hourglass up", "status black: Reading settings from Beltpack..."} +
        kParameterLines + QStringList{"> # 013D", "TextFMDev = 33", "> # 013C", "TextFreqAccr = 5"} +
        kIdentity + kEditors + kEnd;
    QCOMPARE(bench.journal.entries(), expected);
    QCOMPARE(bench.port.sent().size(), 24U);
    QCOMPARE(bench.loop.ticks(), 0);
}

void TestRead::kirk() {
    BeltpackBench bench;
    bench.connectKirk();
    bench.read.CommandRdSettingsBp_Click();
    const QStringList expected =
        kListsRefilled +
        QStringList{"> # 0139", "module type becomes 1", "hourglass up",
                    "status black: Reading settings from Beltpack..."} +
        kParameterLines + QStringList{"> # 013D", "TextFMDev = 33",       "> # 013C", "TextFreqAccr = 10",
                                      "> # 0139", "TextFreqAccrRx = 163", "> # 013a", "TextFreqAccrTx = 12"} +
        kIdentity + QStringList{"> # 0138", "TextRssiThr = 72"} + kEditors + kEnd;
    QCOMPARE(bench.journal.entries(), expected);
    QCOMPARE(bench.port.sent().size(), 27U);
    QCOMPARE(bench.loop.ticks(), 0);
}

void TestRead::image_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    const char* const values[] = {
        "0044303039", "1F        ", "100ECE1000", "30        ", "00        ", "01        ", "01        ",
        "02        ", "03        ", "04        ", "10        ", "05        ", "06        ", "03FF00000F",
        "07        ", "01        ", "08        ", "09        ", "0A        ", "0B        ", "02        "};
    for (int i = 0; i <= 20; ++i)
        QTest::addRow("%d", i) << i << values[i];
}

void TestRead::image() {
    QFETCH(int, index);
    QFETCH(QString, value);
    BeltpackBench bench;
    bench.connectRm5();
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.image[index].value.str()), value);
    QCOMPARE(shown(bench.image[index].available.str()), "1 ");
}

void TestRead::imageIsBlankBeforeTheFirstLine() {
    BeltpackBench bench;
    bench.connectRm5();
    for (int i = 0; i <= 21; ++i) {
        bench.image[i].value = "1F";
        bench.image[i].available = "1";
    }
    QStringList atTheFirstLine;
    bench.port.onLine([&](const std::string&) {
        if (atTheFirstLine.isEmpty())
            atTheFirstLine = bench.values();
    });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(atTheFirstLine, QStringList(21, "          "));
    QCOMPARE(shown(bench.image[21].value.str()), "1F        ");
}

void TestRead::detectsTheModule_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("typeAfter");
    QTest::addColumn<bool>("changed");
    struct {
        const char* name;
        const char* reply;
        bool rm5;
    } const replies[] = {
        {"RM5", "# 01BF\r\n", true},
        {"RM5 after noise", "02\r\nxx# 01BF\r\n", true},
        {"RM5 with a broken line", "# 0\r\n1BF\r\n", true},
        {"Kirk", "# 02B903\r\n", false},
        {"silence", "", false},
        {"lower case", "# 01bf\r\n", false},
        {"other family", "! 01BF\r\n", false},
        {"reply mark", "^ 01BF\r\n", false},
        {"other number", "# 01BE\r\n", false},
        {"cut short", "# 01B", false},
        {"echo", "# 0139\r\n# 01BF\r\n", false},
        {"no blank", "#01BF\r\n", false},
    };
    for (const int type : {0, 1, 5}) {
        for (const auto& one : replies) {
            // Only the other one of the two known types is changed; any third stays.
            const bool changed = type == (one.rm5 ? 1 : 0);
            QTest::addRow("type %d, %s", type, one.name)
                << type << QByteArray(one.reply) << (changed ? 1 - type : type) << changed;
        }
    }
}

void TestRead::detectsTheModule() {
    QFETCH(int, type);
    QFETCH(QByteArray, reply);
    QFETCH(int, typeAfter);
    QFETCH(bool, changed);
    BeltpackBench bench;
    bench.connectKirk();
    bench.port.answer("# 0139", {Reply{bytesOf(reply)}, Reply{"# 02B9A3\r\n"}});
    bench.module.hold(type);
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(static_cast<int>(bench.module.type()), typeAfter);
    QStringList beforeTheHourglass{"> # 0139"};
    if (changed)
        beforeTheHourglass.append("module type becomes " + QString::number(typeAfter));
    QCOMPARE(bench.journal.entries().mid(2, beforeTheHourglass.size() + 1),
             beforeTheHourglass + QStringList{"hourglass up"});
    QCOMPARE(bench.journal.entriesOf("module type").size(), changed ? 1 : 0);
    // Only type 1 has the values of a Kirk.
    QCOMPARE(bench.port.sent().size(), typeAfter == 1 ? 27U : 24U);
    QCOMPARE(bench.journal.entries().mid(bench.journal.entries().size() - kEnd.size()), kEnd);
}

void TestRead::frequencyAccuracy_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("digits");
    QTest::addColumn<QString>("text");
    QTest::newRow("RM5, code 0") << 0 << QByteArray("00") << "-7";
    QTest::newRow("RM5, code 7") << 0 << QByteArray("07") << "0";
    QTest::newRow("RM5, code 8") << 0 << QByteArray("08") << "7";
    QTest::newRow("RM5, code 10") << 0 << QByteArray("0A") << "5";
    QTest::newRow("RM5, code 15") << 0 << QByteArray("0f") << "0";
    QTest::newRow("Kirk, 0") << 1 << QByteArray("00") << "0";
    QTest::newRow("Kirk, 8") << 1 << QByteArray("08") << "8";
    QTest::newRow("Kirk, 255") << 1 << QByteArray("FF") << "255";
    QTest::newRow("unknown type, 8") << 5 << QByteArray("08") << "8";
}

void TestRead::frequencyAccuracy() {
    QFETCH(int, type);
    QFETCH(QByteArray, digits);
    QFETCH(QString, text);
    BeltpackBench bench;
    bench.module.hold(type);
    if (type == 0)
        bench.connectRm5();
    else
        bench.connectKirk();
    bench.port.answer("# 013C", "# 02BC" + bytesOf(digits) + "\r\n");
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.freqAccuracy.text()), text);
}

void TestRead::numbersAreDecimal() {
    BeltpackBench bench;
    bench.connectKirk();
    bench.port.answer("# 013D", "# 02BDfF\r\n");
    bench.port.answer("# 0139", "# 02B900\r\n");
    bench.port.answer("# 013a", "# 02BA7f\r\n");
    bench.port.answer("# 0138", "# 02B8zz\r\n");
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.fmDeviation.text()), "255");
    QCOMPARE(shown(bench.freqAccuracyRx.text()), "0");
    QCOMPARE(shown(bench.freqAccuracyTx.text()), "127");
    QCOMPARE(shown(bench.rssiThreshold.text()), "0");
}

void TestRead::beltpackId_data() {
    QTest::addColumn<QByteArray>("digits");
    QTest::addColumn<QString>("text");
    QTest::newRow("last five digits") << QByteArray("00000186A0") << "100000";
    QTest::newRow("the first five do not count") << QByteArray("FFFFF00001") << "1";
    QTest::newRow("largest") << QByteArray("00000FFFFF") << "1048575";
    QTest::newRow("lower case") << QByteArray("00000abcde") << "703710";
    QTest::newRow("zero") << QByteArray("0000000000") << "0";
}

void TestRead::beltpackId() {
    QFETCH(QByteArray, digits);
    QFETCH(QString, text);
    BeltpackBench bench;
    bench.connectRm5();
    bench.setDigits(0, bytesOf(digits));
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.beltpackId.text()), text);
}

void TestRead::secondReadFindsNothingOfTheFirst() {
    BeltpackBench bench;
    bench.connectKirk();
    bench.read.CommandRdSettingsBp_Click();
    bench.connectRm5();
    bench.setDigits(3, "24");
    bench.silence("# 0102");
    bench.journal.take();
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(static_cast<int>(bench.module.type()), 0);
    QCOMPARE(shown(bench.image[3].value.str()), "24        ");
    QCOMPARE(shown(bench.image[1].value.str()), "N/A       ");
    QCOMPARE(shown(bench.image[1].available.str()), "0 ");
    QCOMPARE(shown(bench.pli.text()), "N/A       ");
}

void TestRead::hourglassIsUpThroughTheVersionRequest() {
    BeltpackBench bench;
    bench.connectKirk();
    bool upAtEveryLine = true;
    bool upAtTheRequest = false;
    bench.port.onLine([&](const std::string&) {
        upAtEveryLine = upAtEveryLine && bench.console.isHourglassUp() == (bench.port.sent().size() > 1);
    });
    bench.neighbours.onRequestDectVersion = [&] { upAtTheRequest = bench.console.isHourglassUp(); };
    bench.read.CommandRdSettingsBp_Click();
    QVERIFY(upAtEveryLine);
    QVERIFY(upAtTheRequest);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestRead::progressGoesByParameters() {
    BeltpackBench bench;
    bench.connectRm5();
    QStringList atEachLine;
    bench.port.onLine([&](const std::string&) {
        atEachLine << (bench.console.progress().isEmpty() ? "" : bench.console.progress().last());
    });
    bench.read.CommandRdSettingsBp_Click();
    QStringList expected{""};  // the module is detected before
    for (int done = 0; done < 21; ++done)
        expected << QStringLiteral("%1 of 21").arg(done);
    QCOMPARE(atEachLine.mid(0, expected.size()), expected);
    for (const QString& later : atEachLine.mid(expected.size()))
        QCOMPARE(later, "21 of 21");
    QCOMPARE(bench.console.progress().last(), "0 of 0");
}

void TestRead::slowUnit_data() {
    QTest::addColumn<int>("afterMs");
    QTest::addColumn<int>("gapMs");
    QTest::addColumn<bool>("read");
    QTest::newRow("slow to begin") << 1999 << 1 << true;
    QTest::newRow("slow between characters") << 0 << 1999 << true;
    QTest::newRow("at the limit") << 2000 << 2000 << true;
    QTest::newRow("too slow between characters") << 0 << 2001 << false;
}

void TestRead::slowUnit() {
    QFETCH(int, afterMs);
    QFETCH(int, gapMs);
    QFETCH(bool, read);
    BeltpackBench bench;
    bench.connectRm5();
    bench.port.answer("# 0104", {Reply{"# 028424", afterMs, gapMs}});
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.image[3].value.str()), read ? "24        " : "N/A       ");
}

void TestRead::noiseAndLineEnds() {
    // An echo without a start character, stray bytes and line ends do not get into a value.
    BeltpackBench bench;
    bench.connectRm5();
    bench.port.answer("# 0101", "0101\r\n\x81\x02# 0681\r00443\n03039\r\n");
    bench.port.answer("# 013D", "\r\n\r\n# 02BD21");
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.image[0].value.str()), "0044303039");
    QCOMPARE(shown(bench.fmDeviation.text()), "33");
}

QUORVEX_TEST(TestRead, quorvex::NoApplication)
#include "test_read.moc"
