#include <QRegularExpression>
#include <QTest>
#include <limits>
#include <utility>

#include "link/runtime_fault.h"
#include "tests/calibration/run_bench.h"
#include "tests/support/fault_of.h"
#include "tests/support/registry.h"

using namespace quorvex;

/// Runs with units that do not answer, numbers that do not fit and faults on the way.
class TestCalibRunFailures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void silentThreshold_data();
    void silentThreshold();
    void silentReadBack_data();
    void silentReadBack();
    void nobodyThere_data();
    void nobodyThere();
    void cablePulled_data();
    void cablePulled();
    void overflow_data();
    void overflow();
    void faultInTheDialog_data();
    void faultInTheDialog();
    void faultBeforeTheDialog();
    void typeChangesOnTheWay_data();
    void typeChangesOnTheWay();
    void anotherRunInside();
    void anotherRunInsideTheReadBack();
    void programEnds_data();
    void programEnds();
    void programEndsAtRest();
};

void TestCalibRunFailures::silentThreshold_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QStringList>("begins");
    QTest::addColumn<int>("waits");
    QTest::newRow("Beltpack") << "Beltpack"
                              << "# 0138" << QStringList{"> # 0138", "> ! 0309E803"} << 2000;
    QTest::newRow("module A") << "A"
                              << "# 010B" << QStringList{"> ! 0308E803", "> # 010B"} << 12'000;
    QTest::newRow("module B") << "B"
                              << "# 010B" << QStringList{"> ! 0308E803", "> # 010B"} << 12'000;
}

void TestCalibRunFailures::silentThreshold() {
    QFETCH(QString, target);
    QFETCH(QString, read);
    QFETCH(QStringList, begins);
    QFETCH(int, waits);
    RunBench at(1);
    at.connect();
    at.port.answer(read.toStdString(), "");
    int shownAt = -1;
    at.whileShown = [&] { shownAt = at.loop.ticks(); };
    at.run(target);
    // The dialog opens all the same, only without its threshold frame, and in calibration mode.
    QCOMPARE(at.journal.entries().mid(1, 4), begins + QStringList({"timer started", "dialog shown"}));
    QCOMPARE(shownAt, waits);
    QVERIFY(!at.journal.entries().contains("threshold frame shown"));
}

void TestCalibRunFailures::silentReadBack_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("field");
    const auto row = [](const char* target, int type, const char* line, const char* field) {
        QTest::addRow("%s, type %d, %s", target, type, line) << target << type << line << field;
    };
    for (const int type : {0, 1}) {
        row("Beltpack", type, "# 013D", "TextFMDev");
        row("Beltpack", type, "# 013c", "TextFreqAccr");
        row("A", type, "# 0101", "TextFmDevA");
        row("A", type, "# 0105", "TextFreqAdjA");
        row("B", type, "# 0102", "TextFmDevB");
        row("B", type, "# 0106", "TextFreqAdjB");
    }
    row("Beltpack", 1, "# 0139", "TextFreqAccrRx");
    row("Beltpack", 1, "# 013a", "TextFreqAccrTx");
    row("Beltpack", 1, "# 0138", "TextRssiThr");
    row("A", 1, "# 0107", "TextFreqAdjRxA");
    row("A", 1, "# 0109", "TextFreqAdjTxA");
    row("B", 1, "# 0108", "TextFreqAdjRxB");
    row("B", 1, "# 010a", "TextFreqAdjTxB");
}

void TestCalibRunFailures::silentReadBack() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QString, line);
    QFETCH(QString, field);
    RunBench whole(type);
    whole.connect();
    whole.endWith(CalResult::confirmed);
    whole.run(target);

    RunBench at(type);
    at.connect();
    at.whileShown = [&] {
        at.setResult(CalResult::confirmed);
        at.port.answer(line.toStdString(), "");  // it answered before the dialog
    };
    at.run(target);
    QStringList happens = whole.journal.take();
    const qsizetype set = happens.lastIndexOf(QRegularExpression("^" + field + " = .*"));
    QVERIFY(set > 0);
    happens.removeAt(set);
    QCOMPARE(at.journal.entries(), happens);
}

