#include <QTest>
#include <algorithm>
#include <deque>

#include "tests/calibration/run_bench.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

/// The entries up to the one given, without it.
QStringList upTo(const QStringList& entries, const QString& entry) {
    return entries.mid(0, entries.indexOf(entry));
}

QStringList after(const QStringList& entries, const QString& entry) {
    return entries.mid(entries.indexOf(entry) + 1);
}

const QStringList kTargets{"Beltpack", "A", "B"};

}  // namespace

/// The calibration runs: what is sent and shown, in order.
class TestCalibRun : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whole_data();
    void whole();
    void opens_data();
    void opens();
    void outcomes_data();
    void outcomes();
    void showsFrequency_data();
    void showsFrequency();
    void otherTypes_data();
    void otherTypes();
    void drains_data();
    void drains();
    void modulesDoNotDrain_data();
    void modulesDoNotDrain();
    void takesTheRightLine();
    void runsAgain();
    void needsRoom_data();
    void needsRoom();
};

void TestCalibRun::whole_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("happens");
    const QStringList shown{"timer started", "dialog shown", "dialog closed", "dialog gone"};

    QTest::newRow("RM5 Beltpack") << "Beltpack" << 0
                                  << QStringList{"dialog filled: 33 4 2 6 0 Calibrate Beltpack"} + shown +
                                         QStringList{"status black: Beltpack Calibrated successfully.",
                                                     "> # 013D", "TextFMDev = 33", "> # 013c",
                                                     "TextFreqAccr = 5"};
    QTest::newRow("Kirk Beltpack")
        << "Beltpack" << 1
        << QStringList{"dialog filled: 33 4 2 6 0 Calibrate Beltpack", "> # 0138", "threshold frame shown",
                       "dialog threshold = 80", "> ! 0309E803"} +
               shown + QStringList{"> ! 03090000", "status black: Beltpack Calibrated successfully.",
                                   "hourglass up", "hourglass down",
                                   "> # 013D",     "TextFMDev = 33",
                                   "> # 013c",     "TextFreqAccr = 10",
                                   "> # 0139",     "TextFreqAccrRx = 7",
                                   "> # 013a",     "TextFreqAccrTx = 200",
                                   "> # 0138",     "TextRssiThr = 80"};
    QTest::newRow("RM5 module A")
        << "A" << 0
        << QStringList{"dialog filled: 34 5 3 7 35 Calibrate Active Antenna - Module A"} + shown +
               QStringList{"status black: Active Antenna calibrated successfully.", "> # 0101",
                           "TextFmDevA = 30", "> # 0105", "TextFreqAdjA = 3"};
    QTest::newRow("Kirk module A")
        << "A" << 1
        << QStringList{"dialog filled: 34 5 3 7 35 Calibrate Active Antenna - Module A", "> ! 0308E803",
                       "> # 010B", "threshold frame shown", "dialog threshold = 81"} +
               shown + QStringList{"> ! 03080000", "status black: Active Antenna calibrated successfully.",
                                   "> # 0101",     "TextFmDevA = 30",
                                   "> # 0105",     "TextFreqAdjA = 12",
                                   "> # 0107",     "TextFreqAdjRxA = 255",
                                   "> # 0109",     "TextFreqAdjTxA = 17"};
    QTest::newRow("RM5 module B")
        << "B" << 0
        << QStringList{"dialog filled: 35 -2 1 0 34 Calibrate Active Antenna - Module B"} + shown +
               QStringList{"status black: Active Antenna FM Deviation calibrated successfully.", "> # 0102",
                           "TextFmDevB = 31", "> # 0106", "TextFreqAdjB = -4"};
    QTest::newRow("Kirk module B")
        << "B" << 1
        << QStringList{"dialog filled: 35 -2 1 0 34 Calibrate Active Antenna - Module B", "> ! 0308E803",
                       "> # 010B", "threshold frame shown", "dialog threshold = 81"} +
               shown +
               QStringList{
                   "> ! 03080000", "status black: Active Antenna FM Deviation calibrated successfully.",
                   "> # 0102",     "TextFmDevB = 31",
                   "> # 0106",     "TextFreqAdjB = 3",
                   "> # 0108",     "TextFreqAdjRxB = 16",
                   "> # 010a",     "TextFreqAdjTxB = 18"};
}

void TestCalibRun::whole() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QStringList, happens);
    RunBench at(type);
    at.connect();
    at.endWith(CalResult::confirmed);
    at.run(target);
    QCOMPARE(at.journal.take(), happens);
}

