#include <QTest>

#include "identity/pli_update.h"
#include "tests/identity/update_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

struct PliBench : UpdateBench {
    FakeField pli{journal, "TextPli"};
    PliUpdate update{link, image, pli};
};

QStringList sent(const QString& digits) {
    return exchange("Sending PLI to Beltpack...", {"# 0242" + digits, "# 0102"});
}

const QStringList kUpdated{"status black: Beltpack's PLI updated successfully."};
const QStringList kNotUpdated = notReadBack("Beltpack's PLI could not be updated.");

}  // namespace

/// Writing a Beltpack's park length indicator.
class TestPliUpdate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void updates_data();
    void updates();
    void fails_data();
    void fails();
    void tooLarge_data();
    void tooLarge();
    void silenceTakesTwoSeconds();
    void portGone();
    void portFaultWhileReading();
    void keys_data();
    void keys();
};

void TestPliUpdate::updates_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char* name, const char* text, const char* digits, const char* reply,
                        const char* stored) { QTest::newRow(name) << text << digits << reply << stored; };
    row("two digits", "1F", "1F", "# 02821F\r\n", "1F        ");
    row("lower case", "1f", "1F", "# 02821F\r\n", "1F        ");
    row("one digit", "F", "0F", "# 02820F\r\n", "0F        ");
    row("three digits of which the first is 0", "027", "27", "# 028227\r\n", "27        ");
    row("not hexadecimal counts as 0", "ZZ", "00", "# 028200\r\n", "00        ");
    row("empty counts as 0", "", "00", "# 028200\r\n", "00        ");
    row("as a read shows it", "1F        ", "1F", "# 02821F\r\n", "1F        ");
    row("highest of two digits", "FF", "FF", "# 0282FF\r\n", "FF        ");
    row("read back in lower case", "1F", "1F", "# 02821f\r\n", "1f        ");
    row("one digit read back, then a blank", "F", "0F", "# 0282F \r\n", "F         ");
    row("0 read back as no number", "0", "00", "# 0282ZZ\r\n", "ZZ        ");
    row("head of the reply", "1F", "1F", "^xxxxx1F\r\n", "1F        ");
    row("more than was asked for", "1F", "1F", "# 02821FFFFF\r\n", "1F        ");
}

void TestPliUpdate::updates() {
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QFETCH(QString, reply);
    QFETCH(QString, stored);
    PliBench bench;
    bench.pli.type(text.toStdString());
    bench.port.answer("# 0102", reply.toStdString());
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.journal.entries(), sent(digits) + kUpdated);
    // It lands in the carrier mask's record, not in its own.
    QCOMPARE(bench.changed(), QStringList{"13: " + stored});
    QCOMPARE(shown(bench.pli.text()), text);
}

void TestPliUpdate::fails_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("reply");
    const auto row = [](const char* name, const char* text, const char* digits, const char* reply) {
        QTest::newRow(name) << text << digits << reply;
    };
    row("silent", "1F", "1F", "");
    row("silent, and the value is 0", "0", "00", "");
    row("one character short", "1F", "1F", "# 02821\r\n");
    row("other value", "1F", "1F", "# 02821E\r\n");
    row("three digits", "123", "123", "# 028223\r\n");
    row("three digits, the first two read back", "123", "123", "# 0282123\r\n");
    row("three digits of which the last two are 0", "100", "100", "# 028200\r\n");
    row("highest that can be sent", "7FFF", "7FFF", "# 0282FF\r\n");
}

void TestPliUpdate::fails() {
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QFETCH(QString, reply);
    PliBench bench;
    bench.pli.type(text.toStdString());
    bench.port.answer("# 0102", reply.toStdString());
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.journal.entries(), sent(digits) + kNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

// Ends quietly: nothing is sent, nothing is told, and the pointer is the normal one.
void TestPliUpdate::tooLarge_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("one too many") << "8000";
    QTest::newRow("sixteen bits") << "FFFF";
    QTest::newRow("five digits") << "10000";
    QTest::newRow("thirty-two bits") << "FFFFFFFF";
    QTest::newRow("twenty digits") << "FFFFFFFFFFFFFFFFFFFF";
}

void TestPliUpdate::tooLarge() {
    QFETCH(QString, text);
    PliBench bench;
    bench.pli.type(text.toStdString());
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.port.sentLines(), QStringList());
    QCOMPARE(
        bench.journal.entriesOf("box") + bench.journal.entriesOf("beep") + bench.journal.entriesOf("status"),
        QStringList());
    QVERIFY(!bench.console.isHourglassUp());
    QCOMPARE(bench.changed(), QStringList());
}

void TestPliUpdate::silenceTakesTwoSeconds() {
    PliBench bench;
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestPliUpdate::portGone() {
    PliBench bench;
    bench.pli.type("1F");
    bench.port.unplug();
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.journal.entries(), exchange("Sending PLI to Beltpack...", {}) + kNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

void TestPliUpdate::portFaultWhileReading() {
    PliBench bench;
    bench.pli.type("1F");
    bench.port.answer("# 0102", "# 02821F\r\n");
    bench.port.failReads();
    bench.update.CmdUpdatePli_Click();
    QCOMPARE(bench.journal.entries(), sent("1F"));
    QVERIFY(!bench.console.isHourglassUp());
    QCOMPARE(bench.changed(), QStringList());
}

void TestPliUpdate::keys_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("runs");
    QTest::newRow("Enter") << 13 << true;
    QTest::newRow("line feed") << 10 << false;
    QTest::newRow("digit") << 0x31 << false;
    QTest::newRow("Backspace") << 8 << false;
}

void TestPliUpdate::keys() {
    QFETCH(int, key);
    QFETCH(bool, runs);
    PliBench bench;
    bench.pli.type("27");
    bench.port.answer("# 0102", "# 028227\r\n");
    bench.update.TextPli_KeyPress(static_cast<char16_t>(key));
    // The status line is left alone by the keys of this field.
    QCOMPARE(bench.journal.entries(), runs ? sent("27") + kUpdated : QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPliUpdate, quorvex::NoApplication)
#include "test_pli_update.moc"
