#include <QTest>
#include <algorithm>

#include "link/serial_port_order.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// Which device counts as COM1, COM2, ...
class TestSerialPortOrder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void orders_data();
    void orders();
};

void TestSerialPortOrder::orders_data() {
    QTest::addColumn<QStringList>("inOrder");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"ttyUSB0"};
    QTest::newRow("by number, not by letter")
        << QStringList{"ttyS0", "ttyS1", "ttyS2", "ttyS9", "ttyS10", "ttyS11", "ttyS100"};
    QTest::newRow("USB by number") << QStringList{"ttyUSB1", "ttyUSB2", "ttyUSB10"};
    QTest::newRow("kinds") << QStringList{"ttyS0", "ttyS4", "ttyUSB0", "ttyUSB3", "ttyACM0", "ttyACM1"};
    QTest::newRow("built-in of several makes") << QStringList{"ttyAMA0", "ttyAMA1", "ttyS0", "ttyUSB0"};
    QTest::newRow("other kinds") << QStringList{"ttyS0",   "ttyUSB0", "ttyACM0", "ttyGS0",
                                                "rfcomm0", "rfcomm1", "tnt0"};
    QTest::newRow("number alone") << QStringList{"7", "30", "ttyS0"};
    QTest::newRow("zeros in front") << QStringList{"ttyS0", "ttyS007", "ttyS10", "ttyS0011"};
    QTest::newRow("without a number") << QStringList{"ttyS0", "ttyUSB", "ttyACM"};
}

void TestSerialPortOrder::orders() {
    QFETCH(QStringList, inOrder);
    std::vector<std::string> names;
    for (const QString& name : inOrder)
        names.push_back(name.toStdString());
    std::sort(names.begin(), names.end(), std::greater<>());
    QStringList result;
    for (const std::string& name : inPortOrder(names))
        result.append(fromLatin1(name));
    QCOMPARE(result, inOrder);
    std::sort(names.begin(), names.end());
    result.clear();
    for (const std::string& name : inPortOrder(names))
        result.append(fromLatin1(name));
    QCOMPARE(result, inOrder);
}

QUORVEX_TEST(TestSerialPortOrder, quorvex::NoApplication)
#include "test_serial_port_order.moc"
