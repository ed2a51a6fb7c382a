#include <QTest>
#include <limits>

#include "link/runtime_fault.h"
#include "tests/calibration/tuning_bench.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr const char* kTickRecord = "! 0407100051\r\n";  // DC balance 16, RSSI 0x51
const QStringList kRecordShown{"rssi RSSI: 81", "dc slider 128", "dc DC Bal: 28", "beep"};

/// A Kirk's dialog, open.
struct Open : TuningBench {
    explicit Open(int rfType = 1, FakeLoop::Tick startTick = 0) : TuningBench(rfType, startTick) {
        open(kBeltpackCaption);
    }
    QStringList tick() {
        tuning.Timer1_Timer();
        return journal.take();
    }
};

std::string recordOf(int dcBalance, int rssi = 0x51) {
    const auto bits = static_cast<unsigned>(dcBalance) & 0xFFFFU;
    return QString::asprintf("! 0407%02X%02X%02X\r\n", bits & 0xFFU, bits >> 8U, static_cast<unsigned>(rssi))
        .toStdString();
}

}  // namespace

/// The timer of the dialog: what a Kirk streams, silence, closing.
class TestCalibTuningTimer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void starts();
    void rssi_data();
    void rssi();
    void dcBalance_data();
    void dcBalance();
    void noConnection_data();
    void noConnection();
    void plotted();
    void records_data();
    void records();
    void oneRecordATick();
    void rm5ReadsNothing();
    void otherTypesReadAsAKirk();
    void silence_data();
    void silence();
    void lastMomentOfTheLimit();
    void cablePulled();
    void ticksNeverOverlap();
    void noTickUnderTheBox();
    void leavesTheReplyToTheButton_data();
    void leavesTheReplyToTheButton();
    void leavesTheBoxToTheButton_data();
    void leavesTheBoxToTheButton();
    void closesAtTheNextTick_data();
    void closesAtTheNextTick();
    void cancelDuringTheCheck();
    void closingEndsTheRead_data();
    void closingEndsTheRead();
    void closesInAnyStream_data();
    void closesInAnyStream();
    void endOfTheTickCount();
};

void TestCalibTuningTimer::starts() {
    Open at;
    at.tuning.StartCalTimer();
    at.tuning.ShowRssiThreshold();
    QCOMPARE(at.journal.entries(), QStringList({"timer started", "threshold frame shown"}));
}

void TestCalibTuningTimer::rssi_data() {
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("shows");
    QTest::newRow("0") << 0x00 << "RSSI: 00";
    QTest::newRow("one digit") << 0x05 << "RSSI: 05";
    QTest::newRow("9") << 0x09 << "RSSI: 09";
    QTest::newRow("10") << 0x0A << "RSSI: 10";
    QTest::newRow("99") << 0x63 << "RSSI: 99";
    QTest::newRow("three digits") << 0xC8 << "RSSI: 200";
    QTest::newRow("the most") << 0xFF << "RSSI: 255";
}

void TestCalibTuningTimer::rssi() {
    QFETCH(int, byte);
    QFETCH(QString, shows);
    for (const char* caption : {kBeltpackCaption, kModuleACaption, kModuleBCaption}) {
        TuningBench at(1);
        at.open(caption);
        at.port.receive(recordOf(16, byte));
        at.tuning.Timer1_Timer();
        QCOMPARE(at.journal.entries(),
                 QStringList({"rssi " + shows, "dc slider 128", "dc DC Bal: 28", "beep"}));
    }
}

