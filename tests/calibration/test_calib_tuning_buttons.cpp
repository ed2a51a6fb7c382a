#include <QTest>

#include "tests/calibration/tuning_bench.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr const char* kReply = "# 02821F\r\n";
constexpr const char* kRecord = "! 0407D7FF51\r\n";
const QStringList kRefused{"hourglass up", "> # 0102", "hourglass down", kNoUnitBox};
const QString kUpdated = "status black: Beltpack's RSSI Threshold updated successfully.";
const QStringList kNotUpdated{"beep", "box critical: Value could not read back from Beltpack! []",
                              "status black: Beltpack's RSSI Threshold could not be updated."};

}  // namespace

/// OK, Cancel and the RSSI threshold.
class TestCalibTuningButtons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void confirms_data();
    void confirms();
    void whole();
    void checks_data();
    void checks();
    void checkWaits_data();
    void checkWaits();
    void mayBeTriedAgain();
    void cancels();
    void cancelAfterFailedOk();
    void cancelAfterOk();
    void cancelDuringFailingOk();
    void slidersMoveDuringTheCheck();
    void threshold_data();
    void threshold();
    void thresholdTold_data();
    void thresholdTold();
    void thresholdOutOfRange_data();
    void thresholdOutOfRange();
    void thresholdKeys_data();
    void thresholdKeys();
};

void TestCalibTuningButtons::confirms_data() {
    QTest::addColumn<int>("rfType");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QList<int>>("values");  // FM, frequency
    QTest::addColumn<QStringList>("lines");
    const auto row = [](int rfType, const char* caption, const QList<int>& values, const QStringList& lines) {
        QTest::addRow("type %d, %d, %d, %s", rfType, values[0], values[1], caption)
            << rfType << caption << values << lines;
    };
    row(0, kBeltpackCaption, {33, -7}, {"# 027d21", "# 027c00"});
    row(0, kBeltpackCaption, {0, 0}, {"# 027d00", "# 027c07"});
    row(0, kBeltpackCaption, {63, 1}, {"# 027d3F", "# 027c0E"});
    row(0, kBeltpackCaption, {10, 7}, {"# 027d0A", "# 027c08"});
    row(1, kBeltpackCaption, {33, 5}, {"# 027d21", "# 027c05"});
    row(5, kBeltpackCaption, {33, 5}, {"# 027d21", "# 027c05"});
    row(0, kModuleACaption, {33, 1}, {"# 024121", "# 02450E"});
    row(1, kModuleACaption, {33, 7}, {"# 024121", "# 024507"});
    row(0, kModuleBCaption, {33, -1}, {"# 024221", "# 024606"});
    row(1, kModuleBCaption, {33, 0}, {"# 024221", "# 024600"});
    // What the sliders hold counts, not what was given.
    row(1, kBeltpackCaption, {64, 9}, {"# 027d3F", "# 027c07"});
    row(1, "Calibrate Beltpacks", {33, 5}, {});
}

void TestCalibTuningButtons::confirms() {
    QFETCH(int, rfType);
    QFETCH(QString, caption);
    QFETCH(QList<int>, values);
    QFETCH(QStringList, lines);
    TuningBench at(rfType);
    at.port.answer("# 0102", kReply);
    at.open(caption.toStdString(), {values[0], values[1], 2, 3, 40});
    at.tuning.CommandOK_Click();
    QCOMPARE(at.port.sentLines(), QStringList("# 0102") + lines);
    QCOMPARE(at.result, CalResult::confirmed);
}

void TestCalibTuningButtons::whole() {
    TuningBench at(1);
    at.port.answer("# 0102", kReply);
    at.open(kBeltpackCaption, {33, 5, 0, 0, 0});
    at.tuning.CommandOK_Click();
    QCOMPARE(at.journal.entries(),
             QStringList({"hourglass up", "> # 0102", "> # 027d21", "> # 027c05", "hourglass down"}));
}

