#include <QTest>

#include "link/runtime_fault.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// What the operator reads when a fault ends the program.
class TestRuntimeFault : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void report_data();
    void report();
};

void TestRuntimeFault::report_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("report");
    QTest::newRow("overflow") << 0 << "Run-time error '6':\r\n\r\nOverflow";
    QTest::newRow("subscript") << 1 << "Run-time error '9':\r\n\r\nSubscript out of range";
    QTest::newRow("type mismatch") << 2 << "Run-time error '13':\r\n\r\nType mismatch";
    QTest::newRow("property") << 3 << "Run-time error '380':\r\n\r\nInvalid property value";
    QTest::newRow("own") << 4 << "Run-time error '8005':\r\n\r\nThe port is absent";
}

void TestRuntimeFault::report() {
    QFETCH(int, kind);
    QFETCH(QString, report);
    const RuntimeFault faults[] = {RuntimeFault::overflow(), RuntimeFault::subscriptOutOfRange(),
                                   RuntimeFault::typeMismatch(), RuntimeFault::invalidPropertyValue(),
                                   RuntimeFault(8005, "The port is absent")};
    QCOMPARE(shown(faults[kind].report()), report);
}

QUORVEX_TEST(TestRuntimeFault, quorvex::NoApplication)
#include "test_runtime_fault.moc"
