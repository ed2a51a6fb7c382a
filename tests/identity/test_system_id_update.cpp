#include <QTest>

#include "tests/identity/system_id_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kSendingSystemId = "Sending System Id to Beltpack...";

QStringList systemIdSent(const QString& parkB) {
    return exchange(kSendingSystemId, {"# 0643" + parkB, "# 0103"});
}

// One "s" in the first, as it has always been.
const QStringList kSystemIdUpdated{"status black: Beltpack's System Id updated succesfully."};
const QStringList kSystemIdNotUpdated = notReadBack("Beltpack's System Id could not be updated.");

}  // namespace

/// Writing the System ID: the PARK B goes out, the PARI is looked for in what comes back.
class TestSystemIdUpdate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void updates_data();
    void updates();
    void fails_data();
    void fails();
    void emptyParkB_data();
    void emptyParkB();
    void silenceTakesTwoSeconds();
    void portGone_data();
    void portGone();
    void componentsAreReadAfterTheReply();
};

void TestSystemIdUpdate::updates_data() {
    QTest::addColumn<QStringList>("fields");  // PARK B, EIC, FPN, FPS
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char* name, const QStringList& fields, const char* reply, const char* stored) {
        QTest::newRow(name) << fields << reply << stored;
    };
    const QStringList standard{"100ECE1000", "00EC", "*E*1", "0"};
    row("default", standard, "# 0683100ECE1000\r\n", "100ECE1000");
    row("another", {"1123456A00", "1234", "*5*6", "A"}, "# 06831123456A00\r\n", "1123456A00");
    row("head of the reply", standard, "!xxxxx100ECE1000\r\n", "100ECE1000");
    // It is looked for anywhere, and what is stored still begins with the 7th character.
    row("found from the 2nd character on", standard, "#100ECE100077777\r\n", "E100077777");
    row("found from the 6th character on", standard, "# 068100ECE10007\r\n", "00ECE10007");
    row("other ends, answered by the PARI", {"200ECE1027", "00EC", "*E*1", "0"}, "# 0683100ECE1000\r\n",
        "100ECE1000");
    row("lower case components", {"100ece1000", "00ec", "*E*1", "0"}, "# 0683100ECE1000\r\n", "100ECE1000");
    row("FPN not hexadecimal", {"100ECG1000", "00EC", "*G*1", "0"}, "# 0683100ECG1000\r\n", "100ECG1000");
    // Without a PARI every reply is good enough, none at all included.
    row("no components", {"100ECE1000", "", "", ""}, "# 0683FFFFFFFFFF\r\n", "FFFFFFFFFF");
    row("EIC too short", {"100ECE1000", "0EC", "*E*1", "0"}, "# 0683FFFFFFFFFF\r\n", "FFFFFFFFFF");
    row("EIC not hexadecimal", {"100G1E1000", "00G1", "*E*1", "0"}, "# 0683FFFFFFFFFF\r\n", "FFFFFFFFFF");
    row("FPS not hexadecimal", {"100ECE1G00", "00EC", "*E*1", "G"}, "# 0683FFFFFFFFFF\r\n", "FFFFFFFFFF");
    row("no components and no reply", {"100ECE1000", "", "", ""}, "", "          ");
    row("no components and half a reply", {"100ECE1000", "", "", ""}, "# 0683FFFF\r\n", "          ");
    row("PARK B of one character", {"1", "", "", ""}, "# 0683FFFFFFFFFF\r\n", "FFFFFFFFFF");
}

void TestSystemIdUpdate::updates() {
    QFETCH(QStringList, fields);
    QFETCH(QString, reply);
    QFETCH(QString, stored);
    SystemIdBench bench;
    bench.fill(fields[0], fields[1], fields[2], fields[3]);
    bench.port.answer("# 0103", reply.toStdString());
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.journal.entries(), systemIdSent(fields[0]) + kSystemIdUpdated);
    QCOMPARE(bench.changed(), QStringList{"2: " + stored});
}

