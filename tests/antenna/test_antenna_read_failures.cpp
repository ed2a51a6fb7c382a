#include <QTest>

#include "tests/antenna/antenna_bench.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

const QStringList kFailure{"hourglass down", "box critical: No Response from Active Antenna! []",
                           "status black: Error communicating with Active Antenna."};
const QStringList kKirkLines{"# 0101", "# 0102", "# 0107", "# 0105", "# 0107",
                             "# 0109", "# 0106", "# 0108", "# 010a"};

QStringList behind(const QStringList& entries, const QString& entry) {
    return entries.mid(entries.lastIndexOf(entry) + 1);
}

}  // namespace

/// An Active Antenna that does not answer, or not as it should.
class TestAntennaReadFailures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void silence_data();
    void silence();
    void nobodyThere_data();
    void nobodyThere();
    void limits_data();
    void limits();
    void wrongReply_data();
    void wrongReply();
    void tbr6Refused_data();
    void tbr6Refused();
    void detectedTypeStays();
    void probeNeverFails_data();
    void probeNeverFails();
    void cablePulled_data();
    void cablePulled();
    void startsAgain();
};

void TestAntennaReadFailures::silence_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("shown");
    const QStringList all{"TextFmDevA = 30",    "TextFmDevB = 200",   "TextFreqAdjA = 12",
                          "TextFreqAdjRxA = 1", "TextFreqAdjTxA = 3", "TextFreqAdjB = 3",
                          "TextFreqAdjRxB = 2", "TextFreqAdjTxB = 4"};
    const QStringList lines{"# 0101", "# 0102", "# 0105", "# 0107", "# 0109", "# 0106", "# 0108", "# 010a"};
    for (int i = 0; i < lines.size(); ++i)
        QTest::addRow("Kirk, %s", qPrintable(lines[i])) << true << lines[i] << all.mid(0, i);
    QTest::newRow("Kirk, TBR6") << true << kTbr6Line << all;
    QTest::newRow("RM5, # 0101") << false << "# 0101" << QStringList{};
    QTest::newRow("RM5, # 0102") << false << "# 0102" << QStringList{"TextFmDevA = 30"};
    QTest::newRow("RM5, # 0105") << false << "# 0105" << QStringList{"TextFmDevA = 30", "TextFmDevB = 200"};
    QTest::newRow("RM5, # 0106") << false << "# 0106"
                                 << QStringList{"TextFmDevA = 30", "TextFmDevB = 200", "TextFreqAdjA = 3"};
    QTest::newRow("RM5, TBR6") << false << kTbr6Line
                               << QStringList{"TextFmDevA = 30", "TextFmDevB = 200", "TextFreqAdjA = 3",
                                              "TextFreqAdjB = -4"};
}

void TestAntennaReadFailures::silence() {
    QFETCH(bool, kirk);
    QFETCH(QString, line);
    QFETCH(QStringList, shown);
    AntennaBench at(kirk ? 1 : 0);
    kirk ? at.connectKirk() : at.connectRm5();
    if (line == "# 0107")  // the probe is answered, the read is not
        at.port.answer("# 0107", {Reply{"# 028701\r\n"}, Reply{""}});
    else
        at.port.answer(line.toStdString(), "");
    at.run(true);
    // Nothing more is sent, what was read before stays shown, and the pointer is back before the box.
    QCOMPARE(behind(at.journal.entries(), "> " + line), kFailure);
    QCOMPARE(at.journal.entriesOf("Text"), shown);
    QVERIFY(!at.console.isHourglassUp());
}

void TestAntennaReadFailures::nobodyThere_data() {
    QTest::addColumn<bool>("tbr6");
    QTest::newRow("read") << false;
    QTest::newRow("TBR6") << true;
}