void TestCalibTuningButtons::checks_data() {
    QTest::addColumn<QByteArray>("comes");
    QTest::addColumn<bool>("accepted");
    const QByteArray record(kRecord), reply(kReply);
    QTest::newRow("reply") << reply << true;
    QTest::newRow("reply to another read") << QByteArray("# 028A00\r\n") << true;
    QTest::newRow("a record first") << record + reply << true;
    QTest::newRow("two records first") << record + record + reply << true;
    QTest::newRow("three records first") << record + record + record + reply << false;
    QTest::newRow("two refusals first") << QByteArray("# 01BF00\r\n# 01BF00\r\n") + reply << true;
    QTest::newRow("rest of a record first") << QByteArray("D7FF51\r\n") + reply << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("a record alone") << record << false;
    QTest::newRow("cut short") << QByteArray("# 02821") << false;
    QTest::newRow("another length") << QByteArray("# 0382AA\r\n") << false;
    QTest::newRow("a number out of reach") << QByteArray("# 02911F\r\n") << false;
    QTest::newRow("another family") << QByteArray("! 02821F\r\n") << false;
    QTest::newRow("the command's echo") << QByteArray("# 0102\r\n") << false;
}

void TestCalibTuningButtons::checks() {
    QFETCH(QByteArray, comes);
    QFETCH(bool, accepted);
    TuningBench at(1);
    at.port.answer("# 0102", bytesOf(comes));
    at.open(kBeltpackCaption);
    at.tuning.CommandOK_Click();
    if (accepted)
        QCOMPARE(at.port.sentLines(), QStringList({"# 0102", "# 027d00", "# 027c00"}));
    else
        QCOMPARE(at.journal.take(), kRefused);
    QCOMPARE(at.result, accepted ? CalResult::confirmed : CalResult::none);
    // A refused dialog stays open: a tick reads on, and closes nothing.
    at.journal.take();
    at.port.receive(kRecord);
    at.tuning.Timer1_Timer();
    QCOMPARE(at.journal.take().contains("unload"), accepted);
}

void TestCalibTuningButtons::checkWaits_data() {
    QTest::addColumn<QList<int>>("ticks");  // when the reply, or a record before it, comes
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("ends");
    QTest::newRow("silence") << QList<int>{} << false << 2000;
    QTest::newRow("just in time") << QList<int>{1999} << true << 1999;
    QTest::newRow("too late") << QList<int>{2001} << false << 2000;
    QTest::newRow("each just in time") << QList<int>{1999, 3998, 5997} << true << 5997;
    QTest::newRow("third too late") << QList<int>{1999, 3998, 5999} << false << 5998;
}

void TestCalibTuningButtons::checkWaits() {
    QFETCH(QList<int>, ticks);
    QFETCH(bool, accepted);
    QFETCH(int, ends);
    TuningBench at(1);
    at.open(kBeltpackCaption);
    for (qsizetype i = 0; i < ticks.size(); ++i)
        at.port.receiveAt(ticks[i], i + 1 == ticks.size() ? kReply : kRecord);
    at.tuning.CommandOK_Click();
    QCOMPARE(at.result, accepted ? CalResult::confirmed : CalResult::none);
    QCOMPARE(at.loop.ticks(), ends);
}

void TestCalibTuningButtons::mayBeTriedAgain() {
    TuningBench at(0);
    at.open(kBeltpackCaption);
    at.port.answer("# 0102", {Reply{""}, Reply{kReply}});
    at.tuning.CommandOK_Click();
    QCOMPARE(at.journal.take(), kRefused);
    at.tuning.CommandOK_Click();
    QCOMPARE(at.journal.take(),
             QStringList({"hourglass up", "> # 0102", "> # 027d00", "> # 027c07", "hourglass down"}));
    QCOMPARE(at.result, CalResult::confirmed);
}

void TestCalibTuningButtons::cancels() {
    TuningBench at(1);
    at.open(kBeltpackCaption, {33, 4, 2, 6, 0});
    at.fmDev.drag(20);
    at.journal.take();
    at.tuning.CommandCancel_Click();
    QCOMPARE(at.journal.entries(), QStringList());
    QCOMPARE(at.result, CalResult::cancelled);
    QCOMPARE(at.fmDev.value(), std::int16_t{20});
}