void TestCalibRunFailures::nobodyThere_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char* target, int type, const QStringList& lines) {
        QTest::addRow("%s, type %d", target, type) << target << type << lines;
    };
    row("Beltpack", 0, {"# 013D", "# 013c"});
    row("Beltpack", 1,
        {"# 0138", "! 0309E803", "! 03090000", "# 013D", "# 013c", "# 0139", "# 013a", "# 0138"});
    row("A", 0, {"# 0101", "# 0105"});
    row("A", 1, {"! 0308E803", "# 010B", "! 03080000", "# 0101", "# 0105", "# 0107", "# 0109"});
    row("B", 0, {"# 0102", "# 0106"});
    row("B", 1, {"! 0308E803", "# 010B", "! 03080000", "# 0102", "# 0106", "# 0108", "# 010a"});
}

void TestCalibRunFailures::nobodyThere() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QStringList, lines);
    RunBench at(type);
    at.endWith(CalResult::cancelled);
    at.run(target);
    QCOMPARE(at.port.sentLines(), lines);
    QCOMPARE(at.journal.entriesOf("Text"), QStringList());
    QCOMPARE(at.journal.entriesOf("box "), QStringList());
}

void TestCalibRunFailures::cablePulled_data() {
    QTest::addColumn<QString>("target");
    for (const char* target : {"Beltpack", "A", "B"})
        QTest::newRow(target) << target;
}

void TestCalibRunFailures::cablePulled() {
    QFETCH(QString, target);
    RunBench at(1);
    at.connect();
    at.whileShown = [&] {
        at.port.unplug();
        at.setResult(CalResult::cancelled);
    };
    at.run(target);
    QCOMPARE(at.journal.entriesOf("status ").size(), 1);
    QCOMPARE(at.journal.entriesOf("Text"), QStringList());
    QCOMPARE(at.loop.ticks(), 0);
}

void TestCalibRunFailures::overflow_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("fieldOf");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    for (const char* target : {"Beltpack", "A", "B"}) {
        for (int field = 0; field < 4; ++field) {
            for (const char* text : {"32768", "-32769", "32767.5", "99999999999999999999"})
                QTest::addRow("%s, field %d, %s", target, field, text) << target << target << field << text;
        }
    }
    // The other module's FM deviation goes into the dialog as well.
    QTest::newRow("other module of A") << "A"
                                       << "B" << 0 << "40000";
    QTest::newRow("other module of B") << "B"
                                       << "A" << 0 << "-40000";
}

void TestCalibRunFailures::overflow() {
    QFETCH(QString, target);
    QFETCH(QString, fieldOf);
    QFETCH(int, field);
    QFETCH(QString, text);
    for (const int type : {0, 1}) {
        RunBench at(type);
        RunBench::Set& set = at.set(fieldOf);
        FakeField* const fields[] = {&set.fm, &set.freq, &set.tx, &set.rx};
        fields[field]->type(text.toStdString());
        QCOMPARE(faultOf([&] { at.run(target); }), 6);
        QCOMPARE(at.port.sentLines(), QStringList());
        QCOMPARE(at.journal.entries().filter("dialog shown"), QStringList());
    }
}

void TestCalibRunFailures::faultInTheDialog_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("Kirk Beltpack") << "Beltpack" << 1 << QStringList{"# 0138", "! 0309E803", "! 03090000"};
    QTest::newRow("Kirk module A") << "A" << 1 << QStringList{"! 0308E803", "# 010B", "! 03080000"};
    QTest::newRow("Kirk module B") << "B" << 1 << QStringList{"! 0308E803", "# 010B", "! 03080000"};
    QTest::newRow("RM5 Beltpack") << "Beltpack" << 0 << QStringList{};
    QTest::newRow("RM5 module A") << "A" << 0 << QStringList{};
}

void TestCalibRunFailures::faultInTheDialog() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QStringList, lines);
    RunBench at(type);
    at.connect();
    at.whileShown = [] { throw RuntimeFault::overflow(); };
    // The fault goes on to the one who reports it, but the unit does not stay in calibration mode.
    QCOMPARE(faultOf([&] { at.run(target); }), 6);
    QCOMPARE(at.port.sentLines(), lines);
    QCOMPARE(at.journal.entriesOf("status "), QStringList());
}

void TestCalibRunFailures::faultBeforeTheDialog() {
    // The tick count ends while the antenna's threshold is awaited, in calibration mode already.
    RunBench at(1, std::numeric_limits<std::int32_t>::max() - 5000);
    QCOMPARE(faultOf([&] { at.run("A"); }), 6);
    QCOMPARE(at.port.sentLines(), QStringList({"! 0308E803", "# 010B", "! 03080000"}));
}