void TestCalibRun::opens_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("texts");  // FM deviation, frequency, transmit, receive
    QTest::addColumn<QString>("values");
    for (const QString& target : kTargets) {
        const auto row = [&](const char* name, const QStringList& texts, const char* values) {
            QTest::addRow("%s, %s", name, qPrintable(target)) << target << texts << values;
        };
        row("empty", {"", "", "", ""}, "0 0 0 0");
        row("no number", {"abc", "N/A", "-", "."}, "0 0 0 0");
        row("number first", {"12abc", "3 4x", "-5-", "1.4.9"}, "12 34 -5 1");
        row("halves to even", {"2.5", "3.5", "-0.5", "-1.5"}, "2 4 0 -2");
        row("ends of 16 bits", {"32767", "-32768", "32767.4", "-32768.5"}, "32767 -32768 32767 -32768");
    }
}

void TestCalibRun::opens() {
    QFETCH(QString, target);
    QFETCH(QStringList, texts);
    QFETCH(QString, values);
    RunBench at;
    RunBench::Set& fields = at.set(target);
    fields.fm.type(texts[0].toStdString());
    fields.freq.type(texts[1].toStdString());
    fields.tx.type(texts[2].toStdString());
    fields.rx.type(texts[3].toStdString());
    at.run(target);
    const QString filled = at.journal.entries().first();
    QVERIFY2(filled.startsWith("dialog filled: " + values + " "), qPrintable(filled));
}

void TestCalibRun::outcomes_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("text");
    const QStringList texts{"Error occured during Beltpack Calibration.",
                            "Beltpack Calibration Cancelled.",
                            "Beltpack Calibrated successfully.",
                            "Error occured during Active Antenna calibration.",
                            "Active Antenna calibration cancelled.",
                            "Active Antenna calibrated successfully.",
                            "Error occured during Active Antenna FM Deviation calibration.",
                            "Active Antenna FM Deviation calibration Cancelled.",
                            "Active Antenna FM Deviation calibrated successfully."};
    for (int i = 0; i < 9; ++i) {
        for (const int type : {0, 1})
            QTest::addRow("%s, type %d, result %d", qPrintable(kTargets[i / 3]), type, i % 3)
                << kTargets[i / 3] << type << i % 3 << texts[i];
    }
}

void TestCalibRun::outcomes() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(int, result);
    QFETCH(QString, text);
    RunBench at(type);
    at.connect();
    at.endWith(static_cast<CalResult>(result));
    at.run(target);
    QCOMPARE(at.journal.entriesOf("status "), QStringList("status black: " + text));

    QStringList closing = after(at.journal.entries(), "dialog gone");
    const QString leave = target == "Beltpack" ? "> ! 03090000" : "> ! 03080000";
    if (type == 1)
        QCOMPARE(closing.takeFirst(), leave);
    QCOMPARE(closing.takeFirst(), "status black: " + text);
    // After a failure nothing is read back; after a cancel all of it.
    QCOMPARE(closing.filter("> ").isEmpty(), result == 0);
    QCOMPARE(closing.filter(" = ").size(), result == 0 ? 0 : type == 0 ? 2 : target == "Beltpack" ? 5 : 4);
    QCOMPARE(at.journal.entriesOf("box "), QStringList());
}

void TestCalibRun::showsFrequency_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("shows");
    for (const QString& target : kTargets) {
        for (const auto& [digits, rm5, kirk] :
             {std::tuple{"0A", "5", "10"}, std::tuple{"07", "0", "7"}, std::tuple{"00", "-7", "0"},
              std::tuple{"08", "7", "8"}, std::tuple{"0F", "0", "15"}, std::tuple{"0c", "3", "12"}}) {
            QTest::addRow("%s, RM5, %s", qPrintable(target), digits) << target << 0 << digits << rm5;
            QTest::addRow("%s, Kirk, %s", qPrintable(target), digits) << target << 1 << digits << kirk;
            // Neither the one nor the other: shown as it is, but no Kirk either.
            QTest::addRow("%s, type 2, %s", qPrintable(target), digits) << target << 2 << digits << kirk;
        }
    }
}

void TestCalibRun::showsFrequency() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QString, digits);
    QFETCH(QString, shows);
    RunBench at(type);
    at.connect();
    at.port.answer("# 013c", "# 02BC" + digits.toStdString() + "\r\n");
    at.port.answer("# 0105", "# 0285" + digits.toStdString() + "\r\n");
    at.port.answer("# 0106", "# 0286" + digits.toStdString() + "\r\n");
    at.endWith(CalResult::cancelled);
    at.run(target);
    QCOMPARE(shown(at.set(target).freq.text()), shows);
}

void TestCalibRun::otherTypes_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    for (const QString& target : kTargets) {
        for (const int type : {2, 5, -1})
            QTest::addRow("%s, type %d", qPrintable(target), type) << target << type;
    }
}

void TestCalibRun::otherTypes() {
    // Only 1 is the Kirk: any other type has no calibration mode.
    QFETCH(QString, target);
    QFETCH(int, type);
    RunBench at(type);
    at.connect();
    at.endWith(CalResult::confirmed);
    at.run(target);
    const QStringList lines = target == "Beltpack" ? QStringList{"# 013D", "# 013c"}
                              : target == "A"      ? QStringList{"# 0101", "# 0105"}
                                                   : QStringList{"# 0102", "# 0106"};
    QCOMPARE(at.port.sentLines(), lines);
}

