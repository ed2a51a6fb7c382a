#include <QTest>

#include "link/runtime_fault.h"
#include "tests/calibration/tuning_bench.h"
#include "tests/support/fault_of.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

using Values = TuningBench::Values;
using Moves = QList<std::pair<QString, int>>;

}  // namespace

/// Opening and filling the dialog, and what its sliders send.
class TestCalibTuning : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loads_data();
    void loads();
    void refusesStoredType_data();
    void refusesStoredType();
    void fills_data();
    void fills();
    void fillsInOrder();
    void slides_data();
    void slides();
    void unknownCaption_data();
    void unknownCaption();
    void labelComesBeforeTheCommand_data();
    void labelComesBeforeTheCommand();
    void movesMid_data();
    void movesMid();
    void sumsBeyond16Bits_data();
    void sumsBeyond16Bits();
    void closedPort();
};

void TestCalibTuning::loads_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("kirk");
    QTest::newRow("nothing stored") << QString() << false;
    QTest::newRow("RM5") << "0" << false;
    QTest::newRow("Kirk") << "1" << true;
    // Elsewhere only 1 is the Kirk; here every type but 0 has its frame.
    QTest::newRow("5") << "5" << true;
    QTest::newRow("-1") << "-1" << true;
}

void TestCalibTuning::loads() {
    QFETCH(QString, stored);
    QFETCH(bool, kirk);
    Journal journal;
    FakeStore empty(journal);
    if (!stored.isNull())
        empty.put("RfModule", stored.toStdString());
    TuningBench at;
    CalibTuning tuning(at.link, empty, at.window, {at.fmDev, at.freqAccr, at.tx, at.mid, at.rx, at.threshold},
                       at.result);
    tuning.load();
    QCOMPARE(at.journal.entries(),
             QStringList({"threshold frame hidden", kirk ? "Kirk frame shown" : "Kirk frame hidden"}));
    QCOMPARE(at.result, CalResult::none);
    QCOMPARE(journal.entries(), QStringList());
}

void TestCalibTuning::refusesStoredType_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("fault");
    QTest::newRow("text") << "Kirk" << 13;
    QTest::newRow("empty") << "" << 13;
    QTest::newRow("too large") << "40000" << 6;
}

void TestCalibTuning::refusesStoredType() {
    QFETCH(QString, stored);
    QFETCH(int, fault);
    TuningBench at;
    at.store.put("RfModule", stored.toStdString());
    QCOMPARE(faultOf([&] { at.tuning.load(); }), fault);
    QCOMPARE(at.journal.entriesOf("> "), QStringList());
}

void TestCalibTuning::fills_data() {
    QTest::addColumn<int>("rfType");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QList<int>>("values");  // FM, frequency, transmit, receive, other FM
    QTest::addColumn<QList<int>>("held");    // FM, RM5 frequency, transmit, mid, receive
    const QList<int> usual{33, 4, 2, 6, 40};
    for (const char* caption : {kBeltpackCaption, kModuleACaption, kModuleBCaption}) {
        QTest::addRow("RM5, %s", caption) << 0 << caption << usual << QList<int>{33, 4, 2, 4, 6};
        QTest::addRow("Kirk, %s", caption) << 1 << caption << usual << QList<int>{33, 4, 2, 4, 6};
    }
    QTest::newRow("RM5 offset below 0")
        << 0 << kBeltpackCaption << QList<int>{0, -7, 0, 0, 0} << QList<int>{0, -7, 0, 0, 0};
    QTest::newRow("beyond every range")
        << 1 << kBeltpackCaption << QList<int>{64, 8, 8, 255, 0} << QList<int>{63, 7, 7, 7, 7};
    QTest::newRow("below every range")
        << 1 << kModuleBCaption << QList<int>{-1, -8, -1, -32768, -1} << QList<int>{0, -7, 0, 0, 0};
    QTest::newRow("ends of 16 bits") << 1 << kModuleACaption << QList<int>{32767, 32767, 32767, 32767, 32767}
                                     << QList<int>{63, 7, 7, 7, 7};
    QTest::newRow("lower end of 16 bits")
        << 1 << kModuleACaption << QList<int>{-32768, -32768, -32768, -32768, -32768}
        << QList<int>{0, -7, 0, 0, 0};
}

