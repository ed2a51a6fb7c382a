#include <QTest>
#include <functional>

#include "calibration/rf_module.h"
#include "link/runtime_fault.h"
#include "tests/support/fake_store.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

/// Notes what it is laid out for: "A: Calibrate RM5 Module A, ...".
class FakeFrame : public CalibFrame {
public:
    FakeFrame(Journal& journal, const char* name) : journal_(journal), name_(name) {}
    void apply(const CalibLayout& layout) override {
        journal_.note(name_ + ": " + layout.buttonCaption + (layout.kirkControls ? ", Kirk" : ", plain") +
                      ", mid " + std::to_string(layout.midLeft.value) + " " +
                      std::to_string(layout.midTop.value));
        labelTop = layout.labelTop.value;
    }
    int labelTop = -1;

private:
    Journal& journal_;
    std::string name_;
};

/// Does as the operator is told to.
class FakeDialog : public RfModuleDialog {
public:
    FakeDialog(bool picksKirk, bool ok) : picksKirk_(picksKirk), ok_(ok) {}
    bool pick(bool& kirk) override {
        openedWithKirk = kirk;
        ++timesShown;
        if (whileShown)
            whileShown();
        kirk = picksKirk_;
        return ok_;
    }
    bool openedWithKirk = false;
    int timesShown = 0;
    std::function<void()> whileShown;

private:
    bool picksKirk_;
    bool ok_;
};

struct Fixture {
    Journal journal;
    FakeStore store{journal};
    FakeFrame beltpack{journal, "BP"}, moduleA{journal, "A"}, moduleB{journal, "B"};
    RfModule module{store, {beltpack, moduleA, moduleB}};
};

const QStringList kRm5Layout{"BP: Calibrate RM5 Module, plain, mid 1920 960",
                             "A: Calibrate RM5 Module A, plain, mid 1920 960",
                             "B: Calibrate RM5 Module B, plain, mid 1920 960"};
const QStringList kKirkLayout{"BP: Calibrate Kirk Module, Kirk, mid 1080 1320",
                              "A: Calibrate Kirk Module A, Kirk, mid 1080 1320",
                              "B: Calibrate Kirk Module B, Kirk, mid 1080 1320"};

constexpr const char* kAbsent = nullptr;

void put(FakeStore& store, const QString& stored) {
    if (!stored.isNull())
        store.put("RfModule", stored.toStdString());
}

}  // namespace

/// The type of radio module: stored, picked, detected, laid out for.
class TestRfModule : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loads_data();
    void loads();
    void refusesStoredText_data();
    void refusesStoredText();
    void layouts_data();
    void layouts();
    void changes();
    void menu_data();
    void menu();
    void menuReadsTheStoreAgain();
    void menuWithBadText();
    void changedWhileTheDialogIsOpen();
};

void TestRfModule::loads_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("kirk");
    QTest::newRow("absent") << QString(kAbsent) << 0 << false;
    QTest::newRow("0") << "0" << 0 << false;
    QTest::newRow("1") << "1" << 1 << true;
    QTest::newRow("blanks around") << " 1 " << 1 << true;
    // Only 1 is the Kirk everywhere but in the dialog.
    QTest::newRow("5") << "5" << 5 << false;
    QTest::newRow("-1") << "-1" << -1 << false;
}

void TestRfModule::loads() {
    QFETCH(QString, stored);
    QFETCH(int, type);
    QFETCH(bool, kirk);
    Fixture at;
    put(at.store, stored);
    at.module.load();
    QCOMPARE(static_cast<int>(at.module.type()), type);
    // Nothing is stored: an absent key stays absent.
    QCOMPARE(at.journal.entries(), kirk ? kKirkLayout : kRm5Layout);
}

void TestRfModule::refusesStoredText_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("fault");
    QTest::newRow("text") << "Kirk" << 13;
    QTest::newRow("empty") << "" << 13;
    QTest::newRow("too large") << "40000" << 6;
}

void TestRfModule::refusesStoredText() {
    QFETCH(QString, stored);
    QFETCH(int, fault);
    Fixture at;
    put(at.store, stored);
    int thrown = 0;
    try {
        at.module.load();
    } catch (const RuntimeFault& caught) {
        thrown = caught.number();
    }
    QCOMPARE(thrown, fault);
    QCOMPARE(static_cast<int>(at.module.type()), 0);
    QCOMPARE(at.journal.entries(), QStringList());
}