void TestAntennaReadFailures::nobodyThere() {
    QFETCH(bool, tbr6);
    AntennaBench at;
    at.run(tbr6);
    QCOMPARE(at.journal.entries(),
             QStringList({"hourglass up", "status black: Reading FM Deviation...", "> # 0101"}) + kFailure);
    QCOMPARE(at.loop.ticks(), 12'000);
}

void TestAntennaReadFailures::limits_data() {
    QTest::addColumn<QList<int>>("lines");  // when each line comes; the last one is the reply
    QTest::addColumn<bool>("read");
    QTest::newRow("first line in time") << QList<int>{11'999} << true;
    QTest::newRow("first line too late") << QList<int>{12'001} << false;
    QTest::newRow("second line in time") << QList<int>{11'999, 13'998} << true;
    // A silence of 2 s counts as one more line, so chatter may pause.
    QTest::newRow("second line after a pause") << QList<int>{5000, 24'000} << true;
    QTest::newRow("second line after too long a pause") << QList<int>{5000, 25'100} << false;
}

void TestAntennaReadFailures::limits() {
    QFETCH(QList<int>, lines);
    QFETCH(bool, read);
    AntennaBench at;
    at.connectRm5();
    at.answer("# 0101", "");
    for (qsizetype i = 0; i < lines.size(); ++i)
        at.port.receiveAt(lines[i], i + 1 == lines.size() ? "# 028122\r\n" : "! 021100\r\n");
    at.run(false);
    QCOMPARE(shown(at.a.fm.text()), read ? "34" : "old");
    QCOMPARE(at.port.sentLines().size(), read ? qsizetype{5} : qsizetype{1});
}

void TestAntennaReadFailures::wrongReply_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    QTest::newRow("the other module's") << "# 0101"
                                        << "# 028205";
    QTest::newRow("the command's echo") << "# 0102"
                                        << "# 0102";
    QTest::newRow("another length") << "# 0105"
                                    << "# 0385AA";
    // The reply's letter is a capital, though the command's is not.
    QTest::newRow("lower case") << "# 010a"
                                << "# 028a05";
    QTest::newRow("no blank") << "# 0106"
                              << "#028605";
    QTest::newRow("another acknowledgement") << kTbr6Line << "^ 020003";
}

void TestAntennaReadFailures::wrongReply() {
    QFETCH(QString, line);
    QFETCH(QString, reply);
    AntennaBench at(1);
    at.connectKirk();
    at.answer(qPrintable(line), reply.toStdString());
    at.run(true);
    QCOMPARE(behind(at.journal.entries(), "> " + line), kFailure);
}

void TestAntennaReadFailures::tbr6Refused_data() {
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

void TestAntennaReadFailures::tbr6Refused() {
    QFETCH(bool, kirk);
    AntennaBench at(kirk ? 1 : 0);
    kirk ? at.connectKirk() : at.connectRm5();
    at.answer(kTbr6Line, "");
    at.run(true);
    QCOMPARE(behind(at.journal.entries(), "status black: Reading DECT version..."),
             QStringList({"status black: Setting TBR6 mode...", QString("> ") + kTbr6Line}) + kFailure);
    QCOMPARE(at.loop.ticks(), 12'000);
}

void TestAntennaReadFailures::detectedTypeStays() {
    AntennaBench at(0);
    at.connectKirk();
    at.answer("# 0105", "");
    at.run(false);
    QCOMPARE(static_cast<int>(at.module.type()), 1);
    QCOMPARE(at.journal.entriesOf("module type"), QStringList("module type becomes 1"));
    QCOMPARE(at.port.sentLines(), QStringList({"# 0101", "# 0102", "# 0107", "# 0105"}));
}

void TestAntennaReadFailures::probeNeverFails_data() {
    QTest::addColumn<QByteArray>("comes");
    QTest::newRow("silence") << QByteArray();
    QTest::newRow("refusal") << QByteArray("# 01BF\r\n");
    QTest::newRow("noise") << QByteArray("~x?u}\r\n");
    QTest::newRow("half a line") << QByteArray("# 02");
}

void TestAntennaReadFailures::probeNeverFails() {
    QFETCH(QByteArray, comes);
    AntennaBench at(0);
    at.connectRm5();
    at.port.answer("# 0107", bytesOf(comes));
    at.run(false);
    QCOMPARE(at.port.sentLines(), QStringList({"# 0101", "# 0102", "# 0107", "# 0105", "# 0106"}));
    QCOMPARE(at.journal.entries().mid(at.journal.entries().size() - 2),
             QStringList({"status black: Settings read from Active Antenna", "hourglass down"}));
    QCOMPARE(at.journal.entriesOf("module type"), QStringList());
}

void TestAntennaReadFailures::cablePulled_data() {
    QTest::addColumn<int>("line");
    for (int i = 0; i < kKirkLines.size(); ++i)
        QTest::addRow("%d: %s", i, qPrintable(kKirkLines[i])) << i;
}

void TestAntennaReadFailures::cablePulled() {
    QFETCH(int, line);
    AntennaBench at(1);
    at.connectKirk();
    int sent = 0;
    at.port.onLine([&](const std::string&) {
        if (sent++ == line)
            at.loop.at(at.loop.ticks() + 5, [&] { at.port.unplug(); });
    });
    if (line == 4)  // the probe is answered, the read is not
        at.port.answer("# 0107", {Reply{"# 028701\r\n"}, Reply{""}});
    else
        at.port.answer(kKirkLines[line].toStdString(), "");
    at.run(true);
    QStringList entries = at.journal.take();
    QCOMPARE(entries.mid(entries.size() - 3), kFailure);
    QCOMPARE(entries.filter("box ").size(), 1);
    // An unplugged cable is no silence: nobody waits twelve seconds for it.
    QVERIFY(at.loop.ticks() <= 5 + 2000);
}

void TestAntennaReadFailures::startsAgain() {
    AntennaBench at(0);
    at.run(false);
    at.connectRm5();
    at.journal.take();
    at.run(true);
    QCOMPARE(at.journal.entries().last(), "hourglass down");
    QCOMPARE(at.journal.entriesOf("box "), QStringList());
    QCOMPARE(at.journal.entriesOf("status ").last(), "status black: Active Antenna is in TBR6 Mode");
}

QUORVEX_TEST(TestAntennaReadFailures, quorvex::NoApplication)
#include "test_antenna_read_failures.moc"