void TestCalibTuningTimer::dcBalance_data() {
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("slider");
    QTest::addColumn<QString>("shows");
    const auto row = [](int value, int slider, const char* shown) {
        QTest::addRow("%d", value) << value << slider << shown;
    };
    row(16, 128, "28");
    row(2, 121, "21");
    row(3, 122, "22");  // 1.5 goes to the even 2
    row(5, 122, "22");  // 2.5 too
    row(7, 124, "24");
    row(-2, 119, "19");
    row(-3, 118, "18");
    row(-5, 118, "18");
    row(-40, 100, "0");
    row(-42, 99, "-1");
    row(158, 199, "99");
    row(160, 200, "100");
    row(162, 200, "100");
    row(32767, 200, "100");
    row(-238, 1, "-99");
    row(-240, 0, "-100");
    row(-242, 0, "-100");
    row(-256, 0, "-100");
    row(-32768, 0, "-100");
}

void TestCalibTuningTimer::dcBalance() {
    QFETCH(int, value);
    QFETCH(int, slider);
    QFETCH(QString, shows);
    Open at;
    at.port.receive(recordOf(value));
    QCOMPARE(at.tick(), QStringList({"rssi RSSI: 81", QString("dc slider %1").arg(slider),
                                     "dc DC Bal: " + shows, "beep"}));
}

void TestCalibTuningTimer::noConnection_data() {
    QTest::addColumn<QList<int>>("values");
    QTest::addColumn<QStringList>("shown");
    const QString none = "No Conn";
    QTest::newRow("0 at once") << QList<int>{0} << QStringList{none};
    // A half rounds to the even 0 and counts as such.
    QTest::newRow("1 at once") << QList<int>{1} << QStringList{none};
    QTest::newRow("-1 at once") << QList<int>{-1} << QStringList{none};
    QTest::newRow("never there") << QList<int>{0, 0, 0, 0, 0} << QStringList{none, none, none, none, none};
    QTest::newRow("three in a row") << QList<int>{16, 0, 0, 0, 0}
                                    << QStringList{"28", "20", "20", none, none};
    QTest::newRow("two in a row, twice")
        << QList<int>{16, 0, 0, 16, 0, 1, 0} << QStringList{"28", "20", "20", "28", "20", "20", none};
    QTest::newRow("comes late") << QList<int>{0, 0, 16, 0, 0, 0}
                                << QStringList{none, none, "28", "20", "20", none};
    QTest::newRow("comes again") << QList<int>{16, 0, 0, 0, 16, 0, 0, 0}
                                 << QStringList{"28", "20", "20", none, "28", "20", "20", none};
}

void TestCalibTuningTimer::noConnection() {
    QFETCH(QList<int>, values);
    QFETCH(QStringList, shown);
    Open at;
    QStringList seen;
    for (const int value : values) {
        at.port.receive(recordOf(value));
        const QStringList happened = at.tick();
        seen += happened.filter("dc DC Bal: ");
        // The scale stays where it was while nothing is heard.
        QCOMPARE(happened.filter("dc slider").isEmpty(), seen.last().endsWith("No Conn"));
        QCOMPARE(happened.last(), "beep");
    }
    QCOMPARE(seen.replaceInStrings("dc DC Bal: ", ""), shown);
}

// Each record of type 07 once, at the tick when it was there, with what the labels show.
void TestCalibTuningTimer::plotted() {
    Open at;
    QVERIFY(at.window.plotted.empty());
    at.port.receiveAt(300, recordOf(16, 0xC8));
    at.port.receiveAt(900, "! 021200\r\n" + recordOf(-256, 0x05));
    for (const int tickOfZero : {1300, 1700, 2100})
        at.port.receiveAt(tickOfZero, recordOf(0, 0x07));
    for (int i = 0; i < 5; ++i)
        at.tick();
    at.tick();  // silence
    QStringList seen;
    for (const Reading& reading : at.window.plotted)
        seen << QStringLiteral("%1: %2, %3")
                    .arg(reading.tick)
                    .arg(reading.rssi)
                    .arg(reading.dcBalance ? QString::number(*reading.dcBalance) : "none");
    QCOMPARE(seen,
             QStringList({"300: 200, 28", "900: 5, -100", "1300: 7, 20", "1700: 7, 20", "2100: 7, none"}));
}

