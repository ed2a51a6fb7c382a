#include <QComboBox>
#include <QMessageBox>
#include <QWindow>
#include <optional>

#include "tests/app/port_dialog_hand.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kStartDialog = dialogEntry("ComSelect", "Select Serial Port");

QString notOpened(const QString& number) {
    return failureEntry("Could not open COM " + number);
}

/// Whether the window was on the screen when the first message box was shown over it.
class BoxWatch : public QObject {
public:
    explicit BoxWatch(const QWidget& window) : window_(window) { qApp->installEventFilter(this); }
    const std::optional<bool>& wasExposed() const { return wasExposed_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object) && !wasExposed_)
            wasExposed_ = window_.windowHandle()->isExposed();
        return false;
    }

private:
    const QWidget& window_;
    std::optional<bool> wasExposed_;
};

}  // namespace

/// What the window does while it loads.
class TestStartupWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void cleanup();
    void opensTheStoredPort_data();
    void opensTheStoredPort();
    void takesTheStoredModule_data();
    void takesTheStoredModule();
    void moduleBeforePort();
    void anotherPortInstead();
    void givesUp_data();
    void givesUp();
    void secondPortFailsToo();
    void laterPortIsRemembered();
    void badStoredPort_data();
    void badStoredPort();
    void badStoredModule();
    void worksWithoutAPort();
    void boxWaitsForTheWindow();
    void hoverOfALostPort();

private:
    std::unique_ptr<Bench> bench_;
};

void TestStartupWindow::cleanup() {
    QCOMPARE(bench_->person.plansLeft(), std::size_t{0});
    bench_.reset();
}

void TestStartupWindow::opensTheStoredPort_data() {
    QTest::addColumn<QString>("stored");  // null: nothing
    QTest::addColumn<int>("number");
    QTest::newRow("nothing") << QString() << 1;
    QTest::newRow("1") << "1" << 1;
    QTest::newRow("3") << "3" << 3;
    QTest::newRow("12") << "12" << 12;
    QTest::newRow("blanks around") << " 7 " << 7;
    QTest::newRow("not in the list of the dialog") << "13" << 13;
}

void TestStartupWindow::opensTheStoredPort() {
    QFETCH(QString, stored);
    QFETCH(int, number);
    if (!stored.isNull())
        bench_->store.put("ComPort", stored.toStdString());
    bench_->start();
    QCOMPARE(bench_->journal.take(), QStringList("open " + QString::number(number)));
    QCOMPARE(bench_->text("LabelComPort"), "COM" + QString::number(number));
    QVERIFY(bench_->wire.isOpen());
    QVERIFY(bench_->window().isVisible());
    QCOMPARE(bench_->status(), "black: ");
    QVERIFY(bench_->wire.lines().isEmpty());
}

void TestStartupWindow::takesTheStoredModule_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("caption");
    QTest::newRow("nothing") << QString() << "Calibrate RM5 Module";
    QTest::newRow("0") << "0"
                       << "Calibrate RM5 Module";
    QTest::newRow("1") << "1"
                       << "Calibrate Kirk Module";
}

void TestStartupWindow::takesTheStoredModule() {
    QFETCH(QString, stored);
    QFETCH(QString, caption);
    if (!stored.isNull())
        bench_->store.put("RfModule", stored.toStdString());
    bench_->start();
    QCOMPARE(bench_->text("CommandCalibBp"), caption);
    // Taking the type over does not store it.
    QCOMPARE(bench_->journal.take(), QStringList("open 1"));
}

void TestStartupWindow::moduleBeforePort() {
    bench_->store.put("RfModule", "1");
    bench_->wire.refuse(1);
    QString captionAtBox;
    bench_->person.beforeOk([&](QMessageBox&) { captionAtBox = bench_->text("CommandCalibBp"); });
    bench_->person.plan([](QDialog& dialog) { press(dialog, "CmdCancel"); });
    bench_->start();
    QCOMPARE(captionAtBox, "Calibrate Kirk Module");
}

void TestStartupWindow::anotherPortInstead() {
    bench_->store.put("ComPort", "3");
    bench_->wire.refuse(3);
    QStringList labels;
    bench_->person.beforeOk([&](QMessageBox&) { labels << bench_->text("LabelComPort"); });
    bench_->person.plan([&](QDialog& dialog) {
        labels << bench_->text("LabelComPort");
        QCOMPARE(dialog.findChild<QComboBox*>("ComboCom")->currentText(), "COM3");
        pick(dialog, 5);
        press(dialog, "CmdOK");
    });
    bench_->start();
    QCOMPARE(bench_->journal.take(),
             QStringList({"cannot open 3", notOpened("3"), kStartDialog, "open 5", "store ComPort=5"}));
    QCOMPARE(labels, QStringList({"No Comms", "No Comms"}));
    QCOMPARE(bench_->text("LabelComPort"), "COM5");
    QVERIFY(bench_->wire.isOpen());
}

void TestStartupWindow::givesUp_data() {
    QTest::addColumn<QString>("way");
    QTest::newRow("Cancel") << "CmdCancel";
    QTest::newRow("Esc") << "Esc";
    QTest::newRow("close box") << "close";
}

