#include <QFrame>
#include <QPushButton>
#include <QRadioButton>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kDialog = dialogEntry("FormRfModule", "Select Type Of RF Module");

bool isOn(QDialog& dialog, const char* option) {
    return dialog.findChild<QRadioButton*>(option)->isChecked();
}

void press(QDialog& dialog, const char* control) {
    hand::click(*dialog.findChild<QWidget*>(control));
}

}  // namespace

/// The dialog behind "RF Module Type" in the menu.
class TestRfModuleDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void cleanup();
    void looks();
    void selects_data();
    void selects();
    void picks_data();
    void picks();
    void leaves_data();
    void leaves();
    void cancelStoresTheTypeOfTheWindow();
    void thereAndBack();
    void keys_data();
    void keys();
    void storedTextIsNoNumber_data();
    void storedTextIsNoNumber();

private:
    void startWithStored(const QString& type);

    std::unique_ptr<Bench> bench_;
};

void TestRfModuleDialog::cleanup() {
    QCOMPARE(bench_->person.plansLeft(), std::size_t{0});
    bench_.reset();
}

void TestRfModuleDialog::startWithStored(const QString& type) {
    if (!type.isNull())
        bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    QCOMPARE(bench_->journal.take(), QStringList("open 1"));
}

void TestRfModuleDialog::looks() {
    startWithStored("0");
    bench_->person.plan([](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), "Select Type Of RF Module");
        QCOMPARE(dialog.findChild<QRadioButton*>("OptionKirk")->text(), "Kirk KRM 1800");
        QCOMPARE(dialog.findChild<QRadioButton*>("OptionRm5")->text(), "Plextek RM5");
        QCOMPARE(dialog.findChild<QPushButton*>("CancelButton")->text(), "Cancel");
        QCOMPARE(dialog.findChild<QPushButton*>("OKButton")->text(), "OK");
        QVERIFY(dialog.findChild<QFrame*>("Line1"));
        for (const char* name : {"OptionKirk", "OptionRm5", "CancelButton", "OKButton"}) {
            const auto* part = dialog.findChild<QWidget*>(name);
            QVERIFY2(part->width() >= part->sizeHint().width() && part->height() >= part->sizeHint().height(),
                     name);
        }
        press(dialog, "CancelButton");
    });
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "store RfModule=0"}));
}

void TestRfModuleDialog::selects_data() {
    QTest::addColumn<QString>("stored");  // null: nothing
    QTest::addColumn<bool>("kirk");
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("0") << "0" << false;
    QTest::newRow("1") << "1" << true;
    QTest::newRow("5") << "5" << true;
    QTest::newRow("-1") << "-1" << true;
}

void TestRfModuleDialog::selects() {
    QFETCH(QString, stored);
    QFETCH(bool, kirk);
    startWithStored(stored);
    bench_->person.plan([&](QDialog& dialog) {
        QCOMPARE(isOn(dialog, "OptionKirk"), kirk);
        QCOMPARE(isOn(dialog, "OptionRm5"), !kirk);
        press(dialog, "CancelButton");
    });
    bench_->clickMenu("mnuRfModule");
    // Whatever was done in it, the type is stored after the dialog.
    QCOMPARE(bench_->journal.take(),
             QStringList({kDialog, "store RfModule=" + (stored.isNull() ? QString("0") : stored)}));
}

void TestRfModuleDialog::picks_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("option");  // clicked before OK; empty: none
    QTest::addColumn<QString>("type");
    QTest::newRow("RM5 to Kirk") << "0"
                                 << "OptionKirk"
                                 << "1";
    QTest::newRow("Kirk to RM5") << "1"
                                 << "OptionRm5"
                                 << "0";
    QTest::newRow("RM5 as it is") << "0"
                                  << ""
                                  << "0";
    QTest::newRow("Kirk as it is") << "1"
                                   << ""
                                   << "1";
    QTest::newRow("RM5 again") << "0"
                               << "OptionRm5"
                               << "0";
    QTest::newRow("5 becomes Kirk") << "5"
                                    << ""
                                    << "1";
    QTest::newRow("5 to RM5") << "5"
                              << "OptionRm5"
                              << "0";
}

void TestRfModuleDialog::picks() {
    QFETCH(QString, stored);
    QFETCH(QString, option);
    QFETCH(QString, type);
    startWithStored(stored);
    bench_->person.plan([&](QDialog& dialog) {
        if (!option.isEmpty())
            press(dialog, option.toLatin1());
        press(dialog, "OKButton");
    });
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "store RfModule=" + type}));
    const QString module = type == "1" ? "Kirk" : "RM5";
    QCOMPARE(bench_->text("CommandCalibBp"), "Calibrate " + module + " Module");
    QCOMPARE(bench_->text("CommandCalibAAB"), "Calibrate " + module + " Module B");
    QCOMPARE(bench_->control("TextRssiThr").isHidden(), type != "1");
}

