#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QWindow>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
const QString kPortDialog = dialogEntry("ComSelect", "Select Serial Port");
const QString kModuleDialog = dialogEntry("FormRfModule", "Select Type Of RF Module");
}  // namespace

/// The keys of the captions, without the mouse.
class TestAccessKeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void readStarts();
    void buttons_data();
    void buttons();
    void enterPressesOnce_data();
    void enterPressesOnce();
    void disabledButtonsStaySo_data();
    void disabledButtonsStaySo();
    void menus_data();
    void menus();
    void menuItems_data();
    void menuItems();
    void fileIsTheMenus();
    void readIsOnTwoButtons();
    void pagesDoNotShareKeys();

private:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(bench_->window().windowHandle(), key, modifiers);
    }
    bool isOpen(const char* menu) { return bench_->control<QMenu>(menu).isVisible(); }

    std::unique_ptr<Bench> bench_;
};

void TestAccessKeys::readStarts() {
    bench_->startWith(kRm5);
    press(Qt::Key_R, Qt::AltModifier);
    QTRY_COMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
}

void TestAccessKeys::buttons_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("button");
    QTest::newRow("Alt+R") << int(Qt::Key_R) << "CommandRdSettingsBp";
    QTest::newRow("Alt+W") << int(Qt::Key_W) << "CommandWrite";
    QTest::newRow("Alt+T") << int(Qt::Key_T) << "CommandSave";
    QTest::newRow("Alt+S") << int(Qt::Key_S) << "CommandSummary";
}

// Only that the key reaches its button: what the buttons do is tested with them.
void TestAccessKeys::buttons() {
    QFETCH(int, key);
    QFETCH(QString, button);
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    auto& target = bench_->control<QAbstractButton>(button);
    bool pressed = false;
    connect(&target, &QAbstractButton::pressed, this, [&pressed, &target] {
        pressed = true;
        target.blockSignals(true);
    });
    press(static_cast<Qt::Key>(key), Qt::AltModifier);
    QVERIFY(pressed);
    QTRY_VERIFY(!target.isDown());
}

void TestAccessKeys::enterPressesOnce_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("keypad Enter") << int(Qt::Key_Enter);
}

// Held down, too.
void TestAccessKeys::enterPressesOnce() {
    QFETCH(int, key);
    bench_->startWith(kRm5);
    auto& button = bench_->control("CommandDectPPVerReq");
    button.setFocus();
    QTest::keyPress(bench_->window().windowHandle(), static_cast<Qt::Key>(key));
    for (int i = 0; i < 5; ++i) {
        QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, "\r", true);
        QApplication::sendEvent(&button, &again);
    }
    QTest::keyRelease(bench_->window().windowHandle(), static_cast<Qt::Key>(key));
    QCOMPARE(bench_->wire.lines(), QStringList("! 0108"));
    press(static_cast<Qt::Key>(key));
    QCOMPARE(bench_->wire.lines(), QStringList({"! 0108", "! 0108"}));
}

void TestAccessKeys::disabledButtonsStaySo_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("button");
    QTest::newRow("Alt+W") << int(Qt::Key_W) << "CommandWrite";
    QTest::newRow("Alt+T") << int(Qt::Key_T) << "CommandSave";
    QTest::newRow("Alt+S") << int(Qt::Key_S) << "CommandSummary";
}

void TestAccessKeys::disabledButtonsStaySo() {
    QFETCH(int, key);
    QFETCH(QString, button);
    bench_->startWith(kRm5);
    bool pressed = false;
    connect(&bench_->control<QAbstractButton>(button), &QAbstractButton::pressed, this,
            [&pressed] { pressed = true; });
    press(static_cast<Qt::Key>(key), Qt::AltModifier);
    QVERIFY(!pressed);
    hand::click(bench_->control(button));
    QVERIFY(!pressed);
    QCOMPARE(bench_->journal.take(), QStringList());
    QVERIFY(bench_->wire.lines().isEmpty());
}

void TestAccessKeys::menus_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("menu");
    for (const char* page : {"BeltPack", "Active Antenna", "R-Screen"})
        QTest::addRow("Alt+F on %s", page) << page << int(Qt::Key_F) << "mnuFile";
    for (const char* page : {"BeltPack", "Active Antenna", "R-Screen"})
        QTest::addRow("Alt+H on %s", page) << page << int(Qt::Key_H) << "mnuHelp";
}

void TestAccessKeys::menus() {
    QFETCH(QString, page);
    QFETCH(int, key);
    QFETCH(QString, menu);
    bench_->startWith(kRm5);
    bench_->clickTab(page);
    press(static_cast<Qt::Key>(key), Qt::AltModifier);
    QTRY_VERIFY(isOpen(menu.toLatin1()));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activePopupWidget());
}

void TestAccessKeys::menuItems_data() {
    QTest::addColumn<int>("menuKey");
    QTest::addColumn<int>("itemKey");
    QTest::addColumn<QString>("journal");  // how its first entry begins
    QTest::newRow("File, COM Port") << int(Qt::Key_F) << int(Qt::Key_C) << kPortDialog;
    QTest::newRow("File, RF Module Type") << int(Qt::Key_F) << int(Qt::Key_R) << kModuleDialog;
    QTest::newRow("File, Exit") << int(Qt::Key_F) << int(Qt::Key_E) << "close";
    QTest::newRow("Help, About") << int(Qt::Key_H) << int(Qt::Key_A)
                                 << "box information \"About Quorvex Config\"";
}

void TestAccessKeys::menuItems() {
    QFETCH(int, menuKey);
    QFETCH(int, itemKey);
    QFETCH(QString, journal);
    bench_->startWith(kRm5);
    bench_->clickTab("R-Screen");
    for (int i = 0; i < 2; ++i)
        bench_->person.plan([](QDialog& dialog) { QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape); });
    press(static_cast<Qt::Key>(menuKey), Qt::AltModifier);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget()->windowHandle(), static_cast<Qt::Key>(itemKey));
    QTRY_VERIFY(!QApplication::activePopupWidget());
    const QStringList happened = bench_->journal.take();
    QVERIFY(!happened.isEmpty());
    QVERIFY2(happened.first().startsWith(journal), qPrintable(happened.first()));
}

// "File" in the menu bar and "Read From File" on the page both show the key F: it is the menu's.
void TestAccessKeys::fileIsTheMenus() {
    bench_->startWith(kRm5);
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(isOpen("mnuFile"));
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }
    QCOMPARE(bench_->text("CommandRead"), "Read &From File");
    QCOMPARE(bench_->journal.take(), QStringList());
}

// Both buttons of the antenna's page begin with "Read": the key goes from one to the other, and starts
// neither.
void TestAccessKeys::readIsOnTwoButtons() {
    bench_->startWith(kRm5);
    bench_->clickTab("Active Antenna");
    bench_->control("TextFmDevA").setFocus();
    QStringList focused;
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_R, Qt::AltModifier);
        focused << QApplication::focusWidget()->objectName();
    }
    QCOMPARE(focused, QStringList({"CommandRdSettingsAA", "CommandSetTbr6", "CommandRdSettingsAA"}));
    QVERIFY(bench_->wire.lines().isEmpty());
}

void TestAccessKeys::pagesDoNotShareKeys() {
    bench_->startWith(kRm5);
    bench_->clickTab("R-Screen");
    press(Qt::Key_R, Qt::AltModifier);
    press(Qt::Key_S, Qt::AltModifier);
    QCoreApplication::processEvents();
    QVERIFY(bench_->wire.lines().isEmpty());
    QCOMPARE(bench_->journal.take(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAccessKeys, QApplication)
#include "test_access_keys.moc"
