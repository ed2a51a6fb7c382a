#include <QAbstractItemView>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "app/com_select.h"
#include "form/qt_console.h"
#include "tests/app/port_dialog_hand.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kDialog = dialogEntry("ComSelect", "Select Serial Port");

QComboBox& portsOf(QDialog& dialog) {
    return *dialog.findChild<QComboBox*>("ComboCom");
}

QStringList hoverTextsOf(QDialog& dialog) {
    QStringList texts;
    for (int i = 0; i < portsOf(dialog).count(); ++i)
        texts << portsOf(dialog).itemData(i, Qt::ToolTipRole).toString();
    return texts;
}

QString notOpened(int number) {
    return failureEntry("Could not open COM " + QString::number(number));
}

}  // namespace

/// The dialog behind "COM Port" in the menu.
class TestPortDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void looks();
    void keepsInTheDropDown();
    void hoverTexts();
    void hoverTextsComeAfterIt();
    void hoverTextsComeOnce();
    void preselects_data();
    void preselects();
    void preselectsNothingForZero();
    void cannotPreselect_data();
    void cannotPreselect();
    void choosesEachPort_data();
    void choosesEachPort();
    void picksWithTheMouse();
    void sameAgain();
    void failingPortKeepsItOpen();
    void failsTwice();
    void otherPortAfterAFailure();
    void leavesAlone_data();
    void leavesAlone();
    void cancelShowsTheStoredNumber();
    void keys_data();
    void keys();

private:
    std::unique_ptr<Bench> bench_;
};

void TestPortDialog::init() {
    renew(bench_);
    bench_->store.put("ComPort", "3");
    bench_->start();
    QCOMPARE(bench_->journal.take(), QStringList("open 3"));
}

void TestPortDialog::cleanup() {
    QCOMPARE(bench_->person.plansLeft(), std::size_t{0});
    bench_.reset();
}

void TestPortDialog::looks() {
    bench_->person.plan([](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), "Select Serial Port");
        auto* label = dialog.findChild<QLabel*>("Label1");
        QCOMPARE(label->text(), "COM Port:");
        QCOMPARE(label->buddy(), &portsOf(dialog));
        QCOMPARE(dialog.findChild<QPushButton*>("CmdOK")->text(), "&OK");
        QCOMPARE(dialog.findChild<QPushButton*>("CmdCancel")->text(), "&Cancel");
        QVERIFY(dialog.findChild<QFrame*>("Line1"));
        QVERIFY(!portsOf(dialog).isEditable());
        QStringList items;
        for (int i = 0; i < portsOf(dialog).count(); ++i)
            items << portsOf(dialog).itemText(i);
        QCOMPARE(items, QStringList({"COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8", "COM9",
                                     "COM10", "COM11", "COM12"}));
        for (const QWidget* part :
             {static_cast<QWidget*>(label), static_cast<QWidget*>(&portsOf(dialog)),
              dialog.findChild<QWidget*>("CmdOK"), dialog.findChild<QWidget*>("CmdCancel")}) {
            QVERIFY2(part->width() >= part->sizeHint().width() && part->height() >= part->sizeHint().height(),
                     qPrintable(part->objectName()));
        }
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList(kDialog));
}

