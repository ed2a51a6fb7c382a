#include <QFile>
#include <QTest>
#include <map>

#include "tests/faults/fault_page.h"
#include "tests/faults/matrix.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr qsizetype kMostComplaintsShown = 12;

/// Runs its cells when it is first asked for.
const MatrixSection& section(std::size_t operation) {
    static std::map<std::size_t, MatrixSection> sections;
    const auto found = sections.find(operation);
    if (found != sections.end())
        return found->second;
    return sections.emplace(operation, MatrixSection(testedOperations().at(operation))).first->second;
}

}  // namespace

/// Every operation crossed with every fault at every line.
class TestFaultMatrix : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanRun_data() { rows(); }
    void cleanRun();
    void cells_data() { rows(); }
    void cells();
    void page();

private:
    static void rows();
};

void TestFaultMatrix::rows() {
    QTest::addColumn<std::size_t>("operation");
    for (std::size_t i = 0; i < testedOperations().size(); ++i)
        QTest::newRow(testedOperations()[i].name.c_str()) << i;
}

void TestFaultMatrix::cleanRun() {
    QFETCH(std::size_t, operation);
    const TestedOperation& tested = testedOperations()[operation];
    Workshop shop(tested.unit);
    tested.fill(shop);
    tested.run(shop);
    const QStringList statuses = shop.journal.entriesOf("status ");
    QCOMPARE(statuses.isEmpty() ? QString() : statuses.last(), QString(tested.success));
    QCOMPARE(shop.journal.entriesOf("box "), QStringList());
    const CleanRun clean(tested);
    QVERIFY(clean.before() != clean.after());
    QVERIFY(!clean.outcome().text().contains("UNKNOWN"));
}

void TestFaultMatrix::cells() {
    QFETCH(std::size_t, operation);
    const MatrixSection& crossed = section(operation);
    const QStringList& complaints = crossed.complaints();
    qInfo("%d cells", crossed.cells());
    QVERIFY2(complaints.isEmpty(),
             qPrintable(QString("%1 complaints\n").arg(complaints.size()) +
                        complaints.first(qMin(kMostComplaintsShown, complaints.size())).join('\n')));
}

void TestFaultMatrix::page() {
    std::vector<const MatrixSection*> all;
    for (std::size_t i = 0; i < testedOperations().size(); ++i)
        all.push_back(&section(i));
    const QByteArray page = faultPage(all).toUtf8();
    QFile file(QUORVEX_FAULT_PAGE);
    if (qEnvironmentVariableIsSet("QUORVEX_WRITE_FAULTS")) {
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(page) == page.size());
        return;
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> written = file.readAll().split('\n');
    const QList<QByteArray> now = page.split('\n');
    for (qsizetype i = 0; i < qMin(written.size(), now.size()); ++i)
        QCOMPARE(now[i], written[i]);
    QCOMPARE(now.size(), written.size());
}

QUORVEX_TEST(TestFaultMatrix, quorvex::NoApplication)
#include "test_fault_matrix.moc"
