#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <sstream>

#include "simulator/replay.h"
#include "tests/faults/operations.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

QString traceFile(const TestedOperation& operation) {
    static const QRegularExpression notInNames("[^a-z0-9]+");
    return QUORVEX_TRACES "/" + QString(operation.name.c_str()).toLower().replace(notInNames, "-") + ".trace";
}

/// What passes over the port in one run.
QByteArray traceOf(const TestedOperation& operation, Workshop& shop) {
    operation.fill(shop);
    operation.run(shop);
    shop.trace.close();
    QByteArray text;
    for (const std::string& line : shop.traced)
        text += QByteArray(line.c_str()) + '\n';
    return text;
}

}  // namespace

/// A recorded trace of each operation: what it is today, and what the operation makes of it when it is
/// replayed.
class TestTraces : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recorded_data() { rows(); }
    void recorded();
    void replayed_data() { rows(); }
    void replayed();

private:
    static void rows();
};

void TestTraces::rows() {
    QTest::addColumn<std::size_t>("operation");
    for (std::size_t i = 0; i < testedOperations().size(); ++i)
        QTest::newRow(testedOperations()[i].name.c_str()) << i;
}

void TestTraces::recorded() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    Workshop shop(tested.unit);
    const QByteArray trace = traceOf(tested, shop);
    QFile file(traceFile(tested));
    if (qEnvironmentVariableIsSet("QUORVEX_WRITE_TRACES")) {
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(trace) == trace.size());
        return;
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(trace.split('\n'), file.readAll().split('\n'));
}

void TestTraces::replayed() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    QFile file(traceFile(tested));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray trace = file.readAll();
    std::istringstream text(trace.toStdString());
    sim::Replay replay(text);
    Workshop original(tested.unit), shop(tested.unit, 0, &replay);
    replay.opened(shop.loop.ticks());
    traceOf(tested, original);
    QCOMPARE(traceOf(tested, shop).split('\n'), trace.split('\n'));
    QCOMPARE(shop.journal.entries(), original.journal.entries());
}

QUORVEX_TEST(TestTraces, quorvex::NoApplication)
#include "test_traces.moc"