void TestCalibTuningButtons::cancelAfterFailedOk() {
    TuningBench at(0);
    at.open(kBeltpackCaption);
    at.tuning.CommandOK_Click();
    QCOMPARE(at.result, CalResult::none);
    at.tuning.CommandCancel_Click();
    QCOMPARE(at.result, CalResult::cancelled);
}

// The dialog is still there until the next tick; the last word counts.
void TestCalibTuningButtons::cancelAfterOk() {
    TuningBench at(0);
    at.open(kBeltpackCaption);
    at.port.answer("# 0102", kReply);
    at.tuning.CommandOK_Click();
    QCOMPARE(at.result, CalResult::confirmed);
    at.tuning.CommandCancel_Click();
    QCOMPARE(at.result, CalResult::cancelled);
}

void TestCalibTuningButtons::cancelDuringFailingOk() {
    TuningBench at(0);
    at.open(kBeltpackCaption);
    at.loop.at(500, [&] { at.tuning.CommandCancel_Click(); });
    at.tuning.CommandOK_Click();
    // Nobody waits any more for what the unit says, and nobody is told.
    QCOMPARE(at.journal.entries(), QStringList({"hourglass up", "> # 0102", "hourglass down"}));
    QCOMPARE(at.loop.ticks(), 500);
    QCOMPARE(at.result, CalResult::cancelled);
}

void TestCalibTuningButtons::slidersMoveDuringTheCheck() {
    // What is stored is what stands when the unit has answered.
    TuningBench at(1);
    at.open(kBeltpackCaption, {33, 4, 4, 4, 0});
    at.loop.at(500, [&] {
        at.fmDev.drag(20);
        at.mid.drag(6);
    });
    at.port.receiveAt(1000, kReply);
    at.tuning.CommandOK_Click();
    QCOMPARE(at.port.sentLines(),
             QStringList({"# 0102", "! 020714", "# 027906", "# 027a06", "# 027c06", "# 027d14", "# 027c06"}));
}

void TestCalibTuningButtons::threshold_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<bool>("updated");
    const auto row = [](const char* caption, const char* text, const char* reply, const QStringList& lines,
                        bool updated) {
        QTest::addRow("'%s' answered by '%s', %s", text, reply, caption)
            << caption << text << reply << lines << updated;
    };
    const char* bp = kBeltpackCaption;
    row(bp, "255", "# 02B8FF", {"# 0278FF", "# 0138"}, true);
    row(bp, "255", "# 02B8ff", {"# 0278FF", "# 0138"}, true);
    row(bp, "72", "# 02B848", {"# 027848", "# 0138"}, true);
    row(bp, "5", "# 02B805", {"# 027805", "# 0138"}, true);
    row(bp, "72", "# 02B849", {"# 027848", "# 0138"}, false);
    row(bp, "72", "", {"# 027848", "# 0138"}, false);
    row(bp, "72", "# 02B84", {"# 027848", "# 0138"}, false);
    // No reply reads as 0.
    row(bp, "0", "", {"# 027800", "# 0138"}, true);
    row(bp, "", "", {"# 027800", "# 0138"}, true);
    row(bp, "0", "# 02B800", {"# 027800", "# 0138"}, true);
    row(bp, "0", "# 02B801", {"# 027800", "# 0138"}, false);
    row(bp, "72.5", "# 02B848", {"# 027848", "# 0138"}, true);
    row(bp, "73.5", "# 02B84A", {"# 02784A", "# 0138"}, true);
    row(bp, " 7 2 ", "# 02B848", {"# 027848", "# 0138"}, true);
    row(bp, "72/5", "# 02B848", {"# 027848", "# 0138"}, true);
    // One byte comes back: a number that needs more never compares equal.
    row(bp, "256", "# 02B800", {"# 0278100", "# 0138"}, false);
    row(bp, "-1", "# 02B8FF", {"# 0278FFFF", "# 0138"}, false);
    row(bp, "-32768", "# 02B800", {"# 02788000", "# 0138"}, false);
    row(bp, "32767", "# 02B8FF", {"# 02787FFF", "# 0138"}, false);
    // Only the place counts, not whose reply it is.
    row(bp, "215", "! 0407D7", {"# 0278D7", "# 0138"}, true);
    for (const char* caption : {kModuleACaption, kModuleBCaption, "Calibrate"}) {
        row(caption, "72", "# 028B48", {"# 024B48", "# 010B"}, true);
        row(caption, "72", "# 028B00", {"# 024B48", "# 010B"}, false);
        row(caption, "0", "", {"# 024B00", "# 010B"}, true);
    }
}

