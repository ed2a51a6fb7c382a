#include <QTest>

#include "identity/rf_carriers_update.h"
#include "tests/identity/update_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

struct CarriersBench : UpdateBench {
    FakeField mask{journal, "TextRfCarrs"};
    RfCarriersUpdate update{link, image, mask};
};

const QString kSendingCarriers = "Sending RF Carrier Mask to Beltpack...";

QStringList carriersSent(const QString& mask) {
    return exchange(kSendingCarriers, {"# 064E" + mask, "# 010E"});
}

// "Mask" here and "mask" there.
const QStringList kCarriersUpdated{"status black: Beltpack's RF Carrier Mask updated successfully."};
const QStringList kCarriersNotUpdated = notReadBack("Beltpack's RF Carrier mask could not be updated.");

}  // namespace

/// Writing a Beltpack's RF carrier mask.
class TestRfCarriersUpdate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void updates_data();
    void updates();
    void fails_data();
    void fails();
    void otherLength_data();
    void otherLength();
    void silenceTakesTwoSeconds();
    void portGone();
};

void TestRfCarriersUpdate::updates_data() {
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("reply");
    const auto row = [](const char* name, const char* mask, const char* reply) {
        QTest::newRow(name) << mask << reply;
    };
    row("hexadecimal", "03FF00000F", "# 068E03FF00000F\r\n");
    row("all", "FFFFFFFFFF", "# 068EFFFFFFFFFF\r\n");
    // As typed: nothing is put into shape.
    row("lower case", "03ff00000f", "# 068E03ff00000f\r\n");
    row("not hexadecimal", "GHIJKLMNOP", "# 068EGHIJKLMNOP\r\n");
    row("blanks at its end", "03FF      ", "# 068E03FF      \r\n");
    row("head of the reply", "03FF00000F", "!xxxxx03FF00000F\r\n");
    row("more than was asked for", "03FF00000F", "# 068E03FF00000FFF\r\n");
}

void TestRfCarriersUpdate::updates() {
    QFETCH(QString, mask);
    QFETCH(QString, reply);
    CarriersBench bench;
    bench.mask.type(mask.toStdString());
    bench.port.answer("# 010E", reply.toStdString());
    bench.update.CmdSetRfCarrs_Click();
    QCOMPARE(bench.journal.entries(), carriersSent(mask) + kCarriersUpdated);
    QCOMPARE(bench.changed(), QStringList{"13: " + mask});
}

void TestRfCarriersUpdate::fails_data() {
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("reply");
    const auto row = [](const char* name, const char* mask, const char* reply) {
        QTest::newRow(name) << mask << reply;
    };
    row("silent", "03FF00000F", "");
    row("one character short", "03FF00000F", "# 068E03FF00000\r\n");
    row("other first digit", "03FF00000F", "# 068E13FF00000F\r\n");
    row("other last digit", "03FF00000F", "# 068E03FF00000E\r\n");
    row("other letter case", "03FF00000F", "# 068E03FF00000f\r\n");
    row("typed in lower case", "03ff00000f", "# 068E03FF00000F\r\n");
    row("shifted by one", "03FF00000F", "#  068E03FF00000F\r\n");
}

void TestRfCarriersUpdate::fails() {
    QFETCH(QString, mask);
    QFETCH(QString, reply);
    CarriersBench bench;
    bench.mask.type(mask.toStdString());
    bench.port.answer("# 010E", reply.toStdString());
    bench.update.CmdSetRfCarrs_Click();
    QCOMPARE(bench.journal.entries(), carriersSent(mask) + kCarriersNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

void TestRfCarriersUpdate::otherLength_data() {
    QTest::addColumn<QString>("mask");
    QTest::newRow("nothing") << "";
    QTest::newRow("9 characters") << "03FF00000";
    QTest::newRow("11 characters") << "03FF00000FF";
    QTest::newRow("9 and blanks around") << " 03FF00000 ";
}

void TestRfCarriersUpdate::otherLength() {
    QFETCH(QString, mask);
    CarriersBench bench;
    bench.mask.type(mask.toStdString());
    bench.update.CmdSetRfCarrs_Click();
    QCOMPARE(bench.journal.entries(), QStringList{"beep"});
    QCOMPARE(bench.changed(), QStringList());
}

void TestRfCarriersUpdate::silenceTakesTwoSeconds() {
    CarriersBench bench;
    bench.mask.type("03FF00000F");
    bench.update.CmdSetRfCarrs_Click();
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestRfCarriersUpdate::portGone() {
    CarriersBench bench;
    bench.mask.type("03FF00000F");
    bench.port.unplug();
    bench.update.CmdSetRfCarrs_Click();
    QCOMPARE(bench.journal.entries(), exchange(kSendingCarriers, {}) + kCarriersNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestRfCarriersUpdate, quorvex::NoApplication)
#include "test_rf_carriers_update.moc"
