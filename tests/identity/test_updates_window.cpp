#include "simulator/fault.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kNotReadBack = failureEntry("Value could not read back from Beltpack!");
const QString kIncomplete = failureEntry("EIC, FPN or FPS were not entered correctly!");

struct Update {
    const char* name;
    const char* field;
    const char* text;
    const char* button;
    const char* write;
    const char* read;
    const char* sending;
    const char* done;
    const char* notDone;
};

constexpr Update kUpdates[] = {
    {"PSN", "TextBeltpackId", "77777", "CommandSetBpId", "# 06410044312FD1", "# 0101",
     "Sending PSN to Beltpack...", "Beltpack's PSN updated successfully.",
     "Beltpack's PSN could not be updated."},
    {"System ID", "TextParkB", "1123456A00", "CommandSetSysID", "# 06431123456A00", "# 0103",
     "Sending System Id to Beltpack...", "Beltpack's System Id updated succesfully.",
     "Beltpack's System Id could not be updated."},
    {"PLI", "TextPli", "27", "CmdUpdatePli", "# 024227", "# 0102", "Sending PLI to Beltpack...",
     "Beltpack's PLI updated successfully.", "Beltpack's PLI could not be updated."},
    {"carriers", "TextRfCarrs", "03FE0A0B0C", "CmdSetRfCarrs", "# 064E03FE0A0B0C", "# 010E",
     "Sending RF Carrier Mask to Beltpack...", "Beltpack's RF Carrier Mask updated successfully.",
     "Beltpack's RF Carrier mask could not be updated."},
};

}  // namespace

/// The four single-value updates by their buttons, and two of them by Enter.
class TestUpdatesWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void button_data() { updates(); }
    void button();
    void otherValue_data() { updates(); }
    void otherValue();
    void silent_data() { updates(); }
    void silent();
    void twiceAtOnce_data() { updates(); }
    void twiceAtOnce();
    void enter_data();
    void enter();
    void enterHeldDown_data();
    void enterHeldDown();
    void controlEnter_data() { enterHeldDown_data(); }
    void controlEnter();
    void enterThatFails();
    void enterThatIsRefused();
    void enterElsewhere_data();
    void enterElsewhere();
    void nothingToSend_data();
    void nothingToSend();
    void hpPari();

private:
    static void updates();
    void fill(const Update& update);

    std::unique_ptr<Bench> bench_;
};

void TestUpdatesWindow::init() {
    renew(bench_);
    bench_->startWith(kRm5);
}

void TestUpdatesWindow::updates() {
    QTest::addColumn<int>("row");
    for (int i = 0; i < static_cast<int>(std::size(kUpdates)); ++i)
        QTest::newRow(kUpdates[i].name) << i;
}

void TestUpdatesWindow::fill(const Update& update) {
    keys::empty(*bench_, update.field);
    keys::type(update.text);
    QCOMPARE(bench_->text(update.field), update.text);
}

void TestUpdatesWindow::button() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    fill(update);
    bench_->click(update.button);
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), QStringList({update.write, update.read}));
    const QString shown = QString(" | hourglass | black: ") + update.sending;
    QCOMPARE(bench_->steps(), QStringList({update.write + shown, update.read + shown}));
    QCOMPARE(bench_->status(), QString("black: ") + update.done);
    QVERIFY(!Bench::isHourglassUp());
}

void TestUpdatesWindow::otherValue() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    bench_->beltpack().addFault(sim::parseFault("other-value"));
    fill(update);
    bool hourglassWithTheBox = true;
    bench_->person.beforeOk([&](QMessageBox&) { hourglassWithTheBox = Bench::isHourglassUp(); });
    bench_->click(update.button);
    QCOMPARE(bench_->journal.take(), QStringList{kNotReadBack});
    QVERIFY(!hourglassWithTheBox);
    QCOMPARE(bench_->status(), QString("black: ") + update.notDone);
}

void TestUpdatesWindow::silent() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    bench_->wire.plugIn(nullptr);
    fill(update);
    const auto before = bench_->clock.nowMs;
    bench_->click(update.button);
    QCOMPARE(bench_->clock.nowMs - before, 2000);
    QCOMPARE(bench_->journal.take(), QStringList{kNotReadBack});
    QCOMPARE(bench_->status(), QString("black: ") + update.notDone);
    QVERIFY(!Bench::isHourglassUp());
}

// A second press inside the first one's wait: each writes, reads back and tells by itself.
void TestUpdatesWindow::twiceAtOnce() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    bench_->wire.plugIn(nullptr);
    fill(update);
    bench_->duringExchange(update.read, [&] { bench_->click(update.button); });
    bench_->click(update.button);
    QCOMPARE(bench_->wire.lines(), QStringList({update.write, update.read, update.write, update.read}));
    QCOMPARE(bench_->journal.take(), QStringList({kNotReadBack, kNotReadBack}));
    QCOMPARE(bench_->status(), QString("black: ") + update.notDone);
    QVERIFY(!Bench::isHourglassUp());
}