void TestCalibTuningButtons::threshold() {
    QFETCH(QString, caption);
    QFETCH(QString, text);
    QFETCH(QString, reply);
    QFETCH(QStringList, lines);
    QFETCH(bool, updated);
    TuningBench at(1);
    at.open(caption.toStdString());
    at.threshold.type(text.toStdString());
    at.port.answer(lines.last().toStdString(), reply.isEmpty() ? "" : reply.toStdString() + "\r\n");
    at.tuning.CmdSetRssiThr_Click();
    QCOMPARE(at.port.sentLines(), lines);
    QCOMPARE(at.journal.entriesOf("status ").contains(kUpdated), updated);
    QCOMPARE(at.journal.entriesOf("box ").isEmpty(), updated);
    QCOMPARE(shown(at.threshold.text()), text);
    QCOMPARE(at.result, CalResult::none);
}

void TestCalibTuningButtons::thresholdTold_data() {
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("read back") << "# 02B848\r\n" << QStringList(kUpdated);
    QTest::newRow("another value") << "# 02B849\r\n" << kNotUpdated;
    QTest::newRow("silence") << "" << kNotUpdated;
}

void TestCalibTuningButtons::thresholdTold() {
    QFETCH(QString, reply);
    QFETCH(QStringList, told);
    for (const auto& [caption, write, read] : {std::tuple{kBeltpackCaption, "> # 027848", "> # 0138"},
                                               std::tuple{kModuleBCaption, "> # 024B48", "> # 010B"}}) {
        TuningBench at(1);
        at.open(caption);
        at.threshold.type("72");
        at.port.answer("# 0138", reply.toStdString());
        at.port.answer("# 010B", reply.toStdString());
        at.tuning.CmdSetRssiThr_Click();
        QCOMPARE(at.journal.entries(), QStringList({"hourglass up", write, read, "hourglass down"}) + told);
        QCOMPARE(at.loop.ticks(), reply.isEmpty() ? 2000 : 0);
    }
}

void TestCalibTuningButtons::thresholdOutOfRange_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"32768", "-32769", "32767.5", "9999999999"})
        QTest::addRow("%s", text) << text;
}

void TestCalibTuningButtons::thresholdOutOfRange() {
    QFETCH(QString, text);
    TuningBench at(1);
    at.open(kBeltpackCaption);
    at.threshold.type(text.toStdString());
    at.tuning.CmdSetRssiThr_Click();
    QCOMPARE(at.journal.entries(),
             QStringList("box critical: The RSSI threshold must be a number from -32768 to 32767. []"));
    QCOMPARE(shown(at.threshold.text()), text);
}

void TestCalibTuningButtons::thresholdKeys_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("runs");
    QTest::newRow("Enter") << 13 << true;
    QTest::newRow("line feed") << 10 << false;
    QTest::newRow("swallowed") << 0 << false;
    QTest::newRow("backspace") << 8 << false;
    QTest::newRow("blank") << 32 << false;
    QTest::newRow("1") << int{'1'} << false;
}

void TestCalibTuningButtons::thresholdKeys() {
    QFETCH(int, key);
    QFETCH(bool, runs);
    TuningBench at(1);
    at.open(kBeltpackCaption);
    at.threshold.type("72");
    at.tuning.TextRssiThr_KeyPress(static_cast<char16_t>(key));
    QCOMPARE(at.port.sentLines(), runs ? QStringList({"# 027848", "# 0138"}) : QStringList());
}

QUORVEX_TEST(TestCalibTuningButtons, quorvex::NoApplication)
#include "test_calib_tuning_buttons.moc"
