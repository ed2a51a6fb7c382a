#include <QTest>

#include "form/key_filter.h"
#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

using Deed = std::function<void(BeltpackBench&)>;

struct Edit {
    const char* name;
    Deed deed;
    int record;
    const char* value;
};

// What a person does at the controls, and what becomes of the image.
const std::vector<Edit>& edits() {
    static const std::vector<Edit> all{
        {"balanced", [](auto& at) { at.editors.optionMICBal_Click(); }, 6, "00        "},
        {"unbalanced", [](auto& at) { at.editors.optionMICUnBal_Click(); }, 6, "01        "},
        {"electret", [](auto& at) { at.editors.optionMICElectret_Click(); }, 6, "02        "},
        {"alarm on",
         [](auto& at) {
             at.batteryAlarm.setValue(1);
             at.editors.checkBattAlarm_Click();
         },
         5, "01        "},
        {"alarm off",
         [](auto& at) {
             at.batteryAlarm.setValue(0);
             at.editors.checkBattAlarm_Click();
         },
         5, "00        "},
        {"alarm greyed",
         [](auto& at) {
             at.batteryAlarm.setValue(2);
             at.editors.checkBattAlarm_Click();
         },
         5, "01        "},
        {"first revision",
         [](auto& at) {
             at.hwRevision.setTopIndex(0);
             at.editors.BPHWRevision_Scroll();
         },
         20, "00        "},
        {"second revision",
         [](auto& at) {
             at.hwRevision.setTopIndex(1);
             at.editors.BPHWRevision_Scroll();
         },
         20, "01        "},
        {"third revision",
         [](auto& at) {
             at.hwRevision.setTopIndex(2);
             at.editors.BPHWRevision_Scroll();
         },
         20, "02        "},
        {"Europe",
         [](auto& at) {
             at.regulations.setTopIndex(0);
             at.editors.BPRegulations_Scroll();
         },
         15, "00        "},
        {"USA",
         [](auto& at) {
             at.regulations.setTopIndex(1);
             at.editors.BPRegulations_Scroll();
         },
         15, "01        "},
        {"Japan",
         [](auto& at) {
             at.regulations.setTopIndex(2);
             at.editors.BPRegulations_Scroll();
         },
         15, "02        "},
    };
    return all;
}

}  // namespace

/// Edits between a read and a write.
class TestEditing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storesOneValue_data() { everyEdit(); }
    void storesOneValue();
    void isWritten_data() { everyEdit(); }
    void isWritten();
    void staysUnavailable_data() { everyEdit(); }
    void staysUnavailable();
    void lastsUntilTheNextRead();
    void upperCase_data();
    void upperCase();
    void upToNineOnly_data();
    void upToNineOnly();

private:
    static void everyEdit();
};

void TestEditing::everyEdit() {
    QTest::addColumn<int>("edit");
    for (std::size_t i = 0; i < edits().size(); ++i)
        QTest::newRow(edits()[i].name) << static_cast<int>(i);
}

void TestEditing::storesOneValue() {
    QFETCH(int, edit);
    const Edit& done = edits()[static_cast<std::size_t>(edit)];
    WriteBench bench;
    bench.readUnit();
    bench.image[done.record].value = "0123456789";
    QStringList expected = bench.values();
    expected[done.record] = done.value;
    done.deed(bench);
    QCOMPARE(bench.values(), expected);
    QVERIFY(bench.image[21].value.isBlank());
    for (int i = 0; i <= 20; ++i)
        QCOMPARE(shown(bench.image[i].available.str()), "1 ");
    QCOMPARE(bench.lines(), QStringList());
    QCOMPARE(bench.journal.entriesOf("status"), QStringList());
}

void TestEditing::isWritten() {
    QFETCH(int, edit);
    const Edit& done = edits()[static_cast<std::size_t>(edit)];
    WriteBench bench;
    bench.readUnit();
    done.deed(bench);
    bench.setDigits(done.record, std::string(done.value).substr(0, 2));
    bench.journal.take();
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, 20);
    lines[2 * done.record] = kWriteLines[done.record].left(8) + done.value;
    QCOMPARE(bench.journal.entries(), kWriteStart + lines + kWritten);
}

void TestEditing::staysUnavailable() {
    QFETCH(int, edit);
    const Edit& done = edits()[static_cast<std::size_t>(edit)];
    WriteBench bench;
    bench.connectRm5();
    bench.silenceParameter(done.record);
    bench.read.CommandRdSettingsBp_Click();
    done.deed(bench);
    QCOMPARE(shown(bench.image[done.record].value.str()), done.value);
    bench.journal.take();
    bench.write.CommandWrite_Click();
    QStringList lines = exchanges(0, 20);
    lines.remove(2 * done.record, 2);
    QCOMPARE(bench.lines(), lines);
    QCOMPARE(bench.journal.entries().last(), kWritten.last());
}

void TestEditing::lastsUntilTheNextRead() {
    WriteBench bench;
    bench.readUnit();
    const QStringList before = bench.values();
    for (const Edit& edit : edits())
        edit.deed(bench);
    QVERIFY(bench.values() != before);
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.values(), before);
}

void TestEditing::upperCase_data() {
    QTest::addColumn<int>("typed");
    QTest::addColumn<int>("passed");
    for (int c = 0; c <= 300; ++c)
        QTest::addRow("%d", c) << c << (c >= 97 && c <= 122 ? c - 32 : c);
}

void TestEditing::upperCase() {
    QFETCH(int, typed);
    QFETCH(int, passed);
    QCOMPARE(static_cast<int>(upperCased(static_cast<char16_t>(typed))), passed);
}

void TestEditing::upToNineOnly_data() {
    QTest::addColumn<int>("typed");
    QTest::addColumn<int>("passed");
    for (int c = 0; c <= 300; ++c)
        QTest::addRow("%d", c) << c << (c > 57 ? 0 : c);
}

void TestEditing::upToNineOnly() {
    QFETCH(int, typed);
    QFETCH(int, passed);
    QCOMPARE(static_cast<int>(upToNine(static_cast<char16_t>(typed))), passed);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestEditing, quorvex::NoApplication)
#include "test_editing.moc"
