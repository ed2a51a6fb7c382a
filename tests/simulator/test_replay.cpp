#include <QTest>
#include <sstream>
#include <stdexcept>

#include "simulator/replay.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

namespace {

const char* const kTrace =
    "# trace of 2026-11-22 10:00:00\n"
    "        1.000 * open COM1\n"
    "        1.500 < hello | 68 65 6C 6C 6F\n"
    "        2.000 > # 0102\\x0D\\x0A | 23 20 30 31 30 32 0D 0A\n"
    "        2.022 < # 02821F | 23 20 30 32 38 32 31 46\n"
    "        2.100 ~ \\x0D\\x0A | 0D 0A\n"
    "        2.100 > # 0104\\x0D\\x0A | 23 20 30 31 30 34 0D 0A\n"
    "        4.100 * silence of 2000 ms\n"
    "        5.000 > # 0102\\x0D\\x0A | 23 20 30 31 30 32 0D 0A\n"
    "        5.030 < # 028227 | 23 20 30 32 38 32 32 37\n"
    "        6.000 * close\n"
    "        6.500 * open COM2 failed: The port is absent\n"
    "        7.000 * open COM1\n"
    "        7.000 > # 0102\\x0D\\x0A | 23 20 30 31 30 32 0D 0A\n"
    "        7.010 < | | 7C\n";

}  // namespace

/// A unit that is played from a trace.
class TestReplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void speaksByItself();
    void answersInItsTime();
    void lineThatCameLater();
    void lineFromBefore();
    void unknownLine();
    void dropsWhatNobodyWaitsFor();
    void openings();
    void tellsTheTraffic();
    void badTraces_data();
    void badTraces();

private:
    QByteArray say(const char* line, std::int64_t nowMs, std::int64_t takenMs) {
        replay_->receive(std::string(line) + "\r\n", nowMs);
        return take(takenMs);
    }
    QByteArray take(std::int64_t nowMs) { return QByteArray::fromStdString(replay_->take(nowMs)); }

    std::unique_ptr<Replay> replay_;
};

void TestReplay::init() {
    std::istringstream text(kTrace);
    replay_ = std::make_unique<Replay>(text);
    QVERIFY(!replay_->nextEventMs());
    replay_->opened(100);
}

void TestReplay::speaksByItself() {
    QCOMPARE(*replay_->nextEventMs(), 600);
    QCOMPARE(take(599), "");
    QCOMPARE(take(600), "hello");
    QVERIFY(!replay_->nextEventMs());
}

void TestReplay::answersInItsTime() {
    take(600);
    QCOMPARE(say("# 0102", 1000, 1021), "");
    QCOMPARE(take(1022), "# 02821F");
    QCOMPARE(take(1099), "");
    QCOMPARE(take(1100), "\r\n");
    QCOMPARE(say("# 0104", 1100, 9000), "");  // nobody answered then
    QCOMPARE(say("# 0102", 9000, 9030), "# 028227");
}

void TestReplay::lineThatCameLater() {
    QCOMPARE(say("# 0104", 1000, 9000), "");
    QCOMPARE(say("# 0102", 9000, 9030), "# 028227");
}

void TestReplay::lineFromBefore() {
    QCOMPARE(say("# 0102", 1000, 1099), "# 02821F");
    QCOMPARE(say("# 0102", 2000, 2099), "# 028227");
    QCOMPARE(say("# 0102", 3000, 3099), "|");         // the next one, at the next opening
    QCOMPARE(say("# 0102", 4000, 4099), "# 02821F");  // no more: from the opening on
}

void TestReplay::unknownLine() {
    take(600);
    QCOMPARE(say("# 0109", 1000, 9000), "");
    QCOMPARE(say("", 9000, 9900), "");
    replay_->receive(std::string(1000, 'x'), 9900);  // noise without an end
    replay_->receive("\r\n", 9900);
    QCOMPARE(say("# 0102", 9900, 9922), "# 02821F");
}

void TestReplay::dropsWhatNobodyWaitsFor() {
    QCOMPARE(say("# 0102", 1000, 1010), "");
    QCOMPARE(say("# 0104", 1010, 9000), "");
}

void TestReplay::openings() {
    say("# 0102", 1000, 1099);
    replay_->opened(5000);
    QCOMPARE(take(9000), "");
    QCOMPARE(say("# 0102", 9000, 9010), "|");
    replay_->opened(10000);  // there is no further one
    QCOMPARE(take(10500), "hello");
    QCOMPARE(say("# 0102", 11000, 11022), "# 02821F");
}

void TestReplay::tellsTheTraffic() {
    QStringList told;
    replay_->setTranscript([&](const TranscriptEntry& entry) { told << entry.text.c_str(); });
    say("# 0102", 1000, 1100);
    say("# 0109", 2000, 2000);
    QCOMPARE(told, QStringList({"# 0102", "# 02821F", "", "# 0109", "not in the trace"}));
}

void TestReplay::badTraces_data() {
    QTest::addColumn<QByteArray>("trace");
    QTest::addColumn<QByteArray>("sentence");
    const QByteArray nothing = "There is nothing in the trace that passed over the port.";
    QTest::newRow("empty") << QByteArray() << nothing;
    QTest::newRow("something else") << QByteArray("QCF 1\n0.1 x\n1 ?\n") << nothing;
    QTest::newRow("no bar") << QByteArray("1.0 < abc\n") << QByteArray("Line 1 of the trace has no bytes.");
    QTest::newRow("no bytes") << QByteArray("1.0 > a |\n") << QByteArray("Line 1 of the trace has no bytes.");
    QTest::newRow("no byte") << QByteArray("\n1.0 > a | 0G\n")
                             << QByteArray("Line 2 of the trace has no bytes.");
    QTest::newRow("half a byte") << QByteArray("1.0 > a | 41 4\n")
                                 << QByteArray("Line 1 of the trace has no bytes.");
}

void TestReplay::badTraces() {
    QFETCH(QByteArray, trace);
    QFETCH(QByteArray, sentence);
    std::istringstream text(trace.toStdString());
    try {
        const Replay replay(text);
        QFAIL("It was taken.");
    } catch (const std::runtime_error& error) {
        QCOMPARE(QByteArray(error.what()), sentence);
    }
}

QUORVEX_TEST(TestReplay, quorvex::NoApplication)
#include "test_replay.moc"