void TestCalibTuning::fills() {
    QFETCH(int, rfType);
    QFETCH(QString, caption);
    QFETCH(QList<int>, values);
    QFETCH(QList<int>, held);
    TuningBench at(rfType);
    at.tuning.load();
    at.fill(caption.toStdString(), {values[0], values[1], values[2], values[3], values[4]});
    QCOMPARE(at.journal.entriesOf("> "), QStringList());
    QCOMPARE(
        (QList<int>{at.fmDev.value(), at.freqAccr.value(), at.tx.value(), at.mid.value(), at.rx.value()}),
        held);
    // The labels show what was given, also where a slider cannot hold it.
    QCOMPARE(
        (QList<int>{at.fmDev.shows(), at.freqAccr.shows(), at.tx.shows(), at.mid.shows(), at.rx.shows()}),
        (QList<int>{values[0], values[1], values[2], values[1], values[3]}));
    QCOMPARE(shown(at.window.caption()), caption);
}

void TestCalibTuning::fillsInOrder() {
    TuningBench at(1);
    at.tuning.load();
    at.journal.take();
    at.fill(kBeltpackCaption, {33, 4, 2, 6, 40});
    // Behind the caption nothing but the labels may follow: from there on a change would be sent.
    const QStringList& entries = at.journal.entries();
    QCOMPARE(entries.mid(entries.indexOf("caption Calibrate Beltpack")),
             QStringList({"caption Calibrate Beltpack", "FmDev shows 33", "FreqAccr shows 4", "Tx shows 2",
                          "Mid shows 4", "Rx shows 6"}));
}

void TestCalibTuning::slides_data() {
    QTest::addColumn<int>("rfType");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("slider");
    QTest::addColumn<int>("otherFm");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("line");
    const auto row = [](int rfType, const char* caption, const char* slider, int otherFm, int value,
                        const char* line) {
        QTest::addRow("%s to %d, type %d, %s, other %d", slider, value, rfType, caption, otherFm)
            << rfType << caption << slider << otherFm << value << line;
    };
    for (const int type : {0, 1}) {
        row(type, kBeltpackCaption, "FmDev", 40, 0, "! 020700");
        row(type, kBeltpackCaption, "FmDev", 40, 33, "! 020721");
        row(type, kBeltpackCaption, "FmDev", 40, 63, "! 02073F");
        // Module A's byte comes first, whichever module is calibrated.
        row(type, kModuleACaption, "FmDev", 40, 33, "! 03062128");
        row(type, kModuleBCaption, "FmDev", 40, 33, "! 03062821");
        row(type, kModuleACaption, "FmDev", 0, 10, "! 03060A00");
    }
    // A number too wide for its place is neither cut nor wrapped.
    row(1, kModuleACaption, "FmDev", 300, 33, "! 03062112C");
    row(1, kModuleBCaption, "FmDev", -5, 33, "! 0306FFFB21");
    for (const auto& [caption, head] :
         {std::pair{kBeltpackCaption, "# 027c"}, std::pair{kModuleACaption, "# 0245"},
          std::pair{kModuleBCaption, "# 0246"}}) {
        const auto line = [head = std::string(head)](const char* digits) { return head + digits; };
        row(0, caption, "FreqAccr", 0, -7, line("00").c_str());
        row(0, caption, "FreqAccr", 0, -1, line("06").c_str());
        row(0, caption, "FreqAccr", 0, 0, line("07").c_str());
        row(0, caption, "FreqAccr", 0, 1, line("0E").c_str());
        row(0, caption, "FreqAccr", 0, 7, line("08").c_str());
        row(1, caption, "FreqAccr", 0, 7, line("07").c_str());
        row(1, caption, "FreqAccr", 0, -7, line("FFF9").c_str());
        row(5, caption, "FreqAccr", 0, 1, line("01").c_str());
        row(-1, caption, "FreqAccr", 0, 1, line("01").c_str());
    }
    row(1, kBeltpackCaption, "Tx", 0, 7, "# 027a07");
    row(1, kModuleACaption, "Tx", 0, 0, "# 024900");
    row(1, kModuleBCaption, "Tx", 0, 5, "# 024a05");
    row(1, kBeltpackCaption, "Rx", 0, 7, "# 027907");
    row(1, kModuleACaption, "Rx", 0, 0, "# 024700");
    row(1, kModuleBCaption, "Rx", 0, 5, "# 024805");
}

