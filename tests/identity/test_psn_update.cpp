#include <QTest>

#include "identity/psn_update.h"
#include "tests/identity/update_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

struct PsnBench : UpdateBench {
    FakeField beltpackId{journal, "TextBeltpackId"};
    PsnUpdate update{link, image, beltpackId};
};

QStringList psnSent(const QString& digits) {
    return exchange("Sending PSN to Beltpack...", {"# 064100443" + digits, "# 0101"});
}

const QStringList kPsnUpdated{"status black: Beltpack's PSN updated successfully."};
const QStringList kPsnNotUpdated = notReadBack("Beltpack's PSN could not be updated.");

}  // namespace

/// Giving a Beltpack its serial number.
class TestPsnUpdate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void updates_data();
    void updates();
    void fails_data();
    void fails();
    void isRefused_data();
    void isRefused();
    void emptyField();
    void silenceTakesTwoSeconds();
    void portGone();
    void portFault();
    void keys_data();
    void keys();
};

void TestPsnUpdate::updates_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char* name, const char* text, const char* digits, const char* reply,
                        const char* stored) { QTest::newRow(name) << text << digits << reply << stored; };
    row("five digits", "12345", "03039", "# 06810044303039\r\n", "0044303039");
    row("zero", "0", "00000", "# 06810044300000\r\n", "0044300000");
    row("highest of five", "1048575", "FFFFF", "# 068100443FFFFF\r\n", "00443FFFFF");
    row("leading zeros", "000010", "0000A", "# 0681004430000A\r\n", "004430000A");
    row("blanks inside", "12 34", "004D2", "# 068100443004D2\r\n", "00443004D2");
    row("blanks around", "  7  ", "00007", "# 06810044300007\r\n", "0044300007");
    row("blanks alone count as 0", "   ", "00000", "# 06810044300000\r\n", "0044300000");
    row("text counts as 0", "abc", "00000", "# 06810044300000\r\n", "0044300000");
    row("leading number", "77x8", "0004D", "# 0681004430004D\r\n", "004430004D");
    row("plus sign", "+5", "00005", "# 06810044300005\r\n", "0044300005");
    row("whole number with a point", "12.0", "0000C", "# 0681004430000C\r\n", "004430000C");
    // Only the last five digits are compared; what is stored is what the unit said.
    row("other prefix", "12345", "03039", "# 0681FFFFF03039\r\n", "FFFFF03039");
    row("lower case", "1048575", "FFFFF", "# 068100443fffff\r\n", "00443fffff");
    row("head of the reply", "12345", "03039", "!xxxxx0044303039\r\n", "0044303039");
    row("0 and no number", "0", "00000", "# 068100443xyzzy\r\n", "00443xyzzy");
    row("more than was asked for", "12345", "03039", "# 06810044303039FF\r\n", "0044303039");
}

void TestPsnUpdate::updates() {
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QFETCH(QString, reply);
    QFETCH(QString, stored);
    PsnBench bench;
    bench.beltpackId.type(text.toStdString());
    bench.port.answer("# 0101", reply.toStdString());
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(), psnSent(digits) + kPsnUpdated);
    QCOMPARE(bench.changed(), QStringList{"0: " + stored});
    QCOMPARE(shown(bench.beltpackId.text()), text);
}

void TestPsnUpdate::fails_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("reply");
    const auto row = [](const char* name, const char* text, const char* digits, const char* reply) {
        QTest::newRow(name) << text << digits << reply;
    };
    row("silent", "12345", "03039", "");
    row("silent, and the number is 0", "0", "00000", "");
    row("one character short", "12345", "03039", "# 0681004430303\r\n");
    row("other number", "12345", "03039", "# 0681004430303A\r\n");
    row("other first digit of five", "12345", "03039", "# 06810044313039\r\n");
    row("six digits", "1048576", "100000", "# 068100443100000\r\n");
    row("six digits, the last five read back", "1048577", "100001", "# 06810044300001\r\n");
    row("highest that can be sent", "2147483647", "7FFFFFFF", "# 0681004437FFFFFFF\r\n");
    // A fraction is sent rounded and compared as typed: no reply can be right.
    row("rounded up", "12.7", "0000D", "# 0681004430000D\r\n");
    row("rounded down", "12.2", "0000C", "# 0681004430000C\r\n");
    row("half to the even below", "12.5", "0000C", "# 0681004430000C\r\n");
    row("half to the even above", "13.5", "0000E", "# 0681004430000E\r\n");
    row("part of one", ".4", "00000", "# 06810044300000\r\n");
    row("not hexadecimal", "12345", "03039", "# 068100443xyzzy\r\n");
}

