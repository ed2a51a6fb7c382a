#include <QTest>
#include <stdexcept>
#include <vector>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "simulator/fault.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

Q_DECLARE_METATYPE(quorvex::sim::FaultKind)

class TestFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void everyFaultIsInTheTable();
    void strikes_data();
    void strikes();
    void onceStrikesOnce_data();
    void onceStrikesOnce();
    void noReplyStillObeys();
    void lateReplyHoldsUpTheNext();
    void otherValueComesBackAfterAWriteOnly();
    void goneAfterRead();
    void goneAfterWrite();
    void goneEndsTheStreams();
    void noVersion();
    void noTbr6Acknowledgement();
    void faultsAddUp();
    void cleared();
};

void TestFaults::reads_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<FaultKind>("kind");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("amount");
    QTest::addColumn<bool>("once");
    constexpr int kEvery = -1;
    QTest::newRow("name alone") << QByteArray("no-reply") << FaultKind::kNoReply << kEvery << 0 << false;
    QTest::newRow("always") << QByteArray("no-reply,always") << FaultKind::kNoReply << kEvery << 0 << false;
    QTest::newRow("once") << QByteArray("no-reply,once") << FaultKind::kNoReply << kEvery << 0 << true;
    QTest::newRow("number") << QByteArray("no-reply=39") << FaultKind::kNoReply << 0x39 << 0 << false;
    QTest::newRow("lower case") << QByteArray("echo=3a") << FaultKind::kEcho << 0x3A << 0 << false;
    QTest::newRow("own amount") << QByteArray("late") << FaultKind::kLate << kEvery << 500 << false;
    QTest::newRow("amount") << QByteArray("late:20") << FaultKind::kLate << kEvery << 20 << false;
    QTest::newRow("everything") << QByteArray("late=0D:1500,once") << FaultKind::kLate << 0x0D << 1500
                                << true;
    QTest::newRow("least amount") << QByteArray("cut:0") << FaultKind::kCut << kEvery << 0 << false;
    QTest::newRow("number needed") << QByteArray("gone-after=15") << FaultKind::kGoneAfter << 0x15 << 0
                                   << false;
    QTest::newRow("display") << QByteArray("display-short:511,once") << FaultKind::kDisplayShort << kEvery
                             << 511 << true;
}

void TestFaults::reads() {
    QFETCH(QByteArray, text);
    QFETCH(FaultKind, kind);
    QFETCH(int, number);
    QFETCH(int, amount);
    QFETCH(bool, once);
    const Fault fault = parseFault(text.toStdString());
    QCOMPARE(static_cast<int>(fault.kind), static_cast<int>(kind));
    QCOMPARE(fault.number.value_or(-1), number);
    QCOMPARE(fault.amount, amount);
    QCOMPARE(fault.once, once);
}

void TestFaults::refuses_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("empty") << QByteArray("") << QByteArray("no fault named \"\"");
    QTest::newRow("unknown") << QByteArray("no-answer") << QByteArray("no fault named \"no-answer\"");
    QTest::newRow("not a number") << QByteArray("late=ZZ") << QByteArray("\"ZZ\" is no register number");
    QTest::newRow("one digit") << QByteArray("late=D") << QByteArray("\"D\" is no register number");
    QTest::newRow("three digits") << QByteArray("late=500") << QByteArray("\"500\" is no register number");
    QTest::newRow("no digits") << QByteArray("late=") << QByteArray("\"\" is no register number");
    QTest::newRow("zero") << QByteArray("late=00") << QByteArray("\"00\" is no register number");
    QTest::newRow("a write number") << QByteArray("late=40") << QByteArray("\"40\" is no register number");
    QTest::newRow("number not taken")
        << QByteArray("no-version=08") << QByteArray("takes no register number");
    QTest::newRow("number missing") << QByteArray("gone-after") << QByteArray("needs a register number");
    QTest::newRow("amount not taken") << QByteArray("no-reply:3") << QByteArray("takes no amount");
    QTest::newRow("amount is no number") << QByteArray("late:fast") << QByteArray("\"fast\" is no number");
    QTest::newRow("amount with more") << QByteArray("late:5ms") << QByteArray("\"5ms\" is no number");
    QTest::newRow("amount empty") << QByteArray("late:") << QByteArray("\"\" is no number from 1");
    QTest::newRow("amount too small") << QByteArray("late:0") << QByteArray("\"0\" is no number from 1 to");
    QTest::newRow("amount negative") << QByteArray("cut:-1") << QByteArray("\"-1\" is no number from 0 to");
    QTest::newRow("amount too large") << QByteArray("display-short:512") << QByteArray("from 0 to 511");
    QTest::newRow("amount enormous") << QByteArray("late:99999999999") << QByteArray("is no number from");
    QTest::newRow("neither") << QByteArray("late,twice") << QByteArray("neither \"once\" nor \"always\"");
    QTest::newRow("nothing after comma") << QByteArray("late,") << QByteArray("neither \"once\" nor");
    QTest::newRow("cannot be once") << QByteArray("gone-after=01,once") << QByteArray("is for good");
}

