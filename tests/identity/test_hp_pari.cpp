#include <QTest>

#include "tests/identity/system_id_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The PARI, and what the HP test set wants of it.
class TestHpPari : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shows_data();
    void shows();
    void incomplete_data();
    void incomplete();
    void byDefault_data();
    void byDefault();
};

void TestHpPari::shows_data() {
    QTest::addColumn<QStringList>("components");  // EIC, FPN, FPS
    QTest::addColumn<QString>("pari");
    QTest::addColumn<QString>("testSet");
    QTest::newRow("default") << QStringList{"00EC", "*E*1", "0"} << "100ECE1000"
                             << "201D9C200";
    QTest::newRow("another") << QStringList{"1234", "*5*6", "A"} << "1123456A00"
                             << "22468AD40";
    QTest::newRow("lowest") << QStringList{"0000", "*0*0", "0"} << "1000000000"
                            << "200000000";
    QTest::newRow("highest") << QStringList{"FFFF", "*F*F", "F"} << "1FFFFFFF00"
                             << "3FFFFFFE0";
    QTest::newRow("lower case is raised in EIC and FPS") << QStringList{"00ec", "*E*1", "a"} << "100ECE1A00"
                                                         << "201D9C340";
    QTest::newRow("2nd and 4th of the FPN") << QStringList{"1234", "ABCD", "0"} << "11234BD000"
                                            << "224697A00";
    QTest::newRow("anything for the 1st and 3rd") << QStringList{"1234", "?5 6", "A"} << "1123456A00"
                                                  << "22468AD40";
}

void TestHpPari::shows() {
    QFETCH(QStringList, components);
    QFETCH(QString, pari);
    QFETCH(QString, testSet);
    SystemIdBench bench;
    bench.fill("whatever", components[0], components[1], components[2]);
    QCOMPARE(shown(bench.systemId.pari()), pari);
    bench.systemId.CommandHpPari_Click();
    QCOMPARE(bench.journal.entries(),
             QStringList{"box information: HP Test Set Fixed Part PARI:\r\r" + testSet + " []"});
    QCOMPARE(shown(bench.parkB.text()), "whatever");
    QCOMPARE(bench.changed(), QStringList());
}

void TestHpPari::incomplete_data() {
    QTest::addColumn<QStringList>("components");
    const auto row = [](const char* name, const QStringList& components) {
        QTest::newRow(name) << components;
    };
    row("nothing", {"", "", ""});
    row("no EIC", {"", "*E*1", "0"});
    row("EIC too short", {"0EC", "*E*1", "0"});
    row("EIC too long", {"000EC", "*E*1", "0"});
    row("FPN too short", {"00EC", "*E*", "0"});
    row("FPN too long", {"00EC", "*E*1*", "0"});
    row("no FPS", {"00EC", "*E*1", ""});
    row("FPS too long", {"00EC", "*E*1", "00"});
    row("EIC not hexadecimal", {"00G1", "*E*1", "0"});
    row("blank in the EIC", {"00 1", "*E*1", "0"});
    row("EIC with a sign", {"-0EC", "*E*1", "0"});
    row("FPS not hexadecimal", {"00EC", "*E*1", "G"});
    row("FPS blank", {"00EC", "*E*1", " "});
    row("2nd of the FPN not hexadecimal", {"00EC", "*G*1", "0"});
    row("4th of the FPN not hexadecimal", {"00EC", "*E*G", "0"});
    row("FPN of asterisks", {"00EC", "****", "0"});
}

void TestHpPari::incomplete() {
    QFETCH(QStringList, components);
    SystemIdBench bench;
    bench.fill("100ECE1000", components[0], components[1], components[2]);
    bench.systemId.CommandHpPari_Click();
    QCOMPARE(bench.journal.entries(), QStringList{kIncomplete});
}

void TestHpPari::byDefault_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("parkB");
    QTest::newRow("empty") << ""
                           << "100ECE1000";
    QTest::newRow("over another") << "9AAAAAAA55"
                                  << "900ECE1055";
    QTest::newRow("over half of one") << "9AAAA"
                                      << "100ECE1000";
}

void TestHpPari::byDefault() {
    QFETCH(QString, before);
    QFETCH(QString, parkB);
    SystemIdBench bench;
    bench.parkB.type(before.toStdString());
    bench.systemId.CommandDefault_Click();
    QCOMPARE(shown(bench.parkB.text()), parkB);
    QCOMPARE(shown(bench.eic.text()), "00EC");
    QCOMPARE(shown(bench.fpn.text()), "*E*1");
    QCOMPARE(shown(bench.fps.text()), "0");
    bench.journal.take();
    bench.systemId.CommandHpPari_Click();
    QCOMPARE(bench.journal.entries(),
             QStringList{"box information: HP Test Set Fixed Part PARI:\r\r201D9C200 []"});
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestHpPari, quorvex::NoApplication)
#include "test_hp_pari.moc"