void TestPsnUpdate::fails() {
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QFETCH(QString, reply);
    PsnBench bench;
    bench.beltpackId.type(text.toStdString());
    bench.port.answer("# 0101", reply.toStdString());
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(), psnSent(digits) + kPsnNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

// What has no form on the wire is refused before anything happens, and the operator is told why.
void TestPsnUpdate::isRefused_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("why");
    const QString tooLarge = "it is above 2147483647.";
    const QString negative = "it is below 0.";
    QTest::newRow("one too many") << "2147483648" << tooLarge;
    QTest::newRow("rounded up to one too many") << "2147483647.5" << tooLarge;
    QTest::newRow("ten digits") << "9999999999" << tooLarge;
    QTest::newRow("sixty-four bits") << "18446744073709551616" << tooLarge;
    QTest::newRow("four hundred digits") << QString(400, '9') << tooLarge;
    QTest::newRow("negative") << "-1" << negative;
    QTest::newRow("negative after a blank") << " - 1" << negative;
    QTest::newRow("most negative") << "-2147483648" << negative;
}

void TestPsnUpdate::isRefused() {
    QFETCH(QString, text);
    QFETCH(QString, why);
    PsnBench bench;
    bench.beltpackId.type(text.toStdString());
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(),
             QStringList("box critical: \"" + text + "\" cannot be sent as PSN: " + why + " []"));
    QCOMPARE(bench.changed(), QStringList());
}

void TestPsnUpdate::emptyField() {
    PsnBench bench;
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(), QStringList{"beep"});
    QCOMPARE(bench.changed(), QStringList());
}

void TestPsnUpdate::silenceTakesTwoSeconds() {
    PsnBench bench;
    bench.beltpackId.type("5");
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.loop.ticks(), 2000);
}

void TestPsnUpdate::portGone() {
    PsnBench bench;
    bench.beltpackId.type("5");
    bench.port.unplug();
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(), exchange("Sending PSN to Beltpack...", {}) + kPsnNotUpdated);
    QCOMPARE(bench.changed(), QStringList());
}

void TestPsnUpdate::portFault() {
    PsnBench bench;
    bench.beltpackId.type("5");
    bench.port.failFlush();
    bench.update.CommandSetBpId_Click();
    QCOMPARE(bench.journal.entries(), exchange("Sending PSN to Beltpack...", {}) + kPsnNotUpdated);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestPsnUpdate::keys_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("runs");
    QTest::newRow("Enter") << 13 << true;
    QTest::newRow("line feed") << 10 << false;
    QTest::newRow("digit") << 0x31 << false;
    QTest::newRow("swallowed letter") << 0 << false;
    QTest::newRow("Backspace") << 8 << false;
    QTest::newRow("hyphen") << 0x2D << false;
}

void TestPsnUpdate::keys() {
    QFETCH(int, key);
    QFETCH(bool, runs);
    PsnBench bench;
    bench.beltpackId.type("12345");
    bench.port.answer("# 0101", "# 06810044303039\r\n");
    bench.update.TextBeltpackId_KeyPress(static_cast<char16_t>(key));
    const QStringList update = runs ? psnSent("03039") + kPsnUpdated : QStringList();
    QCOMPARE(bench.journal.entries(), update + QStringList{"status black: "});
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPsnUpdate, quorvex::NoApplication)
#include "test_psn_update.moc"
