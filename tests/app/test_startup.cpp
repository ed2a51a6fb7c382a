#include <QTest>
#include <functional>

#include "app/startup.h"
#include "link/runtime_fault.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_store.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

class FakeWindow : public PortWindow {
public:
    explicit FakeWindow(Journal& journal) : journal_(journal) {}
    void showPortLabel(const std::string& text) override { journal_.note("label " + text); }
    void showPortDialog() override {
        journal_.note("port dialog");
        if (inTheDialog)
            inTheDialog();
    }
    std::function<void()> inTheDialog;

private:
    Journal& journal_;
};

class FakeFrame : public CalibFrame {
public:
    explicit FakeFrame(Journal& journal) : journal_(journal) {}
    void apply(const CalibLayout& layout) override { journal_.note("layout " + layout.buttonCaption); }

private:
    Journal& journal_;
};

struct Fixture {
    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeStore store{journal};
    FakeConsole console{journal};
    FakeWindow window{journal};
    FakeFrame frame{journal};
    CommandLink link{port, loop, console};
    PortChoice choice{link, port, store};
    RfModule rfModule{store, {frame, frame, frame}};
    Startup startup{choice, rfModule, window};
};

const QStringList kRm5Layout{"layout Calibrate RM5 Module", "layout Calibrate RM5 Module A",
                             "layout Calibrate RM5 Module B"};
const QStringList kKirkLayout{"layout Calibrate Kirk Module", "layout Calibrate Kirk Module A",
                              "layout Calibrate Kirk Module B"};

}  // namespace

/// What happens when the window loads, and the way to another port.
class TestStartup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void opensTheStoredPort_data();
    void opensTheStoredPort();
    void fails_data();
    void fails();
    void dialogAfterAFailure_data();
    void dialogAfterAFailure();
    void dialogThatFaultsToo();
    void menu_data();
    void menu();
};

void TestStartup::opensTheStoredPort_data() {
    QTest::addColumn<QString>("comPort");
    QTest::addColumn<QString>("rfModule");
    QTest::addColumn<QStringList>("journal");
    const QString absent;
    QTest::newRow("no settings") << absent << absent << kRm5Layout + QStringList{"open COM1", "label COM1"};
    QTest::newRow("COM12, Kirk") << "12"
                                 << "1" << kKirkLayout + QStringList{"open COM12", "label COM12"};
    // A number that the dialog does not offer is opened all the same.
    QTest::newRow("COM13") << "13"
                           << "0" << kRm5Layout + QStringList{"open COM13", "label COM13"};
    QTest::newRow("plain decimal") << " 007"
                                   << "0" << kRm5Layout + QStringList{"open COM7", "label COM7"};
    QTest::newRow("type 5") << "2"
                            << "5" << kRm5Layout + QStringList{"open COM2", "label COM2"};
}

void TestStartup::opensTheStoredPort() {
    QFETCH(QString, comPort);
    QFETCH(QString, rfModule);
    QFETCH(QStringList, journal);
    Fixture at;
    if (!comPort.isNull())
        at.store.put("ComPort", comPort.toStdString());
    if (!rfModule.isNull())
        at.store.put("RfModule", rfModule.toStdString());
    at.startup.load();
    QCOMPARE(at.journal.entries(), journal);
    QVERIFY(at.port.isOpen());
}

void TestStartup::fails_data() {
    QTest::addColumn<QString>("comPort");
    QTest::addColumn<QString>("rfModule");
    QTest::addColumn<QStringList>("journal");
    const QStringList dialog{"port dialog", "label No Comms"};
    const auto box = [](const QString& number) {
        return QStringList{"box critical: Could not open COM " + number + " []"};
    };
    QTest::newRow("port cannot be opened")
        << "4"
        << "0" << kRm5Layout + QStringList{"open COM4 failed"} + box("4") + dialog;
    QTest::newRow("port that is not offered cannot be opened")
        << "13"
        << "1" << kKirkLayout + QStringList{"open COM13 failed"} + box("13") + dialog;
    QTest::newRow("port text is no number") << "COM4"
                                            << "0" << kRm5Layout + box("") + dialog;
    QTest::newRow("port text is empty") << ""
                                        << "0" << kRm5Layout + box("") + dialog;
    QTest::newRow("port number too large") << "40000"
                                           << "0" << kRm5Layout + box("") + dialog;
    // The port was not looked at before the fault, nor is it afterwards.
    QTest::newRow("module text is no number") << "4"
                                              << "Kirk" << box("") + dialog;
    QTest::newRow("module text is empty") << "4"
                                          << "" << box("") + dialog;
    QTest::newRow("module number too large") << "4"
                                             << "99999" << box("") + dialog;
    QTest::newRow("neither is a number") << "x"
                                         << "y" << box("") + dialog;
}

