#include <QTest>

#include "tests/faults/pair.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr qsizetype kMostShown = 12;

/// The read of that unit.
const TestedOperation& readOf(UnitKind unit) {
    for (const TestedOperation& operation : testedOperations()) {
        if (operation.unit == unit && operation.name.starts_with("Read "))
            return operation;
    }
    qFatal("no read");
}

}  // namespace

/// Every operation with every other, and with every event, in each of its waits.
class TestPairs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cells_data();
    void cells();
};

void TestPairs::cells_data() {
    QTest::addColumn<std::size_t>("operation");
    for (std::size_t i = 0; i < testedOperations().size(); ++i)
        QTest::newRow(testedOperations()[i].name.c_str()) << i;
}

void TestPairs::cells() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    const CleanRun first(tested);
    const CleanRun read(readOf(tested.unit));
    int cells = 0;
    QStringList complaints;
    for (const Second& second : seconds()) {
        if (!second.fits(tested.unit))
            continue;
        const PairResult result = runPair(first, read, second);
        QVERIFY2(result.cells > 0, second.name.c_str());
        cells += result.cells;
        complaints += result.complaints;
    }
    qInfo("%d cells", cells);
    QVERIFY2(complaints.isEmpty(),
             qPrintable(QString("%1 complaints\n").arg(complaints.size()) +
                        complaints.first(qMin(kMostShown, complaints.size())).join('\n')));
}

QUORVEX_TEST(TestPairs, quorvex::NoApplication)
#include "test_pairs.moc"
