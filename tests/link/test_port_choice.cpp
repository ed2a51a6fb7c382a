#include <QTest>

#include "link/port_choice.h"
#include "link/runtime_fault.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_store.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

struct Fixture {
    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeStore store{journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    PortChoice choice{link, port, store};
};

constexpr const char* kAbsent = nullptr;

void put(FakeStore& store, const QString& stored) {
    if (!stored.isNull())
        store.put("ComPort", stored.toStdString());
}

}  // namespace

/// The stored port number and the choice of another one.
class TestPortChoice : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedNumber_data();
    void storedNumber();
    void storedNumberRefused_data();
    void storedNumberRefused();
    void readsTheStoreEachTime();
    void preselects_data();
    void preselects();
    void okOpensAndStores_data();
    void okOpensAndStores();
    void okClosesTheOpenPortFirst();
    void okOnAPortThatFails_data();
    void okOnAPortThatFails();
    void label_data();
    void label();
    void labelOfBadText();
    void reports();
};

void TestPortChoice::storedNumber_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("number");
    QTest::newRow("absent") << QString(kAbsent) << 1;
    QTest::newRow("3") << "3" << 3;
    QTest::newRow("12") << "12" << 12;
    QTest::newRow("more than offered") << "13" << 13;
    QTest::newRow("0") << "0" << 0;
    QTest::newRow("blanks around") << " 7 " << 7;
    QTest::newRow("fraction is rounded") << "3.6" << 4;
    QTest::newRow("largest") << "32767" << 32767;
}

void TestPortChoice::storedNumber() {
    QFETCH(QString, stored);
    QFETCH(int, number);
    Fixture at;
    put(at.store, stored);
    QCOMPARE(static_cast<int>(at.choice.GetComPort()), number);
}

void TestPortChoice::storedNumberRefused_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("fault");
    QTest::newRow("text") << "COM3" << 13;
    QTest::newRow("number and text") << "3rd" << 13;
    QTest::newRow("empty") << "" << 13;
    QTest::newRow("blank") << "   " << 13;
    QTest::newRow("above 16 bits") << "32768" << 6;
    QTest::newRow("far above") << "99999999999999999999" << 6;
    QTest::newRow("below 16 bits") << "-32769" << 6;
}

void TestPortChoice::storedNumberRefused() {
    QFETCH(QString, stored);
    QFETCH(int, fault);
    Fixture at;
    put(at.store, stored);
    int thrown = 0;
    try {
        at.choice.GetComPort();
    } catch (const RuntimeFault& caught) {
        thrown = caught.number();
    }
    QCOMPARE(thrown, fault);
    thrown = 0;
    try {
        at.choice.preselected();
    } catch (const RuntimeFault& caught) {
        thrown = caught.number();
    }
    QCOMPARE(thrown, fault);
}

void TestPortChoice::readsTheStoreEachTime() {
    Fixture at;
    QCOMPARE(static_cast<int>(at.choice.GetComPort()), 1);
    at.store.put("ComPort", "4");
    QCOMPARE(static_cast<int>(at.choice.GetComPort()), 4);
    QCOMPARE(at.choice.preselected(), 3);
}

void TestPortChoice::preselects_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("fault");
    QTest::newRow("absent: COM1") << QString(kAbsent) << 0 << 0;
    QTest::newRow("COM1") << "1" << 0 << 0;
    QTest::newRow("COM12") << "12" << 11 << 0;
    // The drop-down has twelve items.
    QTest::newRow("13") << "13" << 0 << 380;
    QTest::newRow("32767") << "32767" << 0 << 380;
    QTest::newRow("0: none") << "0" << -1 << 0;
    QTest::newRow("-1") << "-1" << 0 << 380;
    QTest::newRow("-32768") << "-32768" << 0 << 380;
}

void TestPortChoice::preselects() {
    QFETCH(QString, stored);
    QFETCH(int, index);
    QFETCH(int, fault);
    Fixture at;
    put(at.store, stored);
    try {
        QCOMPARE(at.choice.preselected(), index);
        QCOMPARE(0, fault);
    } catch (const RuntimeFault& caught) {
        QCOMPARE(caught.number(), fault);
    }
}