void TestCalibTuning::slides() {
    QFETCH(int, rfType);
    QFETCH(QString, caption);
    QFETCH(QString, slider);
    QFETCH(int, otherFm);
    QFETCH(int, value);
    QFETCH(QString, line);
    // By the user and by code: either way the unit is told.
    for (const bool byUser : {true, false}) {
        TuningBench at(rfType);
        at.open(caption.toStdString(), {20, 4, 3, 4, otherFm});
        if (byUser)
            at.slider(slider).drag(value);
        else
            at.slider(slider).setValue(static_cast<std::int16_t>(value));
        QCOMPARE(at.journal.entriesOf("> "), QStringList("> " + line));
        QCOMPARE(at.slider(slider).shows(), value);
        // Nobody waits for an answer: no time has passed.
        QCOMPARE(at.loop.ticks(), 0);
    }
}

void TestCalibTuning::unknownCaption_data() {
    QTest::addColumn<QString>("caption");
    for (const char* caption : {"", "calibrate beltpack", "Calibrate Beltpack ", "Calibrate Active Antenna",
                                "Calibrate Active Antenna - Module C", "Calibrate Active Antenna - Module"})
        QTest::addRow("'%s'", caption) << caption;
}

void TestCalibTuning::unknownCaption() {
    QFETCH(QString, caption);
    TuningBench at(1);
    at.open(caption.toStdString(), {20, 4, 3, 4, 0});
    for (const char* slider : {"FmDev", "FreqAccr", "Tx", "Mid", "Rx"}) {
        at.slider(slider).drag(1);
        QCOMPARE(at.slider(slider).shows(), 1);
    }
    QCOMPARE(at.journal.entriesOf("> "), QStringList());
}

void TestCalibTuning::labelComesBeforeTheCommand_data() {
    QTest::addColumn<QString>("slider");
    QTest::addColumn<QStringList>("happens");
    QTest::newRow("FM deviation") << "FmDev" << QStringList({"FmDev shows 5", "> ! 020705"});
    QTest::newRow("frequency") << "FreqAccr" << QStringList({"FreqAccr shows 5", "> # 027c05"});
    QTest::newRow("transmit") << "Tx" << QStringList({"Tx shows 5", "> # 027a05"});
    QTest::newRow("receive") << "Rx" << QStringList({"Rx shows 5", "> # 027905"});
    QTest::newRow("mid") << "Mid"
                         << QStringList({"Rx shows 3", "> # 027903", "Tx shows 2", "> # 027a02",
                                         "Mid shows 5", "> # 027c05"});
}

void TestCalibTuning::labelComesBeforeTheCommand() {
    QFETCH(QString, slider);
    QFETCH(QStringList, happens);
    TuningBench at(1);
    at.open(kBeltpackCaption, {0, 4, 1, 2, 0});
    at.slider(slider).drag(5);
    QCOMPARE(at.journal.entries(), happens);
}

