#include <QLineEdit>
#include <QTest>

#include "tests/support/bench.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

enum class TalkedTo { beltpackRm5, beltpackKirk, antennaRm5, antennaKirk };

std::unique_ptr<sim::Unit> unitOf(TalkedTo kind) {
    const auto module = kind == TalkedTo::beltpackRm5 || kind == TalkedTo::antennaRm5 ? kRm5 : kKirk;
    return kind == TalkedTo::beltpackRm5 || kind == TalkedTo::beltpackKirk ? ToolBench::beltpack(module)
                                                                           : ToolBench::antenna(module);
}

}  // namespace

/// The tool sends what the window sends: the same lines, in the same order.
class TestTranscripts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameLines_data();
    void sameLines();
    void writes();

private:
    static QStringList writtenByWindow(const QString& file);
    static QStringList writtenByTool(const QString& words);
};

void TestTranscripts::sameLines_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("buttons");
    const auto row = [](const char* name, TalkedTo kind, const char* words, const char* field,
                        const char* text, const QStringList& buttons) {
        QTest::newRow(name) << int(kind) << words << field << text << buttons;
    };
    row("read, RM5", TalkedTo::beltpackRm5, "read", "", "", {"CommandRdSettingsBp"});
    row("read, Kirk", TalkedTo::beltpackKirk, "read", "", "", {"CommandRdSettingsBp"});
    row("psn", TalkedTo::beltpackRm5, "set psn 54321", "TextBeltpackId", "54321", {"CommandSetBpId"});
    row("system id", TalkedTo::beltpackRm5, "set system-id 1ABCD12300", "TextParkB", "1ABCD12300",
        {"CommandSetSysID"});
    row("pli", TalkedTo::beltpackRm5, "set pli 27", "TextPli", "27", {"CmdUpdatePli"});
    row("carriers", TalkedTo::beltpackRm5, "set rf-carriers 0123456789", "TextRfCarrs", "0123456789",
        {"CmdSetRfCarrs"});
    row("production", TalkedTo::beltpackKirk, "production-values", "", "",
        {"CommandRdSettingsBp", "buttonSetProdSettiings", "CommandRdSettingsBp"});
    row("version of a Beltpack", TalkedTo::beltpackRm5, "version beltpack", "", "", {"CommandDectPPVerReq"});
    row("version of an antenna", TalkedTo::antennaRm5, "version antenna", "", "", {"CommandDectVerReq"});
    row("antenna, RM5", TalkedTo::antennaRm5, "antenna", "", "", {"CommandRdSettingsAA"});
    row("antenna, Kirk", TalkedTo::antennaKirk, "antenna", "", "", {"CommandRdSettingsAA"});
    row("tbr6", TalkedTo::antennaKirk, "antenna --tbr6", "", "", {"CommandSetTbr6"});
}

void TestTranscripts::sameLines() {
    QFETCH(int, kind);
    QFETCH(QString, words);
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QStringList, buttons);
    const auto atWindow = unitOf(TalkedTo(kind));
    Bench bench;
    bench.wire.plugIn(atWindow.get());
    bench.start();
    if (words.contains("antenna"))
        bench.clickTab("Active Antenna");
    if (!field.isEmpty()) {
        bench.control<QLineEdit>(field).clear();
        QTest::keyClicks(&bench.control(field), text);
    }
    for (const QString& button : buttons)
        bench.click(button);

    ToolBench tool(unitOf(TalkedTo(kind)));
    QVERIFY(tool.run(words).status == tool::Status::done);
    QVERIFY(!tool.lines().isEmpty());
    QCOMPARE(tool.lines().join('\n'), bench.wire.lines().join('\n'));
    QCOMPARE(tool.unit().dump(), atWindow->dump());
}

/// A Beltpack without one of the parameters, and the file for it.
constexpr int kMissing = 0x0D;

/// What the window sends for a read, a file loaded, a write and a read.
QStringList TestTranscripts::writtenByWindow(const QString& file) {
    Bench bench;
    bench.startWith(kKirk).setAvailable(kMissing, false);
    bench.click("CommandRdSettingsBp");
    bench.person.plan([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(file);
        keys::press(Qt::Key_Return);
    });
    for (const char* button : {"CommandRead", "CommandWrite", "CommandRdSettingsBp"})
        bench.click(button);
    return bench.wire.lines();
}

QStringList TestTranscripts::writtenByTool(const QString& words) {
    ToolBench tool(ToolBench::beltpack(kKirk));
    tool.unit().setAvailable(kMissing, false);
    if (tool.run(words).status != tool::Status::done)
        return {"failed"};
    return tool.lines();
}

void TestTranscripts::writes() {
    const SettingsFolder folder;
    const QString file = folder.make("new.bpc", {{5, "24"}, {2, "0044300001"}});
    QStringList window = writtenByWindow(file);
    QCOMPARE(window.filter("# 064100443").size(), 1);
    QCOMPARE(writtenByTool("write --with-identity " + file).join('\n'), window.join('\n'));
    // Without it, PSN and System ID are neither written nor read back.
    for (const char* written : {"# 06410044300001", "# 0643100ECE1000"}) {
        const auto at = window.indexOf(QString(written));
        QVERIFY(at > 0);
        window.remove(at, 2);
    }
    QCOMPARE(writtenByTool("write " + file).join('\n'), window.join('\n'));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTranscripts, QApplication)
#include "test_transcripts.moc"