void TestFaults::refuses() {
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, part);
    try {
        static_cast<void>(parseFault(text.toStdString()));
    } catch (const std::invalid_argument& error) {
        const QByteArray sentence(error.what());
        QVERIFY2(sentence.contains(part), error.what());
        QVERIFY2(sentence.contains("\"" + text + "\""), error.what());
        return;
    }
    QFAIL("taken");
}

void TestFaults::everyFaultIsInTheTable() {
    QCOMPARE(faultTable().size(), static_cast<std::size_t>(FaultKind::kDisplayInnerMarker) + 1);
    for (std::size_t i = 0; i < faultTable().size(); ++i) {
        const FaultRule& rule = faultTable()[i];
        QCOMPARE(static_cast<std::size_t>(rule.kind), i);
        QVERIFY(rule.least <= rule.amount && rule.amount <= rule.most);
        const std::string form(rule.name);
        const bool needsNumber = rule.number == FaultRule::Number::kRequired;
        QCOMPARE(static_cast<std::size_t>(parseFault(needsNumber ? form + "=01" : form).kind), i);
    }
}

void TestFaults::strikes_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("none elsewhere") << QByteArray("no-reply=03") << QByteArray("# 02821F\r\n");
    QTest::newRow("no-reply") << QByteArray("no-reply=02") << QByteArray();
    QTest::newRow("cut") << QByteArray("cut:7") << QByteArray("# 02821");
    QTest::newRow("cut to nothing") << QByteArray("cut:0") << QByteArray();
    QTest::newRow("cut of the line end alone") << QByteArray("cut:8") << QByteArray("# 02821F");
    QTest::newRow("cut beyond the end") << QByteArray("cut:80") << QByteArray("# 02821F");
    QTest::newRow("garbled") << QByteArray("garbled") << QByteArray("#?0?8?1?\r\n");
    QTest::newRow("echo") << QByteArray("echo=02") << QByteArray("# 0102\r\n# 02821F\r\n");
    QTest::newRow("noise") << QByteArray("noise:7") << QByteArray("~x?u}~x# 02821F\r\n");
    QTest::newRow("chatter") << QByteArray("chatter=02:2")
                             << QByteArray("! 021100\r\n^ 023001\r\n# 02821F\r\n");
}

void TestFaults::strikes() {
    QFETCH(QByteArray, fault);
    QFETCH(QByteArray, reply);
    Beltpack beltpack(RfModule::kKirk);
    beltpack.addFault(parseFault(fault.toStdString()));
    QCOMPARE(exchange(beltpack, "# 0102"), reply);
}

void TestFaults::onceStrikesOnce_data() {
    QTest::addColumn<QByteArray>("fault");
    for (const char* fault :
         {"no-reply", "no-reply=02", "late", "late=02:1", "cut", "cut=02", "garbled", "garbled=02", "echo",
          "echo=02", "noise", "noise=02", "chatter", "chatter=02", "other-value", "other-value=02"})
        QTest::newRow(fault) << QByteArray(fault);
}

void TestFaults::onceStrikesOnce() {
    QFETCH(QByteArray, fault);
    for (const bool once : {true, false}) {
        Beltpack beltpack(RfModule::kKirk);
        beltpack.addFault(parseFault(fault.toStdString() + (once ? ",once" : ",always")));
        exchange(beltpack, "# 02421F");
        std::vector<bool> good;
        for (const std::int64_t nowMs : {0, 1000, 2000}) {
            takeAll(beltpack, nowMs);  // what was late
            good.push_back(exchange(beltpack, "# 0102", nowMs) == "# 02821F\r\n");
        }
        QVERIFY(good == (once ? std::vector<bool>{false, true, true} : std::vector<bool>(3, false)));
    }
}

void TestFaults::noReplyStillObeys() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.setAnswersWrites(true);
    beltpack.addFault(parseFault("no-reply"));
    QCOMPARE(exchange(beltpack, "# 024701        "), "");
    QCOMPARE(exchange(beltpack, "! 0108"), "");
    QCOMPARE(QByteArray::fromStdString(beltpack.value(0x07)), "01");
}

