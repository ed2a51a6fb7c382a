#include <QTest>

#include "beltpack/production_values.h"
#include "link/runtime_fault.h"
#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

struct ProductionBench : WriteBench {
    /// Lets the unit answer what the image is going to hold, so that the write verifies.
    void expectDigits(const QMap<int, QString>& changed) {
        for (auto it = changed.begin(); it != changed.end(); ++it)
            setDigits(it.key(), it.value().toStdString());
    }
    QStringList changedFrom(const QStringList& before) const {
        QStringList changed;
        const QStringList now = values();
        for (int i = 0; i <= 20; ++i) {
            if (now[i] != before[i])
                changed << QString("%1: %2").arg(i).arg(now[i]);
        }
        return changed;
    }

    ProductionValues production{link, image, write};
};

const QString kFlagLine = "> # 027E01";
const QMap<int, QString> kRevisions01{{3, "30"}, {4, "00"}, {5, "00"},  {6, "01"},  {7, "02"},
                                      {8, "03"}, {9, "00"}, {11, "01"}, {14, "00"}, {18, "00"}};
const QMap<int, QString> kRevision2{{3, "24"}, {4, "00"},  {5, "00"},  {6, "01"},  {7, "08"}, {8, "03"},
                                    {9, "00"}, {10, "13"}, {11, "01"}, {14, "00"}, {18, "00"}};

}  // namespace

/// The button "Set Production Values".
class TestProductionValues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fills_data();
    void fills();
    void controlsStay();
    void fillsNothing_data();
    void fillsNothing();
    void unavailableFeatureMap();
    void notBeforeARead_data();
    void notBeforeARead();
    void emptyImage();
    void insideARead();
    void writeFails_data();
    void writeFails();
    void notVerified();
    void portGone();
};

void TestProductionValues::fills_data() {
    QTest::addColumn<QString>("revision");
    QTest::addColumn<QMap<int, QString>>("set");
    QTest::newRow("revision 0") << "00" << kRevisions01;
    QTest::newRow("revision 1") << "01" << kRevisions01;
    QTest::newRow("revision 2") << "02" << kRevision2;
    QTest::newRow("one digit") << "2" << kRevision2;
    QTest::newRow("blank before the number") << " 2" << kRevision2;
    QTest::newRow("no number counts as 0") << "XY" << kRevisions01;
    QTest::newRow("blank counts as 0") << "" << kRevisions01;
    QTest::newRow("rounded down") << "1.4" << kRevisions01;
    QTest::newRow("rounded up") << "1.6" << kRevision2;
}

void TestProductionValues::fills() {
    QFETCH(QString, revision);
    using Values = QMap<int, QString>;
    QFETCH(Values, set);
    ProductionBench bench;
    bench.readUnit();
    QStringList lines;
    // Values that no production value equals.
    for (int i = 3; i <= 19; ++i) {
        bench.image[i].value = i == 13 ? "EEEEEEEEEE" : "EE";
        bench.setDigits(i, i == 13 ? "EEEEEEEEEE" : "EE");
    }
    bench.image[20].value = revision.toStdString();
    bench.setDigits(20, revision.leftJustified(2).left(2).toStdString());
    bench.expectDigits(set);
    QStringList expected = bench.values();
    for (auto it = set.begin(); it != set.end(); ++it)
        expected[it.key()] = it.value().leftJustified(10);
    for (int i = 0; i <= 20; ++i)
        lines << kWriteLines[i].left(8) + expected[i] << kReadBackLines[i];

    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.values(), expected);
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten + QStringList{kFlagLine});
}

void TestProductionValues::controlsStay() {
    ProductionBench bench;
    bench.readUnit();
    bench.editors.optionMICElectret_Click();
    bench.journal.take();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.mic.selected(), 2);
    QCOMPARE(bench.batteryAlarm.value(), 1);
    for (const char* control : {"option", "check", "BP", "Text"})
        QCOMPARE(bench.journal.entriesOf(control), QStringList());
}

void TestProductionValues::fillsNothing_data() {
    QTest::addColumn<QString>("available");
    QTest::addColumn<QString>("revision");
    QTest::newRow("revision 3") << "1"
                                << "03";
    QTest::newRow("revision 99") << "1"
                                 << "99";
    QTest::newRow("negative") << "1"
                              << "-1";
    QTest::newRow("rounded up to 3") << "1"
                                     << "2.6";
    QTest::newRow("not available") << "0"
                                   << "02";
    QTest::newRow("available is another number") << "2"
                                                 << "02";
}