void TestRfModuleDialog::leaves_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("stored");
    for (const char* stored : {"0", "1", "5"}) {
        for (const char* way : {"CancelButton", "Esc", "close box"})
            QTest::addRow("%s with %s", way, stored) << QString(way) << QString(stored);
    }
}

void TestRfModuleDialog::leaves() {
    QFETCH(QString, way);
    QFETCH(QString, stored);
    startWithStored(stored);
    // The layout is set up anew as well: what had moved stands in its place again.
    auto& moved = bench_->control("TextFreqAccr");
    const QPoint place = moved.pos();
    moved.move(1, 1);
    bench_->person.plan([&](QDialog& dialog) {
        press(dialog, isOn(dialog, "OptionKirk") ? "OptionRm5" : "OptionKirk");
        if (way == "Esc")
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (way == "close box")
            dialog.close();
        else
            press(dialog, "CancelButton");
    });
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "store RfModule=" + stored}));
    QCOMPARE(moved.pos(), place);
    QCOMPARE(bench_->text("CommandCalibBp"),
             stored == "1" ? "Calibrate Kirk Module" : "Calibrate RM5 Module");
}

// The dialog shows what is stored by now, but the window keeps the type that it holds.
void TestRfModuleDialog::cancelStoresTheTypeOfTheWindow() {
    startWithStored("0");
    bench_->store.put("RfModule", "1");
    bench_->person.plan([](QDialog& dialog) {
        QVERIFY(isOn(dialog, "OptionKirk"));
        press(dialog, "CancelButton");
    });
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "store RfModule=0"}));
}

void TestRfModuleDialog::thereAndBack() {
    startWithStored("0");
    const QPoint field = bench_->control("TextFreqAdjB").pos();
    const QPoint label = bench_->control("LabelFreqAccr").pos();
    const QSize window = bench_->window().size();
    for (const char* option : {"OptionKirk", "OptionRm5"}) {
        bench_->person.plan([&](QDialog& dialog) {
            press(dialog, option);
            press(dialog, "OKButton");
        });
        bench_->clickMenu("mnuRfModule");
    }
    QCOMPARE(bench_->control("TextFreqAdjB").pos(), field);
    QCOMPARE(bench_->control("LabelFreqAccr").pos(), label);
    QCOMPARE(bench_->window().size(), window);
}

void TestRfModuleDialog::keys_data() {
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QString>("type");
    QTest::newRow("Enter") << QList<int>{Qt::Key_Return} << "0";
    QTest::newRow("other option, Enter") << QList<int>{Qt::Key_Up, Qt::Key_Return} << "1";
    QTest::newRow("other option, Esc") << QList<int>{Qt::Key_Up, Qt::Key_Escape} << "0";
}

void TestRfModuleDialog::keys() {
    QFETCH(QList<int>, keys);
    QFETCH(QString, type);
    startWithStored("0");
    bench_->person.plan([&](QDialog& dialog) {
        // A real window system gives the focus, by which arrow keys go, some time after the dialog is shown.
        QTRY_VERIFY(dialog.focusWidget() && QApplication::focusWidget() == dialog.focusWidget());
        for (const int key : keys)
            QTest::keyClick(dialog.windowHandle(), static_cast<Qt::Key>(key));
        QTRY_VERIFY(!dialog.isVisible());
    });
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(), QStringList({kDialog, "store RfModule=" + type}));
}

void TestRfModuleDialog::storedTextIsNoNumber_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("kind");
    QTest::newRow("text") << "abc"
                          << "13':\r\n\r\nType mismatch";
    QTest::newRow("empty") << ""
                           << "13':\r\n\r\nType mismatch";
    QTest::newRow("beyond 16 bits") << "70000"
                                    << "6':\r\n\r\nOverflow";
}

void TestRfModuleDialog::storedTextIsNoNumber() {
    QFETCH(QString, stored);
    QFETCH(QString, kind);
    startWithStored("0");
    bench_->store.put("RfModule", stored.toStdString());
    bench_->clickMenu("mnuRfModule");
    QCOMPARE(bench_->journal.take(),
             QStringList({failureEntry(settingFault(kind, "RfModule", stored)), "close", "end 1"}));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestRfModuleDialog, QApplication)
#include "test_rf_module_dialog.moc"