void TestUpdatesWindow::enter_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("status");
    // The key clears the status line once the update that it ran is through.
    QTest::newRow("PSN") << 0 << int(Qt::Key_Return) << "black: ";
    QTest::newRow("PSN, keypad") << 0 << int(Qt::Key_Enter) << "black: ";
    QTest::newRow("PLI") << 2 << int(Qt::Key_Return) << "black: Beltpack's PLI updated successfully.";
    QTest::newRow("PLI, keypad") << 2 << int(Qt::Key_Enter) << "black: Beltpack's PLI updated successfully.";
}

void TestUpdatesWindow::enter() {
    QFETCH(int, row);
    QFETCH(int, key);
    QFETCH(QString, status);
    const Update& update = kUpdates[row];
    fill(update);
    keys::press(static_cast<Qt::Key>(key),
                key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::KeyboardModifiers());
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), QStringList({update.write, update.read}));
    QCOMPARE(bench_->text(update.field), update.text);
    QCOMPARE(bench_->status(), status);
}

void TestUpdatesWindow::enterHeldDown_data() {
    QTest::addColumn<int>("row");
    QTest::newRow("PSN") << 0;
    QTest::newRow("PLI") << 2;
}

void TestUpdatesWindow::enterHeldDown() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    fill(update);
    QTest::keyPress(keys::activeWindow(), Qt::Key_Return);
    for (int i = 0; i < 5; ++i) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QApplication::sendEvent(&bench_->control(update.field), &again);
    }
    QTest::keyRelease(keys::activeWindow(), Qt::Key_Return);
    QCOMPARE(bench_->wire.lines(), QStringList({update.write, update.read}));
}

// Control with Enter types a line feed, which runs nothing.
void TestUpdatesWindow::controlEnter() {
    QFETCH(int, row);
    const Update& update = kUpdates[row];
    fill(update);
    keys::press(Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->text(update.field), update.text);
}

void TestUpdatesWindow::enterThatFails() {
    bench_->wire.plugIn(nullptr);
    fill(kUpdates[0]);
    keys::press(Qt::Key_Return);
    QCOMPARE(bench_->journal.take(), QStringList{kNotReadBack});
    QCOMPARE(bench_->status(), "black: ");
    fill(kUpdates[2]);
    keys::press(Qt::Key_Return);
    QCOMPARE(bench_->journal.take(), QStringList{kNotReadBack});
    QCOMPARE(bench_->status(), "black: Beltpack's PLI could not be updated.");
}

void TestUpdatesWindow::enterThatIsRefused() {
    keys::empty(*bench_, "TextBeltpackId");
    keys::type("-5");
    keys::press(Qt::Key_Return);
    QCOMPARE(bench_->journal.take(),
             QStringList{failureEntry("\"-5\" cannot be sent as PSN: it is below 0.")});
    QCOMPARE(bench_->wire.lines(), QStringList());
}

void TestUpdatesWindow::enterElsewhere_data() {
    QTest::addColumn<QString>("field");
    for (const char* field : {"TextEic", "TextFpn", "TextFps", "TextParkB", "TextRfCarrs"})
        QTest::newRow(field) << field;
}

void TestUpdatesWindow::enterElsewhere() {
    QFETCH(QString, field);
    bench_->click("CommandRdSettingsBp");
    bench_->wire.forgetLines();
    hand::click(bench_->control(field));
    const QString before = bench_->text(field);
    keys::press(Qt::Key_Return);
    keys::press(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->text(field), before);
    QCOMPARE(bench_->status(), "black: ");
    QCOMPARE(bench_->journal.take(), QStringList());
}

void TestUpdatesWindow::nothingToSend_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("no PSN") << "TextBeltpackId"
                            << ""
                            << "CommandSetBpId" << QStringList();
    QTest::newRow("no System ID") << "TextParkB"
                                  << ""
                                  << "CommandSetSysID" << QStringList{kIncomplete};
    QTest::newRow("9 characters of a mask") << "TextRfCarrs"
                                            << "03FE0A0B0"
                                            << "CmdSetRfCarrs" << QStringList();
    QTest::newRow("11 characters of a mask") << "TextRfCarrs"
                                             << "03FE0A0B0CC"
                                             << "CmdSetRfCarrs" << QStringList();
    QTest::newRow("PLI too large") << "TextPli"
                                   << "FFFF"
                                   << "CmdUpdatePli" << QStringList();
}

void TestUpdatesWindow::nothingToSend() {
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, button);
    QFETCH(QStringList, told);
    keys::empty(*bench_, field);
    keys::type(text);
    QCOMPARE(bench_->text(field), text);
    // A status of its own, to see that it stays.
    bench_->click("CommandRdSettingsBp");
    bench_->control<QLineEdit>(field).setText(text);
    bench_->wire.forgetLines();
    bench_->click(button);
    QCOMPARE(bench_->journal.take(), told);
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
    QVERIFY(!Bench::isHourglassUp());
}

void TestUpdatesWindow::hpPari() {
    bench_->click("CommandHpPari");
    QCOMPARE(bench_->journal.take(), QStringList{kIncomplete});
    bench_->click("CommandDefault");
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
    bench_->click("CommandHpPari");
    QCOMPARE(bench_->journal.take(), QStringList{boxEntry("information", "Quorvex Config",
                                                          "HP Test Set Fixed Part PARI:\r\r201D9C200")});
    QCOMPARE(bench_->wire.lines(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestUpdatesWindow, QApplication)
#include "test_updates_window.moc"
