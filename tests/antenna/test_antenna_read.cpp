#include <QTest>
#include <map>
#include <utility>

#include "tests/antenna/antenna_bench.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

const QStringList kFm{"hourglass up",
                      "status black: Reading FM Deviation...",
                      "> # 0101",
                      "TextFmDevA = 30",
                      "> # 0102",
                      "TextFmDevB = 200",
                      "status black: Detecting RF module type...",
                      "> # 0107"};
const QStringList kRm5Frequencies{"status black: Reading Frequency Accuracy...",
                                  "> # 0105",
                                  "TextFreqAdjA = 3",
                                  "> # 0106",
                                  "TextFreqAdjB = -4",
                                  "status black: Reading DECT version..."};
const QStringList kKirkFrequencies{"status black: Reading Frequency Accuracy...",
                                   "> # 0105",
                                   "TextFreqAdjA = 12",
                                   "> # 0107",
                                   "TextFreqAdjRxA = 1",
                                   "> # 0109",
                                   "TextFreqAdjTxA = 3",
                                   "> # 0106",
                                   "TextFreqAdjB = 3",
                                   "> # 0108",
                                   "TextFreqAdjRxB = 2",
                                   "> # 010a",
                                   "TextFreqAdjTxB = 4",
                                   "status black: Reading DECT version..."};
const QStringList kRead{"status black: Settings read from Active Antenna", "hourglass down"};
const QStringList kTbr6{"status black: Setting TBR6 mode...", QString("> ") + kTbr6Line,
                        "status black: Active Antenna is in TBR6 Mode", "hourglass down"};

}  // namespace

/// Reading an Active Antenna that answers.
class TestAntennaRead : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whole_data();
    void whole();
    void showsByte_data();
    void showsByte();
    void showsFrequency_data();
    void showsFrequency();
    void detects_data();
    void detects();
    void probeDropped();
    void probeTime_data();
    void probeTime();
    void typeIsChosenMeanwhile_data();
    void typeIsChosenMeanwhile();
    void chatter_data();
    void chatter();
};

void TestAntennaRead::whole_data() {
    QTest::addColumn<int>("held");
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<bool>("tbr6");
    QTest::addColumn<QStringList>("happens");
    const QStringList toRm5("module type becomes 0"), toKirk("module type becomes 1");
    QTest::newRow("RM5") << 0 << false << false << kFm + kRm5Frequencies + kRead;
    QTest::newRow("RM5, was Kirk") << 1 << false << false << kFm + toRm5 + kRm5Frequencies + kRead;
    QTest::newRow("RM5, was 5") << 5 << false << false << kFm + toRm5 + kRm5Frequencies + kRead;
    QTest::newRow("Kirk") << 1 << true << false << kFm + kKirkFrequencies + kRead;
    QTest::newRow("Kirk, was RM5") << 0 << true << false << kFm + toKirk + kKirkFrequencies + kRead;
    QTest::newRow("Kirk, was -1") << -1 << true << false << kFm + toKirk + kKirkFrequencies + kRead;
    QTest::newRow("RM5, TBR6") << 0 << false << true << kFm + kRm5Frequencies + kTbr6;
    QTest::newRow("Kirk, TBR6") << 1 << true << true << kFm + kKirkFrequencies + kTbr6;
    QTest::newRow("Kirk, was RM5, TBR6") << 0 << true << true << kFm + toKirk + kKirkFrequencies + kTbr6;
}

void TestAntennaRead::whole() {
    QFETCH(int, held);
    QFETCH(bool, kirk);
    QFETCH(bool, tbr6);
    QFETCH(QStringList, happens);
    AntennaBench at(held);
    kirk ? at.connectKirk() : at.connectRm5();
    at.run(tbr6);
    QCOMPARE(at.journal.entries(), happens);
    QCOMPARE(static_cast<int>(at.module.type()), kirk ? 1 : 0);
}

void TestAntennaRead::showsByte_data() {
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("shows");
    QTest::newRow("00") << "# 028100"
                        << "0";
    QTest::newRow("09") << "# 028109"
                        << "9";
    QTest::newRow("FF") << "# 0281FF"
                        << "255";
    QTest::newRow("lower case") << "# 0281ff"
                                << "255";
    QTest::newRow("no digits") << "# 0281"
                               << "0";
    QTest::newRow("one digit") << "# 0281A"
                               << "10";
    QTest::newRow("no hexadecimal digit") << "# 0281GG"
                                          << "0";
    QTest::newRow("more digits") << "# 02811234"
                                 << "18";
    // Counted from the start of the line, wherever in it the reply stands.
    QTest::newRow("behind a stray start") << "#5# 028112"
                                          << "129";
}