void TestRfModule::layouts_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("kirk");
    QTest::newRow("RM5") << 0 << false;
    QTest::newRow("Kirk") << 1 << true;
    QTest::newRow("2") << 2 << false;
    QTest::newRow("-1") << -1 << false;
}

void TestRfModule::layouts() {
    QFETCH(int, type);
    QFETCH(bool, kirk);
    Fixture at;
    at.module.SetupCalibLayout(static_cast<std::int16_t>(type));
    QCOMPARE(at.journal.entries(), kirk ? kKirkLayout : kRm5Layout);
    QCOMPARE(at.beltpack.labelTop, kirk ? 1020 : 1000);
    // Laying out decides nothing: the type is what it was.
    QCOMPARE(static_cast<int>(at.module.type()), 0);
}

void TestRfModule::changes() {
    Fixture at;
    at.module.change(1);
    QCOMPARE(static_cast<int>(at.module.type()), 1);
    QCOMPARE(at.journal.take(), QStringList{"store RfModule=1"} + kKirkLayout);
    at.module.change(0);
    QCOMPARE(static_cast<int>(at.module.type()), 0);
    QCOMPARE(at.journal.take(), QStringList{"store RfModule=0"} + kRm5Layout);
}

void TestRfModule::menu_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("opensWithKirk");
    QTest::addColumn<bool>("picksKirk");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("storedAfter");
    QTest::newRow("none stored, OK") << QString(kAbsent) << false << false << true << "0";
    QTest::newRow("none stored, Kirk picked") << QString(kAbsent) << false << true << true << "1";
    QTest::newRow("none stored, cancel") << QString(kAbsent) << false << true << false << "0";
    QTest::newRow("Kirk, RM5 picked") << "1" << true << false << true << "0";
    QTest::newRow("Kirk, cancel") << "1" << true << false << false << "1";
    QTest::newRow("RM5, cancel") << "0" << false << true << false << "0";
    QTest::newRow("5, OK") << "5" << true << true << true << "1";
    QTest::newRow("5, RM5 picked") << "5" << true << false << true << "0";
    QTest::newRow("5, cancel") << "5" << true << true << false << "5";
}

void TestRfModule::menu() {
    QFETCH(QString, stored);
    QFETCH(bool, opensWithKirk);
    QFETCH(bool, picksKirk);
    QFETCH(bool, ok);
    QFETCH(QString, storedAfter);
    Fixture at;
    put(at.store, stored);
    at.module.load();
    at.journal.take();
    FakeDialog dialog(picksKirk, ok);
    at.module.mnuRfModule_Click(dialog);
    QCOMPARE(dialog.timesShown, 1);
    QCOMPARE(dialog.openedWithKirk, opensWithKirk);
    QCOMPARE(static_cast<int>(at.module.type()), storedAfter.toInt());
    // Stored and laid out whatever the operator did.
    QCOMPARE(at.journal.entries(),
             QStringList{"store RfModule=" + storedAfter} + (storedAfter == "1" ? kKirkLayout : kRm5Layout));
}

void TestRfModule::menuReadsTheStoreAgain() {
    // What the dialog opens with is what is stored now; what a cancel stores is what the program holds.
    Fixture at;
    at.module.load();
    at.store.put("RfModule", "1");
    FakeDialog dialog(true, false);
    at.module.mnuRfModule_Click(dialog);
    QVERIFY(dialog.openedWithKirk);
    QCOMPARE(shown(at.store.get("RfModule", "")), "0");
}

void TestRfModule::menuWithBadText() {
    Fixture at;
    at.module.load();
    at.store.put("RfModule", "Kirk");
    at.journal.take();
    FakeDialog dialog(true, true);
    QVERIFY_EXCEPTION_THROWN(at.module.mnuRfModule_Click(dialog), RuntimeFault);
    QCOMPARE(at.journal.entries(), QStringList());
    QCOMPARE(static_cast<int>(at.module.type()), 0);
}

void TestRfModule::changedWhileTheDialogIsOpen() {
    // A read that is under way finds its module while the dialog is open; a cancel stores what it found.
    Fixture at;
    at.module.load();
    FakeDialog dialog(false, false);
    dialog.whileShown = [&] { at.module.change(1); };
    at.module.mnuRfModule_Click(dialog);
    QCOMPARE(static_cast<int>(at.module.type()), 1);
    QCOMPARE(shown(at.store.get("RfModule", "")), "1");
}

QUORVEX_TEST(TestRfModule, quorvex::NoApplication)
#include "test_rf_module.moc"