void TestStartupWindow::givesUp() {
    QFETCH(QString, way);
    bench_->store.put("ComPort", "12");
    bench_->wire.refuse(12);
    bench_->person.plan([&](QDialog& dialog) {
        if (way == "Esc")
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (way == "close")
            dialog.close();
        else
            press(dialog, "CmdCancel");
    });
    bench_->start();
    QCOMPARE(bench_->journal.take(), QStringList({"cannot open 12", notOpened("12"), kStartDialog}));
    QCOMPARE(bench_->text("LabelComPort"), "No Comms");
    QVERIFY(!bench_->wire.isOpen());
    QVERIFY(bench_->window().isVisible());
    QCOMPARE(bench_->store.get("ComPort", ""), "12");
}

void TestStartupWindow::secondPortFailsToo() {
    bench_->wire.refuse(1);
    bench_->wire.refuse(2);
    bench_->person.plan([&](QDialog& dialog) {
        pick(dialog, 2);
        press(dialog, "CmdOK");
        QVERIFY(dialog.isVisible());
        press(dialog, "CmdCancel");
    });
    bench_->start();
    QCOMPARE(bench_->journal.take(),
             QStringList({"cannot open 1", notOpened("1"), kStartDialog, "cannot open 2", notOpened("2")}));
    QCOMPARE(bench_->text("LabelComPort"), "No Comms");
    QCOMPARE(bench_->store.get("ComPort", "none"), "none");
}

void TestStartupWindow::laterPortIsRemembered() {
    bench_->wire.refuse(1);
    bench_->person.plan([&](QDialog& dialog) {
        pick(dialog, 12);
        press(dialog, "CmdOK");
    });
    bench_->start();
    QCOMPARE(bench_->store.get("ComPort", ""), "12");
    QCOMPARE(bench_->text("LabelComPort"), "COM12");
}

// The dialog reads the stored number again, and cannot show it: that is no failure to open, and ends the
// program.
void TestStartupWindow::badStoredPort_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("number");  // as far as it was known
    QTest::addColumn<QString>("report");
    QTest::newRow("text") << "abc"
                          << ""
                          << "13':\r\n\r\nType mismatch";
    QTest::newRow("empty") << ""
                           << ""
                           << "13':\r\n\r\nType mismatch";
    QTest::newRow("number with unit") << "3x"
                                      << ""
                                      << "13':\r\n\r\nType mismatch";
    QTest::newRow("beyond 16 bits") << "99999"
                                    << ""
                                    << "6':\r\n\r\nOverflow";
    QTest::newRow("beyond the list") << "13"
                                     << "13"
                                     << "380':\r\n\r\nInvalid property value";
}

void TestStartupWindow::badStoredPort() {
    QFETCH(QString, stored);
    QFETCH(QString, number);
    QFETCH(QString, report);
    bench_->store.put("ComPort", stored.toStdString());
    bench_->wire.refuse(13);
    bench_->start();
    QStringList expected{notOpened(number), failureEntry(settingFault(report, "ComPort", stored)), "end 1"};
    if (!number.isEmpty())
        expected.prepend("cannot open " + number);
    QCOMPARE(bench_->journal.take(), expected);
    QCOMPARE(bench_->store.get("ComPort", ""), stored.toStdString());
}

// Told as a port that could not be opened, with no number because no port has been looked at yet.
void TestStartupWindow::badStoredModule() {
    bench_->store.put("RfModule", "abc");
    bench_->store.put("ComPort", "4");
    bench_->person.plan([](QDialog& dialog) {
        QCOMPARE(dialog.findChild<QComboBox*>("ComboCom")->currentText(), "COM4");
        press(dialog, "CmdOK");
    });
    bench_->start();
    QCOMPARE(bench_->journal.take(), QStringList({notOpened(""), kStartDialog, "open 4", "store ComPort=4"}));
    QCOMPARE(bench_->text("LabelComPort"), "COM4");
    QCOMPARE(bench_->store.get("RfModule", ""), "abc");
}

void TestStartupWindow::worksWithoutAPort() {
    bench_->wire.refuse(1);
    bench_->person.plan([](QDialog& dialog) { press(dialog, "CmdCancel"); });
    bench_->start();
    bench_->journal.take();
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(),
             QStringList({"store RfModule=1",
                          failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.")}));
    QCOMPARE(bench_->status(), "black: Error communicating with Beltpack.");
    QCOMPARE(bench_->clock.nowMs, 0);  // a closed port is not waited for
    QVERIFY(!Bench::isHourglassUp());
}

void TestStartupWindow::boxWaitsForTheWindow() {
    bench_->wire.refuse(1);
    FrmMain window({bench_->wire, bench_->loop, bench_->store});
    const BoxWatch watch(window);
    bench_->person.plan([](QDialog& dialog) { press(dialog, "CmdCancel"); });
    window.show();
    QVERIFY(!window.windowHandle()->isExposed());
    window.load();
    QCOMPARE(watch.wasExposed(), std::optional(true));
}

void TestStartupWindow::hoverOfALostPort() {
    bench_->start();
    bench_->window().portLost();
    QCOMPARE(bench_->text("LabelComPort"), "No Comms");
    QCOMPARE(bench_->control("LabelComPort").toolTip(),
             "The connection to the port was lost: check the cable, then choose the port again in the menu.");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestStartupWindow, QApplication)
#include "test_startup_window.moc"