void TestAntennaRead::showsByte() {
    QFETCH(QString, reply);
    QFETCH(QString, shows);
    AntennaBench at;
    at.connectRm5();
    at.answer("# 0101", reply.toStdString());
    at.run(false);
    QCOMPARE(shown(at.a.fm.text()), shows);
}

void TestAntennaRead::showsFrequency_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("rm5");
    QTest::addColumn<QString>("kirk");
    QTest::newRow("00") << "00"
                        << "-7"
                        << "0";
    QTest::newRow("03") << "03"
                        << "-4"
                        << "3";
    QTest::newRow("07") << "07"
                        << "0"
                        << "7";
    QTest::newRow("08") << "08"
                        << "7"
                        << "8";
    QTest::newRow("0C") << "0C"
                        << "3"
                        << "12";
    QTest::newRow("0F") << "0F"
                        << "0"
                        << "15";
    QTest::newRow("FF") << "FF"
                        << "-240"
                        << "255";
}

void TestAntennaRead::showsFrequency() {
    QFETCH(QString, digits);
    QFETCH(QString, rm5);
    QFETCH(QString, kirk);
    for (const bool isKirk : {false, true}) {
        AntennaBench at(isKirk ? 0 : 1);  // what was held before does not count
        isKirk ? at.connectKirk() : at.connectRm5();
        at.answer("# 0105", "# 0285" + digits.toStdString());
        at.answer("# 0106", "# 0286" + digits.toStdString());
        at.run(false);
        QCOMPARE(shown(at.a.freq.text()), isKirk ? kirk : rm5);
        QCOMPARE(shown(at.b.freq.text()), isKirk ? kirk : rm5);
        QCOMPARE(shown(at.a.rx.text()), isKirk ? "1" : "old");
        QCOMPARE(shown(at.b.tx.text()), isKirk ? "4" : "old");
    }
}

void TestAntennaRead::detects_data() {
    QTest::addColumn<QByteArray>("comes");
    QTest::addColumn<int>("kind");
    const QByteArray other("! 021100\r\n"), reply("# 028701\r\n");
    QTest::newRow("first line") << reply << 1;
    QTest::newRow("second line") << other + reply << 1;
    QTest::newRow("third line") << other + other + reply << 1;
    QTest::newRow("fourth line") << other + other + other + reply << 0;
    QTest::newRow("refused") << QByteArray("# 01BF\r\n") << 0;
    QTest::newRow("silence") << QByteArray() << 0;
    QTest::newRow("one other line") << other << 0;
    QTest::newRow("two other lines") << other + other << 0;
    QTest::newRow("within a line") << QByteArray("!!! # 028701\r\n") << 1;
    QTest::newRow("the other module's") << QByteArray("# 028801\r\n") << 0;
    QTest::newRow("cut short") << QByteArray("# 0287") << 0;
    QTest::newRow("second cut short") << other + "# 0287" << 0;
    QTest::newRow("echo first") << QByteArray("# 0107\r\n") + reply << 1;
}

void TestAntennaRead::detects() {
    QFETCH(QByteArray, comes);
    QFETCH(int, kind);
    AntennaBench at(1 - kind);
    at.connectKirk();
    // The second time, when the receive adjustment itself is asked for, the antenna answers well.
    at.port.answer("# 0107", {Reply{bytesOf(comes)}, Reply{"# 028701\r\n"}});
    at.run(false);
    QCOMPARE(at.journal.entriesOf("module type"), QStringList(QString("module type becomes %1").arg(kind)));
    QCOMPARE(at.journal.entries().last(), "hourglass down");
    QCOMPARE(at.port.sentLines().contains("# 0109"), kind == 1);
}

// Silence means an RM5 only where nobody else has sent anything meanwhile.
void TestAntennaRead::probeDropped() {
    AntennaBench bench(1);
    bench.connectKirk();
    bench.answer("# 0107", "");
    bench.loop.at(500, [&] {
        bench.answer("# 0107", "# 028701");
        Operation(bench.link).exchange("! 0107", 8);
    });
    bench.run(false);
    QCOMPARE(bench.journal.entriesOf("module type"), QStringList());
    QCOMPARE(shown(bench.a.rx.text()), "1");
}

