#include <QTest>
#include <sstream>
#include <stdexcept>

#include "simulator/bench_file.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

class TestBenchFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void units();
    void refused_data();
    void refused();
};

void TestBenchFile::units() {
    std::istringstream text(
        "# eight units would be eight lines\n"
        "\n"
        "  beltpack --module rm5 --link ports/COM1 --set 02=27\r\n"
        "antenna --link \"my ports/COM2\" --fault no-tbr6-ack,once\n"
        "   # the end\n");
    const std::vector<Options> units = readBench(text);
    QCOMPARE(units.size(), 2U);
    QCOMPARE(units[0].linkPath, "ports/COM1");
    QVERIFY(units[0].module == RfModule::kRm5);
    QCOMPARE(units[0].values.size(), 1U);
    QCOMPARE(units[1].linkPath, "my ports/COM2");
    QVERIFY(units[1].unit == Options::UnitKind::kActiveAntenna);
    QCOMPARE(units[1].faults.size(), 1U);
}

void TestBenchFile::refused_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("sentence");
    const auto row = [](const char* name, const char* file, const char* sentence) {
        QTest::newRow(name) << QByteArray(file) << QByteArray(sentence);
    };
    row("empty", "", "There is no unit in the bench.");
    row("comments alone", "# beltpack --link a\n", "There is no unit in the bench.");
    row("no link", "\nbeltpack\n", "Line 2: Say where the port is to be found: --link PATH.");
    row("no unit", "--link a\n", "Line 1: Say which unit: beltpack or antenna.");
    row("a value that does not fit", "beltpack --link a --set 02=123\n",
        "Line 1: --set: \"123\" does not fit register 02 of the beltpack (Kirk).");
    row("twice the same link", "beltpack --link a\nantenna --link b\nantenna --link a\n",
        "Line 3: a is the link of another unit already.");
    row("a bench in a bench", "bench a\n", "Line 1: A bench has beltpacks and antennas.");
    row("a replay", "replay a --link b\n", "Line 1: A bench has beltpacks and antennas.");
    row("help", "--help\n", "Line 1: A bench has beltpacks and antennas.");
}

void TestBenchFile::refused() {
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, sentence);
    std::istringstream text(file.toStdString());
    try {
        readBench(text);
        QFAIL("It was taken.");
    } catch (const std::invalid_argument& error) {
        QCOMPARE(QByteArray(error.what()), sentence);
    }
}

QUORVEX_TEST(TestBenchFile, quorvex::NoApplication)
#include "test_bench_file.moc"