void TestProductionValues::fillsNothing() {
    QFETCH(QString, available);
    QFETCH(QString, revision);
    ProductionBench bench;
    bench.readUnit();
    bench.image[20].available = available.toStdString();
    bench.image[20].value = revision.toStdString();
    bench.setDigits(20, revision.left(2).toStdString());
    const QStringList before = bench.values();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.changedFrom(before), QStringList());
    QStringList lines = exchanges(0, 19);
    if (available == "1")
        lines << kWriteLines[20].left(8) + revision.leftJustified(10) << kReadBackLines[20];
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten + QStringList{kFlagLine});
}

void TestProductionValues::unavailableFeatureMap() {
    ProductionBench bench;
    bench.connectRm5();
    bench.silenceParameter(20);
    bench.read.CommandRdSettingsBp_Click();
    bench.journal.take();
    const QStringList before = bench.values();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.changedFrom(before), QStringList());
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 19) + kWritten + QStringList{kFlagLine});
}

// The fault is not caught here, and nothing has happened then.
void TestProductionValues::notBeforeARead_data() {
    QTest::addColumn<bool>("loaded");
    QTest::newRow("after start-up") << false;
    QTest::newRow("after a file load alone") << true;
}

void TestProductionValues::notBeforeARead() {
    QFETCH(bool, loaded);
    ProductionBench bench;
    bench.connectRm5();
    if (loaded) {
        for (int i = 0; i <= 20; ++i)
            bench.image[i].value = "02";
    }
    const QStringList before = bench.values();
    QVERIFY_EXCEPTION_THROWN(bench.production.buttonSetProdSettiings_Click(), RuntimeFault);
    try {
        bench.production.buttonSetProdSettiings_Click();
    } catch (const RuntimeFault& fault) {
        QCOMPARE(fault.number(), 13);
        QCOMPARE(shown(fault.description()), "Type mismatch");
    }
    QCOMPARE(bench.changedFrom(before), QStringList());
    QCOMPARE(bench.journal.entries(), QStringList());
}

// A read that failed at its start has emptied the image, but what is available is still known.
// The read would go on over the values, and some of them would stay.
void TestProductionValues::insideARead() {
    ProductionBench bench;
    bench.readUnit();
    const SettingsImage::Filling read(bench.image);
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.journal.entries(), QStringList({kNeverFilled, kFlagLine}));
    QCOMPARE(bench.values(), QStringList(21, QString(10, ' ')));
}

void TestProductionValues::emptyImage() {
    ProductionBench bench;
    bench.readUnit();
    bench.silenceParameter(0);
    bench.read.CommandRdSettingsBp_Click();
    bench.journal.take();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.journal.entries(), QStringList({kNeverFilled, kFlagLine}));
    QCOMPARE(shown(bench.image[3].value.str()), "30        ");
}

void TestProductionValues::writeFails_data() {
    QTest::addColumn<int>("record");
    QTest::newRow("at the first") << 0;
    QTest::newRow("half-way") << 7;
    QTest::newRow("at the last") << 20;
}

void TestProductionValues::writeFails() {
    QFETCH(int, record);
    ProductionBench bench;
    bench.readUnit();
    bench.image[20].value = "03";
    bench.setDigits(20, "03");
    bench.silenceParameter(record);
    bench.production.buttonSetProdSettiings_Click();
    QStringList lines = exchanges(0, record);
    if (record == 20)
        lines[40] = "> # 025503        ";
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kNotWritten + QStringList{kFlagLine});
}

void TestProductionValues::notVerified() {
    ProductionBench bench;
    bench.readUnit();
    bench.image[20].available = "0";
    bench.setDigits(2, "EEEEEEEEEE");
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + exchanges(0, 2) + kNotVerified + exchanges(3, 19) +
                                          kWritten + QStringList{kFlagLine});
}

void TestProductionValues::portGone() {
    ProductionBench bench;
    bench.readUnit();
    bench.port.unplug();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + kNotWritten);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestProductionValues, quorvex::NoApplication)
#include "test_production_values.moc"