void TestCalibTuning::movesMid_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QList<int>>("start");  // transmit, mid, receive
    QTest::addColumn<Moves>("moves");
    QTest::addColumn<QStringList>("lines");
    const QString bp = kBeltpackCaption;
    const auto row = [](const char* name, const QString& caption, const QList<int>& start, const Moves& moves,
                        const QStringList& lines) {
        QTest::newRow(name) << caption << start << moves << lines;
    };
    row("one step up", bp, {2, 3, 4}, {{"Mid", 4}}, {"# 027905", "# 027a03", "# 027c04"});
    row("one step down", bp, {2, 3, 4}, {{"Mid", 2}}, {"# 027903", "# 027a01", "# 027c02"});
    row("module A", kModuleACaption, {2, 3, 4}, {{"Mid", 4}}, {"# 024705", "# 024903", "# 024504"});
    row("module B", kModuleBCaption, {2, 3, 4}, {{"Mid", 4}}, {"# 024805", "# 024a03", "# 024604"});
    row("receive held at its end", bp, {2, 4, 6}, {{"Mid", 6}}, {"# 027907", "# 027a04", "# 027c06"});
    // The sum was 8, not the 7 that the slider holds.
    row("and back again", bp, {2, 4, 6}, {{"Mid", 6}, {"Mid", 5}},
        {"# 027907", "# 027a04", "# 027c06", "# 027a03", "# 027c05"});
    row("and all the way back", bp, {2, 4, 6}, {{"Mid", 6}, {"Mid", 4}},
        {"# 027907", "# 027a04", "# 027c06", "# 027906", "# 027a02", "# 027c04"});
    row("transmit below its end and back", bp, {1, 3, 5}, {{"Mid", 1}, {"Mid", 3}},
        {"# 027903", "# 027a00", "# 027c01", "# 027905", "# 027a01", "# 027c03"});
    // A slider that stays where it is sends nothing.
    row("both sliders at their end", bp, {7, 3, 7}, {{"Mid", 4}}, {"# 027c04"});
    row("a drag counts from where it ends", bp, {2, 4, 6}, {{"Tx", 5}, {"Mid", 5}},
        {"# 027a05", "# 027907", "# 027a06", "# 027c05"});
    row("a drag of receive forgets the sum", bp, {2, 4, 6}, {{"Mid", 6}, {"Rx", 3}, {"Mid", 5}},
        {"# 027907", "# 027a04", "# 027c06", "# 027903", "# 027902", "# 027a03", "# 027c05"});
    // What the text boxes held may be far from the sliders: the move is counted from there. The least and
    // the greatest sum that still move a slider, and the next ones, which do not.
    row("receive and transmit down to -6", bp, {1, 13, 1}, {{"Mid", 6}},
        {"# 027900", "# 027a00", "# 027c06"});
    row("down to -7", bp, {1, 14, 1}, {{"Mid", 6}}, {"# 027c06"});
    row("receive and transmit up to 13", bp, {6, -6, 6}, {{"Mid", 1}}, {"# 027907", "# 027a07", "# 027c01"});
    row("up to 14", bp, {6, -7, 6}, {{"Mid", 1}}, {"# 027c01"});
    row("receive alone", bp, {6, -7, 5}, {{"Mid", 1}}, {"# 027907", "# 027c01"});
    row("transmit alone", bp, {5, -7, 6}, {{"Mid", 1}}, {"# 027a07", "# 027c01"});
}

void TestCalibTuning::movesMid() {
    QFETCH(QString, caption);
    QFETCH(QList<int>, start);
    QFETCH(Moves, moves);
    QFETCH(QStringList, lines);
    TuningBench at(1);
    at.open(caption.toStdString(), {0, start[1], start[0], start[2], 0});
    for (const auto& [slider, value] : moves)
        at.slider(slider).drag(value);
    QCOMPARE(at.port.sentLines(), lines);
}

void TestCalibTuning::sumsBeyond16Bits_data() {
    QTest::addColumn<QList<int>>("start");  // transmit, mid, receive
    QTest::newRow("transmit") << QList<int>{32767, 4, 4};
    QTest::newRow("receive") << QList<int>{4, 4, 32767};
    QTest::newRow("the move itself") << QList<int>{4, -32767, 4};
}

void TestCalibTuning::sumsBeyond16Bits() {
    QFETCH(QList<int>, start);
    TuningBench at(1);
    at.open(kBeltpackCaption, {0, start[1], start[0], start[2], 0});
    QCOMPARE(faultOf([&] { at.mid.drag(5); }), 6);
    QCOMPARE(at.port.sentLines(), QStringList());
}

void TestCalibTuning::closedPort() {
    // A pulled cable is noticed by the timer and by OK, never by a slider.
    TuningBench at(1);
    at.open(kBeltpackCaption, {0, 4, 4, 4, 0});
    at.port.unplug();
    at.mid.drag(5);
    QCOMPARE(at.journal.entries(), QStringList({"Rx shows 5", "Tx shows 5", "Mid shows 5"}));
}

QUORVEX_TEST(TestCalibTuning, quorvex::NoApplication)
#include "test_calib_tuning.moc"