// All twelve are seen at once: nobody has to scroll for COM12.
void TestPortDialog::keepsInTheDropDown() {
    bench_->person.plan([](QDialog& dialog) {
        QVERIFY(portsOf(dialog).maxVisibleItems() >= 12);
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
}

void TestPortDialog::hoverTexts() {
    bench_->person.plan([&](QDialog& dialog) {
        for (int i = 0; i < 12; ++i) {
            const QString device = bench_->deviceOf(i + 1);
            const QString absent = device + "\nAbsent: connect the adapter, or choose another port.";
            if (Bench::kPortsAreLinks)
                QTRY_COMPARE(hoverTextsOf(dialog)[i], absent);
            else if (i + 1 == 3)
                QTRY_COMPARE(hoverTextsOf(dialog)[i], device);  // the program itself has it open
            else
                QTRY_VERIFY(hoverTextsOf(dialog)[i].startsWith(device));
        }
        QCOMPARE(portsOf(dialog).currentText(), "COM3");
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
}

// Finding out takes its time: nobody is to wait for the dialog, and it may be gone before.
void TestPortDialog::hoverTextsComeAfterIt() {
    StatusLine line;
    QtConsole console(line);
    CommandLink link(bench_->wire, bench_->loop, console);
    PortChoice choice(link, bench_->wire, bench_->store);
    for (const bool stays : {true, false}) {
        ComSelect dialog(choice, &bench_->window());
        dialog.grab();  // seen, so the hover texts are next
        QCOMPARE(hoverTextsOf(dialog), QStringList(12, QString()));
        if (stays)
            QTRY_VERIFY(!hoverTextsOf(dialog).contains(QString()));
    }
    QCoreApplication::processEvents();
}

// Not at each time that the dialog is painted.
void TestPortDialog::hoverTextsComeOnce() {
    bench_->person.plan([&](QDialog& dialog) {
        QTRY_VERIFY(!hoverTextsOf(dialog).contains(QString()));
        portsOf(dialog).setItemData(0, "stays", Qt::ToolTipRole);
        dialog.grab();
        QCoreApplication::processEvents();
        QCOMPARE(hoverTextsOf(dialog).first(), "stays");
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
}

void TestPortDialog::preselects_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("item");
    for (const char* number : {"1", "2", "11", "12"})
        QTest::newRow(number) << number << QString("COM%1").arg(number);
}

void TestPortDialog::preselects() {
    QFETCH(QString, stored);
    QFETCH(QString, item);
    // By another program, while this one runs.
    bench_->store.put("ComPort", stored.toStdString());
    QString shown;
    bench_->person.plan([&](QDialog& dialog) {
        shown = portsOf(dialog).currentText();
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(shown, item);
}

void TestPortDialog::preselectsNothingForZero() {
    bench_->store.put("ComPort", "0");
    bench_->person.plan([](QDialog& dialog) {
        QCOMPARE(portsOf(dialog).currentIndex(), -1);
        press(dialog, "CmdOK");
        QVERIFY(dialog.isVisible());
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "close", "cannot open 0", notOpened(0)}));
}

void TestPortDialog::cannotPreselect_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("report");
    QTest::newRow("text") << "abc"
                          << "13':\r\n\r\nType mismatch";
    QTest::newRow("beyond the list") << "13"
                                     << "380':\r\n\r\nInvalid property value";
    QTest::newRow("negative") << "-1"
                              << "380':\r\n\r\nInvalid property value";
    QTest::newRow("beyond 16 bits") << "40000"
                                    << "6':\r\n\r\nOverflow";
}

void TestPortDialog::cannotPreselect() {
    QFETCH(QString, stored);
    QFETCH(QString, report);
    bench_->store.put("ComPort", stored.toStdString());
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(),
             QStringList({failureEntry(settingFault(report, "ComPort", stored)), "close", "end 1"}));
}

void TestPortDialog::choosesEachPort_data() {
    QTest::addColumn<int>("number");
    for (int number = 1; number <= 12; ++number)
        QTest::addRow("COM%d", number) << number;
}

void TestPortDialog::choosesEachPort() {
    QFETCH(int, number);
    bench_->person.plan([&](QDialog& dialog) {
        pick(dialog, number);
        press(dialog, "CmdOK");
    });
    bench_->clickMenu("mnuComPort");
    const QString digits = QString::number(number);
    QCOMPARE(bench_->journal.take(),
             QStringList({kDialog, "close", "open " + digits, "store ComPort=" + digits}));
    QCOMPARE(bench_->text("LabelComPort"), "COM" + digits);
    QVERIFY(bench_->wire.isOpen());
}

void TestPortDialog::picksWithTheMouse() {
    bench_->person.plan([](QDialog& dialog) {
        QComboBox& ports = portsOf(dialog);
        hand::click(ports);
        QTRY_VERIFY(ports.view()->isVisible());
        QWidget* list = ports.view()->viewport();
        const QRect item = ports.view()->visualRect(ports.model()->index(6, 0));
        QTest::mouseClick(list->window()->windowHandle(), Qt::LeftButton, {},
                          list->mapTo(list->window(), item.center()));
        QTRY_COMPARE(ports.currentText(), "COM7");
        QTRY_VERIFY(!ports.view()->isVisible());
        press(dialog, "CmdOK");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "close", "open 7", "store ComPort=7"}));
}

void TestPortDialog::sameAgain() {
    bench_->person.plan([](QDialog& dialog) { press(dialog, "CmdOK"); });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "close", "open 3", "store ComPort=3"}));
    QCOMPARE(bench_->text("LabelComPort"), "COM3");
}

