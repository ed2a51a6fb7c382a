#include <QSerialPort>
#include <QTest>

#include "link/port_trial.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"

namespace quorvex {

/// What stands in the way of a port, by the word of the toolkit alone.
class TestPortTrial : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void free();
    void inUse();
    void absent();
    void noPort();

private:
    static PortState stateOf(const QString& path) { return tryPort({path, path}); }
};

void TestPortTrial::free() {
    const PseudoTerminal terminal;
    // And again: nothing is left behind.
    for (int i = 0; i < 2; ++i) {
        const PortState state = stateOf(terminal.path());
        QVERIFY(state.kind == PortState::Kind::free);
        QCOMPARE(state.device.path, terminal.path());
        QCOMPARE(state.advice, "");
    }
}

void TestPortTrial::inUse() {
    const PseudoTerminal terminal;
    QSerialPort other(terminal.path());
    QVERIFY(other.open(QIODevice::ReadWrite));
    const PortState state = stateOf(terminal.path());
    QVERIFY(state.kind == PortState::Kind::inUse);
    QCOMPARE(
        state.advice,
        "In use by another program, or no rights: close that program first, or ask for the right to open "
        "the port.");
    other.close();
    QVERIFY(stateOf(terminal.path()).kind == PortState::Kind::free);
}

void TestPortTrial::absent() {
    const PortState state = stateOf("/dev/none");
    QVERIFY(state.kind == PortState::Kind::absent);
    QCOMPARE(state.advice, "Absent: connect the adapter, or choose another port.");
}

// There is something, and it does not open as a port does.
void TestPortTrial::noPort() {
    const PortState state = stateOf("/dev/null");
    QVERIFY(state.kind == PortState::Kind::absent);
    QVERIFY2(state.advice.startsWith("Not working (") &&
                 state.advice.endsWith("): connect the adapter anew, or choose another port."),
             qPrintable(state.advice));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortTrial, QCoreApplication)
#include "test_port_trial.moc"