void TestCalibRunFailures::typeChangesOnTheWay_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("during");
    QTest::newRow("Beltpack") << "Beltpack"
                              << "# 0138";
    QTest::newRow("module A") << "A"
                              << "# 010B";
    QTest::newRow("module B") << "B"
                              << "# 010B";
}

void TestCalibRunFailures::typeChangesOnTheWay() {
    // While the threshold is awaited the window is alive: a read started meanwhile finds another module.
    // A unit that was put into calibration mode must be taken out of it all the same.
    QFETCH(QString, target);
    QFETCH(QString, during);
    RunBench at(1);
    at.connect();
    at.port.onLine([&](const std::string& line) {
        if (shown(line) == during)
            at.module.hold(0);
    });
    at.endWith(CalResult::confirmed);
    at.run(target);
    const QStringList lines = at.port.sentLines();
    QCOMPARE(lines.filter(QRegularExpression("^! 030[89]0000$")).size(), lines.filter("E803").size());
    // An antenna is in calibration mode by then; a Beltpack that is none of a Kirk's is not put there any
    // more.
    QCOMPARE(lines.filter("E803").size(), target == "Beltpack" ? 0 : 1);
}

void TestCalibRunFailures::anotherRunInside() {
    // A second press while the threshold is awaited: that run ends well, the outer one does not.
    RunBench at(1);
    at.connect();
    bool inside = false;
    at.port.onLine([&](const std::string& line) {
        if (line != "# 0138" || std::exchange(inside, true))
            return;
        at.endWith(CalResult::confirmed);
        at.run("Beltpack");
        at.whileShown = nullptr;
    });
    at.run("Beltpack");
    QCOMPARE(at.journal.entriesOf("status "),
             QStringList({"status black: Beltpack Calibrated successfully.",
                          "status black: Error occured during Beltpack Calibration."}));
    QVERIFY(at.journal.entries().last().startsWith("status "));  // nothing is read back after that
}

// Begun in there it would start from values that are no longer the unit's.
void TestCalibRunFailures::anotherRunInsideTheReadBack() {
    RunBench at;
    at.connect();
    at.endWith(CalResult::confirmed);
    at.port.onLine([&](const std::string& line) {
        if (line == "# 013D")
            at.run("A");
    });
    at.run("Beltpack");
    const QStringList entries = at.journal.entries();
    QCOMPARE(entries.count("dialog shown"), 2);
    QVERIFY(entries.indexOf("> # 013c") < entries.lastIndexOf("dialog shown"));
    QCOMPARE(at.journal.entriesOf("status "),
             QStringList({"status black: Beltpack Calibrated successfully.",
                          "status black: Active Antenna calibrated successfully."}));
}

void TestCalibRunFailures::programEnds_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("leave");
    QTest::newRow("Kirk Beltpack") << "Beltpack" << 1 << "! 03090000";
    QTest::newRow("Kirk module A") << "A" << 1 << "! 03080000";
    QTest::newRow("Kirk module B") << "B" << 1 << "! 03080000";
    QTest::newRow("RM5 Beltpack") << "Beltpack" << 0 << QString();
    QTest::newRow("RM5 module A") << "A" << 0 << QString();
}

void TestCalibRunFailures::programEnds() {
    QFETCH(QString, target);
    QFETCH(int, type);
    QFETCH(QString, leave);
    RunBench at(type);
    at.connect();
    QStringList lines;
    at.whileShown = [&] {
        const qsizetype before = at.port.sentLines().size();
        at.link.closePort();
        lines = at.port.sentLines().mid(before);
    };
    at.run(target);
    QCOMPARE(lines, leave.isEmpty() ? QStringList() : QStringList(leave));
    QCOMPARE(at.port.sentLines().filter(QRegularExpression("^! 030[89]0000$")), lines);  // told once
}

void TestCalibRunFailures::programEndsAtRest() {
    RunBench at(1);
    at.connect();
    at.endWith(CalResult::confirmed);
    at.run("A");
    const QStringList lines = at.port.sentLines();
    at.link.closePort();
    QCOMPARE(at.port.sentLines(), lines);
}

QUORVEX_TEST(TestCalibRunFailures, quorvex::NoApplication)
#include "test_calib_run_failures.moc"