void TestCalibRun::drains_data() {
    QTest::addColumn<QList<int>>("records");  // ms after the leave command
    QTest::addColumn<int>("resumes");         // ms after the leave command
    QTest::newRow("silence") << QList<int>{} << 1000;
    QTest::newRow("one record") << QList<int>{0} << 1000;
    QTest::newRow("a record in the last moment") << QList<int>{999} << 1999;
    QTest::newRow("records go on for a while") << QList<int>{0, 500, 1400, 2300, 3200} << 4200;
    QTest::newRow("a record too late") << QList<int>{0, 1200} << 1000;
    QList<int> endless;
    for (int tick = 0; tick < 60'000; tick += 500)
        endless << tick;
    QTest::newRow("records without end") << endless << 15'000;
}

void TestCalibRun::drains() {
    QFETCH(QList<int>, records);
    QFETCH(int, resumes);
    for (const CalResult result : {CalResult::confirmed, CalResult::cancelled}) {
        RunBench at(1);
        at.connect();
        at.endWith(result);
        at.port.onLine([&](const std::string& line) {
            if (line != "! 03090000")
                return;
            for (const int tick : records)
                at.port.receiveAt(at.loop.ticks() + tick, "! 0407D7FF51\r\n");
        });
        at.run("Beltpack");
        const auto sentAt = [&](const char* line) {
            const auto& sent = at.port.sent();
            return std::find_if(sent.begin(), sent.end(), [&](const auto& one) { return one.line == line; })
                ->tick;
        };
        QCOMPARE(sentAt("# 013D") - sentAt("! 03090000"), resumes);
        // Nothing of the records is taken for a value.
        QCOMPARE(shown(at.beltpack.fm.text()), "33");
        QCOMPARE(shown(at.threshold.text()), "80");
    }
}

void TestCalibRun::modulesDoNotDrain_data() {
    QTest::addColumn<QString>("target");
    QTest::newRow("A") << "A";
    QTest::newRow("B") << "B";
}

void TestCalibRun::modulesDoNotDrain() {
    QFETCH(QString, target);
    RunBench at(1);
    at.connect();
    at.endWith(CalResult::confirmed);
    at.run(target);
    QCOMPARE(at.loop.ticks(), 0);
}

void TestCalibRun::takesTheRightLine() {
    // An antenna's last records may still come before its reply; its reads wait for the line that fits.
    RunBench at(1);
    at.connect();
    const std::string record = "! 0407D7FF51\r\n";
    at.port.answer("# 010B", record + "# 0281FF\r\n" + record + "# 028B07\r\n");
    at.port.answer("# 0101", record + record + "# 028142\r\n");
    at.endWith(CalResult::confirmed);
    at.run("A");
    QVERIFY(at.journal.entries().contains("dialog threshold = 7"));
    QCOMPARE(shown(at.moduleA.fm.text()), "66");
}

void TestCalibRun::runsAgain() {
    // A run that failed leaves nothing to the next one.
    RunBench at(1);
    at.connect();
    at.endWith(CalResult::none);
    at.run("A");
    at.journal.take();
    at.endWith(CalResult::confirmed);
    at.run("Beltpack");
    QCOMPARE(at.journal.entriesOf("status "), QStringList("status black: Beltpack Calibrated successfully."));
    at.whileShown = {};
    at.journal.take();
    at.run("Beltpack");
    QCOMPARE(at.journal.entriesOf("status "),
             QStringList("status black: Error occured during Beltpack Calibration."));
    QCOMPARE(upTo(at.journal.entries(), "timer started").first(),
             "dialog filled: 33 10 200 7 0 Calibrate Beltpack");
}

void TestCalibRun::needsRoom_data() {
    QTest::addColumn<int>("others");
    QTest::addColumn<bool>("runs");
    QTest::newRow("for itself, the two of its dialog and one of a button") << 28 << true;
    QTest::newRow("one too many") << 29 << false;
}

void TestCalibRun::needsRoom() {
    QFETCH(int, others);
    QFETCH(bool, runs);
    for (const QString& target : kTargets) {
        RunBench at;
        at.connect();
        at.endWith(CalResult::confirmed);
        std::deque<Operation> under;
        while (static_cast<int>(under.size()) < others)
            under.emplace_back(at.link);
        if (runs)
            at.run(target);
        else
            QVERIFY_THROWS_EXCEPTION(OperationRefused, at.run(target));
        QCOMPARE(at.journal.entries().contains("dialog shown"), runs);
    }
}

QUORVEX_TEST(TestCalibRun, quorvex::NoApplication)
#include "test_calib_run.moc"