void TestPortChoice::okOpensAndStores_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("journal");
    QTest::addColumn<QString>("label");
    QTest::newRow("COM1") << 0 << QStringList{"open COM1", "store ComPort=1"} << "COM1";
    QTest::newRow("COM12") << 11 << QStringList{"open COM12", "store ComPort=12"} << "COM12";
}

void TestPortChoice::okOpensAndStores() {
    QFETCH(int, index);
    QFETCH(QStringList, journal);
    QFETCH(QString, label);
    Fixture at;
    QVERIFY(at.choice.CmdOK_Click(index));
    QCOMPARE(at.journal.entries(), journal);
    QVERIFY(at.port.isOpen());
    QCOMPARE(shown(at.choice.labelAfterDialog()), label);
}

void TestPortChoice::okClosesTheOpenPortFirst() {
    Fixture at;
    at.port.holdOpen();
    at.store.put("ComPort", "2");
    QVERIFY(at.choice.CmdOK_Click(1));
    // The same number again is a way to connect anew.
    QCOMPARE(at.journal.entries(), QStringList({"close", "open COM2", "store ComPort=2"}));
}

void TestPortChoice::okOnAPortThatFails_data() {
    QTest::addColumn<bool>("wasOpen");
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("journal");
    const QString box = "box critical: Could not open COM 5 []";
    QTest::newRow("port was open") << true << 4 << QStringList{"close", "open COM5 failed", box};
    QTest::newRow("port was closed") << false << 4 << QStringList{"open COM5 failed", box};
    QTest::newRow("nothing selected")
        << false << -1 << QStringList{"open COM0 failed", "box critical: Could not open COM 0 []"};
}

void TestPortChoice::okOnAPortThatFails() {
    QFETCH(bool, wasOpen);
    QFETCH(int, index);
    QFETCH(QStringList, journal);
    Fixture at;
    if (wasOpen)
        at.port.holdOpen();
    at.store.put("ComPort", "2");
    at.port.refuse(5);
    at.port.refuse(0);
    QVERIFY(!at.choice.CmdOK_Click(index));
    QCOMPARE(at.journal.take(), journal);
    QVERIFY(!at.port.isOpen());
    QCOMPARE(shown(at.store.get("ComPort", "1")), "2");
    QCOMPARE(shown(at.choice.labelAfterDialog()), "No Comms");
    // Another one can be picked at once.
    QVERIFY(at.choice.CmdOK_Click(2));
    QCOMPARE(at.journal.entries(), QStringList({"open COM3", "store ComPort=3"}));
}

void TestPortChoice::label_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("open");
    QTest::addColumn<QString>("label");
    QTest::newRow("open, none stored") << QString(kAbsent) << true << "COM1";
    QTest::newRow("open") << "3" << true << "COM3";
    QTest::newRow("plain decimal") << " 03 " << true << "COM3";
    QTest::newRow("closed") << "3" << false << "No Comms";
    // What is stored is not looked at while the port is closed.
    QTest::newRow("closed, bad text") << "x" << false << "No Comms";
}

void TestPortChoice::label() {
    QFETCH(QString, stored);
    QFETCH(bool, open);
    QFETCH(QString, label);
    Fixture at;
    put(at.store, stored);
    if (open)
        at.port.holdOpen();
    QCOMPARE(shown(at.choice.labelAfterDialog()), label);
}

void TestPortChoice::labelOfBadText() {
    Fixture at;
    at.port.holdOpen();
    at.store.put("ComPort", "x");
    QVERIFY_EXCEPTION_THROWN(at.choice.labelAfterDialog(), RuntimeFault);
}

void TestPortChoice::reports() {
    Fixture at;
    at.choice.reportNotOpened("7");
    at.choice.reportNotOpened("");
    QCOMPARE(at.journal.entries(),
             QStringList({"box critical: Could not open COM 7 []", "box critical: Could not open COM  []"}));
}

QUORVEX_TEST(TestPortChoice, quorvex::NoApplication)
#include "test_port_choice.moc"
