#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <QTabWidget>
#include <QTextEdit>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

QString nameOf(QWidget& control) {
    return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Name);
}

/// What a person works with or looks at, besides labels.
bool isControl(const QWidget& widget) {
    return qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QListWidget*>(&widget) ||
           qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QSlider*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
           widget.objectName() == "Picture1";
}

/// Each control in sight has a role and a name that no other one has.
void checkControls(QWidget& whole, int atLeast) {
    QMap<QString, QString> names;
    for (QWidget* control : whole.findChildren<QWidget*>()) {
        if (!control->isVisible() || !isControl(*control) || control->objectName().startsWith("qt_"))
            continue;
        const auto* told = QAccessible::queryAccessibleInterface(control);
        const QString object = control->objectName();
        QVERIFY2(told && told->isValid(), qPrintable(object));
        QVERIFY2(told->role() != QAccessible::NoRole && told->role() != QAccessible::Client,
                 qPrintable(object));
        const QString name = told->text(QAccessible::Name);
        QVERIFY2(!name.trimmed().isEmpty(), qPrintable(object));
        QVERIFY2(!names.contains(name), qPrintable(name + ": " + object + " and " + names[name]));
        names[name] = object;
    }
    QVERIFY2(names.size() >= atLeast, qPrintable(QString::number(names.size())));
}

}  // namespace

/// What assistive tools are told, asked by the toolkit's own interface.
class TestAccessible : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void pages_data();
    void pages();
    void names_data();
    void names();
    void portDialog();
    void moduleDialog();
    void summary();
    void calibration_data();
    void calibration();
    void statusIsItsText();

private:
    /// Looks at a dialog, then sends it away by Esc.
    void plan(std::function<void(QDialog&)> look) {
        bench_->person.plan([look = std::move(look)](QDialog& dialog) {
            look(dialog);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QTRY_VERIFY(!dialog.isVisible());
        });
    }

    std::unique_ptr<Bench> bench_;
};

void TestAccessible::pages_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("controls");
    QTest::newRow("BeltPack, RM5") << "BeltPack"
                                   << "0" << 29;
    QTest::newRow("BeltPack, Kirk") << "BeltPack"
                                    << "1" << 32;
    QTest::newRow("Active Antenna, RM5") << "Active Antenna"
                                         << "0" << 10;
    QTest::newRow("Active Antenna, Kirk") << "Active Antenna"
                                          << "1" << 14;
    QTest::newRow("R-Screen") << "R-Screen"
                              << "0" << 6;
}

void TestAccessible::pages() {
    QFETCH(QString, page);
    QFETCH(QString, type);
    QFETCH(int, controls);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    bench_->clickTab(page);
    checkControls(*bench_->control<QTabWidget>("SSTab1").currentWidget(), controls);
}

void TestAccessible::names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("role");
    const auto row = [](const char* control, const char* name, QAccessible::Role role) {
        QTest::newRow(control) << name << int(role);
    };
    row("CommandRdSettingsBp", "Read Settings From Beltpack", QAccessible::PushButton);
    row("CommandSetBpId", "Update Beltpack ID", QAccessible::PushButton);
    row("TextBeltpackId", "PSN (Serial Number)", QAccessible::EditableText);
    row("TextEic", "EIC", QAccessible::EditableText);
    row("TextPli", "Park Length Indicator (Hex)", QAccessible::EditableText);
    row("TextFreqAccr", "Frequency Accuracy", QAccessible::EditableText);
    row("TextFreqAccrTx", "Frequency Accuracy Tx", QAccessible::EditableText);
    row("TextFmDevB", "FM Deviation, module B", QAccessible::EditableText);
    row("BPHWRevision", "HW REV", QAccessible::List);
    row("BPRegulations", "Regulations", QAccessible::List);
    row("Picture1", "The Beltpack's display", QAccessible::Graphic);
    row("checkBattAlarm", "Battery Alarm", QAccessible::CheckBox);
    row("optionMICBal", "MIC Bal", QAccessible::RadioButton);
}

void TestAccessible::names() {
    QFETCH(QString, name);
    QFETCH(int, role);
    bench_->start();
    auto& control = bench_->control(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(nameOf(control), name);
    QCOMPARE(int(QAccessible::queryAccessibleInterface(&control)->role()), role);
}

void TestAccessible::portDialog() {
    bench_->start();
    plan([](QDialog& dialog) { checkControls(dialog, 3); });
    bench_->clickMenu("mnuComPort");
}

void TestAccessible::moduleDialog() {
    bench_->start();
    plan([](QDialog& dialog) { checkControls(dialog, 4); });
    bench_->clickMenu("mnuRfModule");
}

void TestAccessible::summary() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    plan([](QDialog& dialog) { checkControls(dialog, 2); });
    bench_->click("CommandSummary");
}

void TestAccessible::calibration_data() {
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << false;
    QTest::newRow("Kirk") << true;
}

void TestAccessible::calibration() {
    QFETCH(bool, kirk);
    bench_->store.put("RfModule", kirk ? "1" : "0");
    bench_->startWith(kirk ? kKirk : kRm5);
    plan([kirk](QDialog& dialog) {
        checkControls(dialog, kirk ? 9 : 4);
        for (const auto& [slider, name] :
             {std::pair{"SliderTx", "Transmit"}, std::pair{"SliderMid", "Mid"},
              std::pair{"SliderRx", "Receive"}, std::pair{"SliderFmDev", "FM Deviation"},
              std::pair{"SliderFreqAccr", "Frequency Accuracy"}})
            QCOMPARE(nameOf(*dialog.findChild<QWidget*>(slider)), name);
        // A value says of what it is one, and its name is the value itself.
        for (const auto& [label, description] :
             {std::pair{"LabelTxValue", "Transmit"}, std::pair{"LabelMidValue", "Mid"},
              std::pair{"LabelRxValue", "Receive"}, std::pair{"LabelFmDevValue", "FM Deviation"},
              std::pair{"LabelFreqAccrValue", "Frequency Accuracy"},
              std::pair{"Label6", "Middle of the DC balance"}}) {
            auto& value = *dialog.findChild<QLabel*>(label);
            const auto* told = QAccessible::queryAccessibleInterface(&value);
            QCOMPARE(told->text(QAccessible::Description), description);
            QCOMPARE(told->text(QAccessible::Name), value.text());
        }
        for (const char* line : {"Line1", "Line2", "Line3"})
            QCOMPARE(nameOf(*dialog.findChild<QWidget*>(line)), "");
    });
    bench_->click("CommandCalibBp");
}

void TestAccessible::statusIsItsText() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(nameOf(bench_->control("LblStatus")), "Settings read from Beltpack successfully.");
    QCOMPARE(nameOf(bench_->control("LabelComPort")), "COM1");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAccessible, QApplication)
#include "test_accessible.moc"