void TestSystemIdUpdate::fails_data() {
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("reply");
    const auto row = [](const char* name, const QStringList& fields, const char* reply) {
        QTest::newRow(name) << fields << reply;
    };
    const QStringList standard{"100ECE1000", "00EC", "*E*1", "0"};
    row("silent", standard, "");
    row("one character short", standard, "# 0683100ECE100\r\n");
    row("other first digit", standard, "# 0683000ECE1000\r\n");
    row("other last digit", standard, "# 0683100ECE1001\r\n");
    row("other FPN", standard, "# 0683100ECF1000\r\n");
    row("read back in lower case", standard, "# 0683100ece1000\r\n");
    // The unit took what was sent, but that is not what is looked for.
    row("other first digit sent", {"200ECE1000", "00EC", "*E*1", "0"}, "# 0683200ECE1000\r\n");
    row("other last digits sent", {"100ECE1027", "00EC", "*E*1", "0"}, "# 0683100ECE1027\r\n");
    row("lower case FPN", {"100ECe1000", "00EC", "*e*1", "0"}, "# 0683100ECE1000\r\n");
    row("beyond the sixteenth character", standard, "# 068377100ECE1000\r\n");
}

void TestSystemIdUpdate::fails() {
    QFETCH(QStringList, fields);
    QFETCH(QString, reply);
    SystemIdBench bench;
    bench.fill(fields[0], fields[1], fields[2], fields[3]);
    bench.port.answer("# 0103", reply.toStdString());
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.journal.entries(), systemIdSent(fields[0]) + kSystemIdNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

void TestSystemIdUpdate::emptyParkB_data() {
    QTest::addColumn<QStringList>("components");
    QTest::newRow("whole") << QStringList{"00EC", "*E*1", "0"};
    QTest::newRow("none") << QStringList{"", "", ""};
}

void TestSystemIdUpdate::emptyParkB() {
    QFETCH(QStringList, components);
    SystemIdBench bench;
    bench.fill("", components[0], components[1], components[2]);
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.journal.entries(), QStringList{kIncomplete});
    QCOMPARE(bench.changed(), QStringList());
}

void TestSystemIdUpdate::silenceTakesTwoSeconds() {
    SystemIdBench bench;
    bench.fill("100ECE1000", "00EC", "*E*1", "0");
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestSystemIdUpdate::portGone_data() {
    QTest::addColumn<QString>("eic");
    QTest::addColumn<QStringList>("end");
    QTest::addColumn<QStringList>("changed");
    QTest::newRow("with components") << "00EC" << kSystemIdNotUpdated << QStringList();
    QTest::newRow("without components") << "" << kSystemIdUpdated << QStringList{"2:           "};
}

void TestSystemIdUpdate::portGone() {
    QFETCH(QString, eic);
    QFETCH(QStringList, end);
    QFETCH(QStringList, changed);
    SystemIdBench bench;
    bench.fill("100ECE1000", eic, "*E*1", "0");
    bench.port.unplug();
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.journal.entries(), exchange(kSendingSystemId, {}) + end);
    QCOMPARE(bench.changed(), changed);
}

// The window stays alive during the exchange; what is looked for is what the fields hold at its end.
void TestSystemIdUpdate::componentsAreReadAfterTheReply() {
    SystemIdBench bench;
    bench.fill("100ECE1000", "00EC", "*E*1", "0");
    bench.port.answer("# 0103", {Reply{"# 0683100ECE1000\r\n", 100}});
    bench.loop.at(50, [&] { bench.eic.type("1234"); });
    bench.systemId.CommandSetSysID_Click();
    QCOMPARE(bench.journal.entries(), systemIdSent("100ECE1000") + kSystemIdNotUpdated);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSystemIdUpdate, quorvex::NoApplication)
#include "test_system_id_update.moc"