void TestCalibTuningTimer::records_data() {
    QTest::addColumn<QByteArray>("comes");
    QTest::addColumn<QStringList>("happens");
    QTest::newRow("alone") << QByteArray(kTickRecord) << kRecordShown;
    QTest::newRow("rest of a line before it") << QByteArray("7FF51\r\n") + kTickRecord << kRecordShown;
    QTest::newRow("other types before it")
        << QByteArray("! 021200\r\n! 0217FF\r\n# 02821F\r\n") + kTickRecord << kRecordShown;
    QTest::newRow("type 70") << QByteArray("! 0470100051\r\n") + kTickRecord << kRecordShown;
    QTest::newRow("any start character") << QByteArray("^ 0407100051\r\n") << kRecordShown;
    QTest::newRow("other characters 3 and 4") << QByteArray("! zz07100051\r\n") << kRecordShown;
    QTest::newRow("lower case") << QByteArray("! 0407c8ffc8\r\n")
                                << QStringList{"rssi RSSI: 200", "dc slider 92", "dc DC Bal: -8", "beep"};
    QTest::newRow("more behind it") << QByteArray("! 0907100051AABBCC\r\n") << kRecordShown;
    QTest::newRow("ends early") << QByteArray("! 0407\r\n")
                                << QStringList{"rssi RSSI: 00", "dc DC Bal: No Conn", "beep"};
    QTest::newRow("ends in its balance")
        << QByteArray("! 040710\r\n")
        << QStringList{"rssi RSSI: 00", "dc slider 128", "dc DC Bal: 28", "beep"};
    // Half a record and the next one make one line, read by its places like any other.
    QTest::newRow("runs into the next")
        << QByteArray("! 040710! 0407D7FF51\r\n")
        << QStringList{"rssi RSSI: 04", "dc slider 128", "dc DC Bal: 28", "beep"};
}

void TestCalibTuningTimer::records() {
    QFETCH(QByteArray, comes);
    QFETCH(QStringList, happens);
    Open at;
    at.port.receive(bytesOf(comes));
    QCOMPARE(at.tick(), happens);
}

void TestCalibTuningTimer::oneRecordATick() {
    Open at;
    at.port.receive(recordOf(16) + recordOf(20));
    QCOMPARE(at.tick(), kRecordShown);
    QCOMPARE(at.tick(), QStringList({"rssi RSSI: 81", "dc slider 130", "dc DC Bal: 30", "beep"}));
}

void TestCalibTuningTimer::rm5ReadsNothing() {
    Open at(0);
    at.port.receive(kTickRecord);
    QCOMPARE(at.tick(), QStringList());
    QCOMPARE(at.port.readCount(), 0);
    QCOMPARE(at.loop.ticks(), 0);
    // It still closes the dialog.
    at.tuning.CommandCancel_Click();
    QCOMPARE(at.tick(), QStringList("unload"));
}

void TestCalibTuningTimer::otherTypesReadAsAKirk() {
    for (const int rfType : {5, -1}) {
        Open at(rfType);
        at.port.receive(kTickRecord);
        QCOMPARE(at.tick(), kRecordShown);
    }
}