void TestStartup::fails() {
    QFETCH(QString, comPort);
    QFETCH(QString, rfModule);
    QFETCH(QStringList, journal);
    Fixture at;
    at.port.refuse(4);
    at.port.refuse(13);
    at.store.put("ComPort", comPort.toStdString());
    at.store.put("RfModule", rfModule.toStdString());
    at.startup.load();
    QCOMPARE(at.journal.entries(), journal);
    QVERIFY(!at.port.isOpen());
    QCOMPARE(shown(at.store.get("ComPort", "1")), comPort);
    QCOMPARE(shown(at.store.get("RfModule", "0")), rfModule);
}

void TestStartup::dialogAfterAFailure_data() {
    QTest::addColumn<int>("chosen");  // index of the item with OK; -1 for cancel
    QTest::addColumn<QStringList>("journal");
    QTest::newRow("cancel") << -1 << QStringList{"label No Comms"};
    QTest::newRow("another port") << 11 << QStringList{"open COM12", "store ComPort=12", "label COM12"};
    QTest::newRow("a port that fails too, then cancel")
        << 3 << QStringList{"open COM4 failed", "box critical: Could not open COM 4 []", "label No Comms"};
}

void TestStartup::dialogAfterAFailure() {
    QFETCH(int, chosen);
    QFETCH(QStringList, journal);
    Fixture at;
    at.store.put("ComPort", "4");
    at.port.refuse(4);
    at.window.inTheDialog = [&] {
        at.journal.take();
        if (chosen >= 0)
            at.choice.CmdOK_Click(chosen);
    };
    at.startup.load();
    QCOMPARE(at.journal.entries(), journal);
}

void TestStartup::dialogThatFaultsToo() {
    // The dialog reads the stored text again as it loads, and there nothing catches the fault.
    Fixture at;
    at.store.put("ComPort", "COM4");
    at.window.inTheDialog = [&] { at.choice.preselected(); };
    int fault = 0;
    try {
        at.startup.load();
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, 13);
    QCOMPARE(at.journal.entries().last(), "port dialog");
}

void TestStartup::menu_data() {
    QTest::addColumn<bool>("wasOpen");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<QStringList>("journal");
    QTest::newRow("open, cancel") << true << -1 << QStringList{"port dialog", "label COM2"};
    QTest::newRow("closed, cancel") << false << -1 << QStringList{"port dialog", "label No Comms"};
    QTest::newRow("open, another port")
        << true << 4 << QStringList{"port dialog", "close", "open COM5", "store ComPort=5", "label COM5"};
    QTest::newRow("closed, another port")
        << false << 4 << QStringList{"port dialog", "open COM5", "store ComPort=5", "label COM5"};
    QTest::newRow("open, a port that fails, cancel")
        << true << 3
        << QStringList{"port dialog", "close", "open COM4 failed", "box critical: Could not open COM 4 []",
                       "label No Comms"};
}

void TestStartup::menu() {
    QFETCH(bool, wasOpen);
    QFETCH(int, chosen);
    QFETCH(QStringList, journal);
    Fixture at;
    at.store.put("ComPort", "2");
    at.port.refuse(4);
    if (wasOpen)
        at.port.holdOpen();
    at.window.inTheDialog = [&] {
        if (chosen >= 0)
            at.choice.CmdOK_Click(chosen);
    };
    at.startup.mnuComPort_Click();
    QCOMPARE(at.journal.entries(), journal);
}

QUORVEX_TEST(TestStartup, quorvex::NoApplication)
#include "test_startup.moc"
