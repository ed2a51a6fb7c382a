#include "tests/app/port_dialog_hand.h"
#include "tests/support/bench.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"

namespace quorvex {

/// What the port label's hover text says after the start, where ports are links to devices.
class TestPortHover : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void afterTheStart_data();
    void afterTheStart();
};

void TestPortHover::afterTheStart_data() {
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("module");  // as stored
    QTest::addColumn<QString>("hover");   // "%1" is the device
    const QString why =
        "Not open: close any other program that uses it, then choose the port again in the menu.";
    QTest::newRow("open") << true << true << "0"
                          << "%1";
    QTest::newRow("there, but not open") << true << false << "0"
                                         << "%1\n" + why;
    QTest::newRow("absent") << false << false << "0"
                            << "%1\nAbsent: connect the adapter, or choose another port.";
    QTest::newRow("none was tried") << true << false << "abc"
                                    << "";
}

void TestPortHover::afterTheStart() {
    QFETCH(bool, isThere);
    QFETCH(bool, opens);
    QFETCH(QString, module);
    QFETCH(QString, hover);
    Bench bench;
    const PseudoTerminal terminal;
    const QString link = bench.noPorts.filePath("COM3");
    if (isThere)
        QVERIFY(terminal.linkAs(link));
    bench.store.put("ComPort", "3");
    bench.store.put("RfModule", module.toStdString());
    bench.wire.refuse(3, !opens);
    if (!opens)
        bench.person.plan([](QDialog& dialog) { press(dialog, "CmdCancel"); });
    bench.start();
    QCOMPARE(bench.control("LabelComPort").toolTip(), hover.replace("%1", isThere ? terminal.path() : link));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortHover, QApplication)
#include "test_port_hover.moc"