void TestCalibTuningTimer::silence_data() {
    QTest::addColumn<QList<int>>("ticks");  // when one more character of a record comes
    QTest::addColumn<int>("ends");
    QTest::newRow("from the start") << QList<int>{} << 10'000;
    QTest::newRow("within a record") << QList<int>{9'999, 19'998, 20'000} << 30'000;
}

void TestCalibTuningTimer::silence() {
    QFETCH(QList<int>, ticks);
    QFETCH(int, ends);
    Open at;
    for (qsizetype i = 0; i < ticks.size(); ++i)
        at.port.receiveAt(ticks[i], std::string(1, kTickRecord[i]));
    QCOMPARE(at.tick(), QStringList({kNoUnitBox, "unload"}));
    QCOMPARE(at.loop.ticks(), ends);
    QCOMPARE(at.result, CalResult::none);
}

void TestCalibTuningTimer::lastMomentOfTheLimit() {
    Open at;
    // A record of another type starts the time afresh, as each of its characters does.
    at.port.receiveAt(9'999, "! 021200\r\n");
    at.port.receiveAt(19'998, kTickRecord);
    QCOMPARE(at.tick(), kRecordShown);
    QCOMPARE(at.loop.ticks(), 19'998);
}

void TestCalibTuningTimer::cablePulled() {
    Open at;
    at.loop.at(300, [&] { at.port.unplug(); });
    QCOMPARE(at.tick(), QStringList({kNoUnitBox, "unload"}));
    QCOMPARE(at.loop.ticks(), 300);
}

void TestCalibTuningTimer::ticksNeverOverlap() {
    Open at;
    for (const FakeLoop::Tick tick : {400, 800, 1200})
        at.loop.at(tick, [&] { at.tuning.Timer1_Timer(); });
    at.port.receiveAt(1500, recordOf(16) + recordOf(20));
    QCOMPARE(at.tick(), kRecordShown);
    // And the next one reads again.
    QCOMPARE(at.tick(), QStringList({"rssi RSSI: 81", "dc slider 130", "dc DC Bal: 30", "beep"}));
}

void TestCalibTuningTimer::noTickUnderTheBox() {
    Open at;
    at.console.whileBoxIsShown([&] {
        at.port.receive(kTickRecord);
        at.tuning.Timer1_Timer();
        at.tuning.CommandCancel_Click();
        at.tuning.Timer1_Timer();
    });
    QCOMPARE(at.tick(), QStringList({kNoUnitBox, "unload"}));
}

void TestCalibTuningTimer::leavesTheReplyToTheButton_data() {
    QTest::addColumn<bool>("nested");
    QTest::newRow("one exchange") << false;
    QTest::newRow("another one within it") << true;
}

void TestCalibTuningTimer::leavesTheReplyToTheButton() {
    QFETCH(bool, nested);
    Open at;
    if (nested) {
        at.threshold.type("255");
        at.loop.at(50, [&] { at.tuning.CmdSetRssiThr_Click(); });
        at.port.receiveAt(60, "# 02B8FF\r\n");
    }
    at.loop.at(100, [&] { at.tuning.Timer1_Timer(); });
    at.port.receiveAt(200, "# 02821F\r\n");
    at.tuning.CommandOK_Click();
    QCOMPARE(at.result, CalResult::confirmed);
    QCOMPARE(at.loop.ticks(), 200);
}

void TestCalibTuningTimer::leavesTheBoxToTheButton_data() {
    QTest::addColumn<bool>("ok");
    QTest::newRow("OK, no unit") << true;
    QTest::newRow("threshold, other value") << false;
}

// A tick that read inside the button's box would hold the button's last word back for as long as it waits.
void TestCalibTuningTimer::leavesTheBoxToTheButton() {
    QFETCH(bool, ok);
    Open at;
    at.threshold.type("255");
    if (!ok)
        at.port.answer("# 0138", "# 02B800\r\n");
    FakeLoop::Tick closed = 0;
    at.console.whileBoxIsShown([&] {
        const int read = at.port.readCount();
        at.tuning.Timer1_Timer();
        QCOMPARE(at.port.readCount(), read);
        closed = at.loop.ticks();
    });
    if (ok)
        at.tuning.CommandOK_Click();
    else
        at.tuning.CmdSetRssiThr_Click();
    QCOMPARE(at.loop.ticks(), closed);
    // The next one reads again.
    at.journal.take();
    at.port.receive(kTickRecord);
    QCOMPARE(at.tick(), kRecordShown);
}

void TestCalibTuningTimer::closesAtTheNextTick_data() {
    QTest::addColumn<int>("rfType");
    QTest::addColumn<bool>("ok");
    QTest::newRow("RM5, OK") << 0 << true;
    QTest::newRow("RM5, cancel") << 0 << false;
    QTest::newRow("Kirk, OK") << 1 << true;
    QTest::newRow("Kirk, cancel") << 1 << false;
}

void TestCalibTuningTimer::closesAtTheNextTick() {
    QFETCH(int, rfType);
    QFETCH(bool, ok);
    Open at(rfType);
    at.port.answer("# 0102", "# 02821F\r\n");
    if (ok)
        at.tuning.CommandOK_Click();
    else
        at.tuning.CommandCancel_Click();
    QVERIFY(!at.journal.take().contains("unload"));
    const int read = at.port.readCount();
    at.port.receive(kTickRecord);
    QCOMPARE(at.tick(), QStringList("unload"));
    QCOMPARE(at.port.readCount(), read);
    QCOMPARE(at.result, ok ? CalResult::confirmed : CalResult::cancelled);
}

// OK waits no longer, and the next tick closes the dialog.
void TestCalibTuningTimer::cancelDuringTheCheck() {
    Open at(0);
    at.loop.at(100, [&] { at.tuning.CommandCancel_Click(); });
    at.tuning.CommandOK_Click();
    QCOMPARE(at.loop.ticks(), 100);
    QCOMPARE(at.tick().last(), "unload");
    QCOMPARE(at.result, CalResult::cancelled);
}

void TestCalibTuningTimer::closingEndsTheRead_data() {
    QTest::addColumn<bool>("ok");
    QTest::newRow("OK") << true;
    QTest::newRow("cancel") << false;
}

void TestCalibTuningTimer::closingEndsTheRead() {
    QFETCH(bool, ok);
    Open at;
    at.port.answer("# 0102", "# 02821F\r\n");
    at.loop.at(100, [&] { ok ? at.tuning.CommandOK_Click() : at.tuning.CommandCancel_Click(); });
    at.port.receiveAt(900, kTickRecord);
    const QStringList happened = at.tick();
    QCOMPARE(happened.last(), "unload");
    QVERIFY(!happened.contains(kNoUnitBox));
    QCOMPARE(at.loop.ticks(), 100);
    QCOMPARE(at.result, ok ? CalResult::confirmed : CalResult::cancelled);
}

// Whatever the unit streams, the operator gets out.
void TestCalibTuningTimer::closesInAnyStream_data() {
    QTest::addColumn<QByteArray>("stream");
    QTest::newRow("records of other types") << QByteArray("! 0305000000\r\n");
    QTest::newRow("a record without an end") << QByteArray("! 0307 0A00C8 ");
    QTest::newRow("NUL bytes") << QByteArray(1, '\0');
    QTest::newRow("line ends") << QByteArray("\r\n");
}

void TestCalibTuningTimer::closesInAnyStream() {
    QFETCH(QByteArray, stream);
    Open at;
    at.port.flood(stream.toStdString(), 2);
    at.loop.at(1000, [&] { at.tuning.CommandCancel_Click(); });
    QCOMPARE(at.tick().last(), "unload");
    QVERIFY(at.loop.ticks() <= 2000);
    QVERIFY(!at.port.floodOutlasted());
    QCOMPARE(at.result, CalResult::cancelled);
}

void TestCalibTuningTimer::endOfTheTickCount() {
    // A fault in one tick must not leave the dialog without a timer: the next one still closes it.
    Open at(1, std::numeric_limits<std::int32_t>::max() - 5000);
    QVERIFY_EXCEPTION_THROWN(at.tuning.Timer1_Timer(), RuntimeFault);
    at.tuning.CommandCancel_Click();
    QCOMPARE(at.tick(), QStringList("unload"));
}

QUORVEX_TEST(TestCalibTuningTimer, quorvex::NoApplication)
#include "test_calib_tuning_timer.moc"