void TestFaults::lateReplyHoldsUpTheNext() {
    Beltpack beltpack(RfModule::kKirk);
    std::vector<std::int64_t> sentMs;
    beltpack.setTranscript([&](const TranscriptEntry& entry) {
        if (entry.kind == TranscriptEntry::Kind::kSent)
            sentMs.push_back(entry.atMs);
    });
    beltpack.addFault(parseFault("late=02:250"));
    QCOMPARE(exchange(beltpack, "# 0102", 1000), "");
    QCOMPARE(beltpack.nextEventMs().value_or(-1), 1250);
    QCOMPARE(exchange(beltpack, "# 0104", 1100), "");
    QCOMPARE(takeAll(beltpack, 1249), "");
    QCOMPARE(takeAll(beltpack, 1250), "# 02821F\r\n# 028430\r\n");
    QVERIFY(!beltpack.nextEventMs());
    QVERIFY((sentMs == std::vector<std::int64_t>{1250, 1250}));
}

void TestFaults::otherValueComesBackAfterAWriteOnly() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.addFault(parseFault("other-value"));
    QCOMPARE(exchange(beltpack, "# 0101"), "# 06810044303039\r\n");
    exchange(beltpack, "# 06410044312345");
    QCOMPARE(exchange(beltpack, "# 0101"), "# 0681FFBBCEDCBA\r\n");
    QCOMPARE(QByteArray::fromStdString(beltpack.value(0x01)), "0044312345");
    QCOMPARE(exchange(beltpack, "# 0104"), "# 028430\r\n");
}

void TestFaults::goneAfterRead() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.addFault(parseFault("gone-after=02"));
    QCOMPARE(exchange(beltpack, "# 0104"), "# 028430\r\n");
    QVERIFY(!beltpack.isGone());
    QCOMPARE(exchange(beltpack, "# 0102"), "# 02821F\r\n");
    QVERIFY(beltpack.isGone());
    QCOMPARE(exchange(beltpack, "# 0104"), "");
    QCOMPARE(exchange(beltpack, "! 0108"), "");
    exchange(beltpack, "# 024431        ");
    QCOMPARE(QByteArray::fromStdString(beltpack.value(0x04)), "30");
}

void TestFaults::goneAfterWrite() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.setAnswersWrites(true);
    beltpack.addFault(parseFault("gone-after=04"));
    QCOMPARE(exchange(beltpack, "# 024330        "), "");  // refused, so it is no write
    QCOMPARE(exchange(beltpack, "# 024431        "), "");
    QCOMPARE(QByteArray::fromStdString(beltpack.value(0x04)), "31");
    QCOMPARE(exchange(beltpack, "# 0104"), "");
}

void TestFaults::goneEndsTheStreams() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.addFault(parseFault("gone-after=02"));
    beltpack.displayStream().start(0, 100);
    exchange(beltpack, "! 0309E803");
    QVERIFY(!takeAll(beltpack, 1000).isEmpty());
    exchange(beltpack, "# 0102", 1000);
    QVERIFY(!beltpack.nextEventMs());
    QCOMPARE(takeAll(beltpack, 5000), "");
}

void TestFaults::noVersion() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.setLinesBeforeVersion(1);
    beltpack.addFault(parseFault("no-version,once"));
    QCOMPARE(exchange(beltpack, "! 0108"), "! 021100\r\n");
    QCOMPARE(exchange(beltpack, "# 0102"), "# 02821F\r\n");
    QVERIFY(exchange(beltpack, "! 0108").contains("DECT Version:"));
    beltpack.addFault(parseFault("no-version"));
    QVERIFY(!exchange(beltpack, "! 0108").contains("DECT Version:"));
    QVERIFY(!exchange(beltpack, "! 0108").contains("DECT Version:"));
}

void TestFaults::noTbr6Acknowledgement() {
    const QByteArray command = "! 0E030002100ECE00001503FF000000";
    ActiveAntenna antenna(RfModule::kKirk);
    antenna.addFault(parseFault("no-tbr6-ack,once"));
    QCOMPARE(exchange(antenna, "# 0101"), "# 028121\r\n");
    QCOMPARE(exchange(antenna, command), "");
    QVERIFY(antenna.inTbr6Mode());
    QCOMPARE(exchange(antenna, command), "^ 020002\r\n");
    antenna.addFault(parseFault("no-tbr6-ack"));
    QCOMPARE(exchange(antenna, command), "");
    QCOMPARE(exchange(antenna, command), "");
}

void TestFaults::faultsAddUp() {
    Beltpack beltpack(RfModule::kKirk);
    for (const char* fault : {"late:10", "echo", "chatter", "noise:2", "garbled", "cut:4"})
        beltpack.addFault(parseFault(fault));
    QCOMPARE(exchange(beltpack, "# 0102"), "");
    QCOMPARE(takeAll(beltpack, 10), "# 0102\r\n! 021100\r\n~x#?0?");
}

void TestFaults::cleared() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.addFault(parseFault("no-reply"));
    QCOMPARE(exchange(beltpack, "# 0102"), "");
    beltpack.clearFaults();
    QCOMPARE(exchange(beltpack, "# 0102"), "# 02821F\r\n");
}

QUORVEX_TEST(TestFaults, quorvex::NoApplication)
#include "test_faults.moc"