void TestPortDialog::failingPortKeepsItOpen() {
    bench_->wire.refuse(9);
    bench_->person.plan([](QDialog& dialog) {
        pick(dialog, 9);
        press(dialog, "CmdOK");
        QVERIFY(dialog.isVisible());
        QCOMPARE(portsOf(dialog).currentText(), "COM9");
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "close", "cannot open 9", notOpened(9)}));
    QVERIFY(!bench_->wire.isOpen());
    QCOMPARE(bench_->text("LabelComPort"), "No Comms");
    QCOMPARE(bench_->store.get("ComPort", ""), "3");
}

void TestPortDialog::failsTwice() {
    bench_->wire.refuse(9);
    bench_->person.plan([](QDialog& dialog) {
        pick(dialog, 9);
        press(dialog, "CmdOK");
        press(dialog, "CmdOK");
        press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(),
             QStringList({kDialog, "close", "cannot open 9", notOpened(9), "cannot open 9", notOpened(9)}));
}

void TestPortDialog::otherPortAfterAFailure() {
    bench_->wire.refuse(9);
    bench_->person.plan([](QDialog& dialog) {
        pick(dialog, 9);
        press(dialog, "CmdOK");
        pick(dialog, 12);
        press(dialog, "CmdOK");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(),
             QStringList({kDialog, "close", "cannot open 9", notOpened(9), "open 12", "store ComPort=12"}));
    QCOMPARE(bench_->text("LabelComPort"), "COM12");
}

void TestPortDialog::leavesAlone_data() {
    QTest::addColumn<QString>("way");
    QTest::newRow("Cancel") << "CmdCancel";
    QTest::newRow("Esc") << "Esc";
    QTest::newRow("close box") << "close";
}

void TestPortDialog::leavesAlone() {
    QFETCH(QString, way);
    bench_->person.plan([&](QDialog& dialog) {
        pick(dialog, 8);
        if (way == "Esc")
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (way == "close")
            dialog.close();
        else
            press(dialog, "CmdCancel");
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->journal.take(), QStringList(kDialog));
    QVERIFY(bench_->wire.isOpen());
    QCOMPARE(bench_->text("LabelComPort"), "COM3");
    QCOMPARE(bench_->store.get("ComPort", ""), "3");
}

void TestPortDialog::cancelShowsTheStoredNumber() {
    bench_->store.put("ComPort", "06");
    bench_->person.plan([](QDialog& dialog) { press(dialog, "CmdCancel"); });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->text("LabelComPort"), "COM6");
}

void TestPortDialog::keys_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("alt");
    QTest::addColumn<bool>("takes");
    QTest::newRow("Alt+O") << int(Qt::Key_O) << true << true;
    QTest::newRow("Alt+C") << int(Qt::Key_C) << true << false;
    QTest::newRow("Enter") << int(Qt::Key_Return) << false << true;
}

void TestPortDialog::keys() {
    QFETCH(int, key);
    QFETCH(bool, alt);
    QFETCH(bool, takes);
    bench_->person.plan([&](QDialog& dialog) {
        pick(dialog, 2);
        QTest::keyClick(dialog.windowHandle(), static_cast<Qt::Key>(key),
                        alt ? Qt::AltModifier : Qt::NoModifier);
        QTRY_VERIFY(!dialog.isVisible());
    });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(bench_->store.get("ComPort", ""), takes ? "2" : "3");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortDialog, QApplication)
#include "test_port_dialog.moc"