void TestAntennaRead::probeTime_data() {
    QTest::addColumn<QList<int>>("lines");  // ms after the probe; the last one is the reply
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("waits");
    QTest::newRow("just in time") << QList<int>{1999} << 1 << 1999;
    QTest::newRow("too late") << QList<int>{2001} << 0 << 2000;
    // Only for the first line is waited; the others must be there already.
    QTest::newRow("second together with the first") << QList<int>{1500, 1500} << 1 << 1500;
    QTest::newRow("third together with the first") << QList<int>{1500, 1500, 1500} << 1 << 1500;
    QTest::newRow("second a moment later") << QList<int>{1500, 1501} << 0 << 1500;
    QTest::newRow("third a moment later") << QList<int>{1500, 1500, 1501} << 0 << 1500;
}

void TestAntennaRead::probeTime() {
    QFETCH(QList<int>, lines);
    QFETCH(int, kind);
    QFETCH(int, waits);
    AntennaBench at(1 - kind);
    at.connectKirk();
    at.port.answer("# 0107", {Reply{""}, Reply{"# 028701\r\n"}});
    bool probed = false;
    at.port.onLine([&](const std::string& line) {
        if (line != "# 0107" || std::exchange(probed, true))
            return;
        // All that comes at one moment comes together.
        std::map<int, std::string> pieces;
        for (qsizetype i = 0; i < lines.size(); ++i)
            pieces[lines[i]] += i + 1 == lines.size() ? "# 028701\r\n" : "! 021100\r\n";
        for (const auto& [tick, bytes] : pieces)
            at.port.receiveAt(at.loop.ticks() + tick, bytes);
    });
    at.run(false);
    QCOMPARE(at.journal.entriesOf("module type"), QStringList(QString("module type becomes %1").arg(kind)));
    QCOMPARE(at.loop.ticks(), waits);
}

void TestAntennaRead::typeIsChosenMeanwhile_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QStringList>("lines");  // from the frequency accuracy on
    QTest::addColumn<QString>("shows");      // for module A and B
    QTest::newRow("Kirk becomes RM5") << true << QStringList{"# 0105", "# 0106"} << "3 -4";
    QTest::newRow("RM5 becomes Kirk")
        << false << QStringList{"# 0105", "# 0107", "# 0109", "# 0106", "# 0108", "# 010a"} << "12 3";
}

// The window's type counts, not what was detected.
void TestAntennaRead::typeIsChosenMeanwhile() {
    QFETCH(bool, kirk);
    QFETCH(QStringList, lines);
    QFETCH(QString, shows);
    AntennaBench at(kirk ? 1 : 0);
    kirk ? at.connectKirk() : at.connectRm5();
    at.port.onLine([&](const std::string& line) {
        if (line != "# 0105")
            return;
        at.module.hold(kirk ? 0 : 1);
        at.connectKirk();  // whatever is asked for now is answered
    });
    at.run(false);
    QCOMPARE(at.port.sentLines().mid(3), lines);
    QCOMPARE(shown(at.a.freq.text() + " " + at.b.freq.text()), shows);
}

void TestAntennaRead::chatter_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    for (const auto& [line, reply] :
         {std::pair{"# 0101", "# 028105"}, std::pair{"# 0102", "# 028205"}, std::pair{"# 0105", "# 028505"},
          std::pair{"# 0107", "# 028705"}, std::pair{"# 0109", "# 028905"}, std::pair{"# 0106", "# 028605"},
          std::pair{"# 0108", "# 028805"}, std::pair{"# 010a", "# 028A05"}, std::pair{kTbr6Line, "^ 020002"}})
        QTest::newRow(line) << line << reply;
}

void TestAntennaRead::chatter() {
    QFETCH(QString, line);
    QFETCH(QString, reply);
    for (const int others : {10, 11}) {
        AntennaBench at(1);
        at.connectKirk();
        std::string bytes;
        for (int i = 0; i < others; ++i)
            bytes += "! 021100\r\n";
        bytes += reply.toStdString() + "\r\n";
        if (line == "# 0107")
            at.port.answer("# 0107", {Reply{"# 028701\r\n"}, Reply{bytes}});
        else
            at.port.answer(line.toStdString(), bytes);
        at.run(true);
        QCOMPARE(at.journal.entries().contains("status black: Active Antenna is in TBR6 Mode"), others == 10);
        QCOMPARE(at.journal.entriesOf("box ").isEmpty(), others == 10);
        // What did not get through ends the read there and then.
        if (others == 11)
            QCOMPARE(at.port.sentLines().last(), line);
    }
}

QUORVEX_TEST(TestAntennaRead, quorvex::NoApplication)
#include "test_antenna_read.moc"
