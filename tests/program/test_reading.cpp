#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>
#include <atomic>
#include <thread>

#include "tests/support/bench_top.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kReadLimitMs = 15'000;
constexpr int kLivelyMs = 800;  ///< for an answer of the window, on a loaded machine

const QString kNoResponse =
    "critical \"Quorvex Config\" [OK]: No Response from Beltpack!\r\n\r\nCheck "
    "connection to Beltpack.";
const QString kSuccess = "Settings read from Beltpack successfully.";

/// A unit whose values all differ from one another.
const QStringList kValues{"--set", "01=00443186A0", "--set",          "02=27", "--set", "03=312F45A727",
                          "--set", "06=01",         "--set",          "07=02", "--set", "0E=03FE0A0B0C",
                          "--set", "10=01",         "--set",          "15=02", "--set", "3D=2A",
                          "--set", "3C=0A",         "--version-text", "3.14b"};

/// What passes on the line for a unit of those values, up to the calibration
/// values.
const QStringList kParameters{
    "> # 0101", "< # 068100443186A0", "> # 0102", "< # 028227",         "> # 0103", "< # 0683312F45A727",
    "> # 0104", "< # 028430",         "> # 0105", "< # 028500",         "> # 0106", "< # 028601",
    "> # 0107", "< # 028702",         "> # 0108", "< # 028802",         "> # 0109", "< # 028903",
    "> # 010A", "< # 028A00",         "> # 010B", "< # 028B10",         "> # 010C", "< # 028C01",
    "> # 010D", "< # 028D00",         "> # 010E", "< # 068E03FE0A0B0C", "> # 010F", "< # 028F00",
    "> # 0110", "< # 029001",         "> # 0111", "< # 029100",         "> # 0112", "< # 029201",
    "> # 0113", "< # 029300",         "> # 0114", "< # 029400",         "> # 0115", "< # 029502"};

}  // namespace

/// Reading a Beltpack with the program as it is shipped.
class TestReading : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { bench_ = std::make_unique<BenchTop>(); }
    void cleanup() { bench_.reset(); }
    void rm5();
    void kirk();
    void realLine();
    void silentUnit();
    void linesBeforeTheVersion();
    void windowLivesInAFlood();
    void titles();

private:
    void readAndSucceed();
    QMap<QString, QString> fields();

    std::unique_ptr<BenchTop> bench_;
};

void TestReading::readAndSucceed() {
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), kSuccess, kReadLimitMs);
    QCOMPARE(bench_->program().box(), "");
    QCOMPARE(bench_->program().pointer(), "normal");
}

QMap<QString, QString> TestReading::fields() {
    QMap<QString, QString> shown;
    for (const char* field : {"TextBeltpackId", "TextEic", "TextFpn", "TextFps", "TextParkB", "TextPli",
                              "TextRfCarrs", "TextDectVerBP", "TextFMDev", "TextFreqAccr", "TextFreqAccrRx",
                              "TextFreqAccrTx", "TextRssiThr", "CommandCalibBp"})
        shown[field] = bench_->program().text(field);
    for (const char* list : {"BPRegulations", "BPHWRevision"})
        shown[list] = bench_->program().shown(list);
    for (const char* mark : {"optionMICBal", "optionMICUnBal", "optionMICElectret", "checkBattAlarm"}) {
        if (bench_->program().get(mark, "checked").toBool())
            shown[mark] = "on";
    }
    for (const char* button : {"CommandWrite", "CommandSave", "CommandSummary"})
        shown[button] = bench_->program().get(button, "enabled").toBool() ? "enabled" : "disabled";
    return shown;
}

void TestReading::rm5() {
    bench_->plugIn(1, QStringList({"beltpack", "--module", "rm5"}) + kValues);
    QVERIFY(bench_->start());
    QCOMPARE(bench_->program().text("LabelComPort"), "COM1");
    readAndSucceed();
    const QStringList expected = QStringList({"> # 0139", "< # 01BF"}) + kParameters +
                                 QStringList({"> # 013D", "< # 02BD2A", "> # 013C", "< # 02BC0A", "> ! 0108",
                                              "< !DECT Version:3.14b;"});
    QCOMPARE(bench_->unit().exchanged().join('\n'), expected.join('\n'));
    const QMap<QString, QString> shown{{"TextBeltpackId", "100000"},
                                       {"TextEic", "12F4"},
                                       {"TextFpn", "*5*A"},
                                       {"TextFps", "7"},
                                       {"TextParkB", "112F45A700"},
                                       {"TextPli", "27        "},
                                       {"TextRfCarrs", "03FE0A0B0C"},
                                       {"TextDectVerBP", "3.14b"},
                                       {"TextFMDev", "42"},
                                       {"TextFreqAccr", "5"},
                                       {"TextFreqAccrRx", ""},
                                       {"TextFreqAccrTx", ""},
                                       {"TextRssiThr", ""},
                                       {"BPRegulations", "FCC - USA"},
                                       {"BPHWRevision", "MX 318825XT"},
                                       {"optionMICElectret", "on"},
                                       {"checkBattAlarm", "on"},
                                       {"CommandWrite", "enabled"},
                                       {"CommandSave", "enabled"},
                                       {"CommandSummary", "enabled"},
                                       {"CommandCalibBp", "Calibrate RM5 Module"}};
    QCOMPARE(fields(), shown);
    QVERIFY(!bench_->settings().contains("RfModule"));  // it was an RM5 before
}

void TestReading::kirk() {
    bench_->plugIn(1, QStringList({"beltpack", "--module", "kirk", "--set", "39=F1", "--set", "3A=12",
                                   "--set", "38=48"}) +
                          kValues);
    QVERIFY(bench_->start());
    readAndSucceed();
    const QStringList expected =
        QStringList({"> # 0139", "< # 02B9F1"}) + kParameters +
        QStringList({"> # 013D", "< # 02BD2A", "> # 013C", "< # 02BC0A", "> # 0139", "< # 02B9F1", "> # 013a",
                     "< # 02BA12", "> # 0138", "< # 02B848", "> ! 0108", "< !DECT Version:3.14b;"});
    QCOMPARE(bench_->unit().exchanged().join('\n'), expected.join('\n'));
    const QMap<QString, QString> shown = fields();
    const QMap<QString, QString> differing{{"TextFreqAccr", "10"},
                                           {"TextFreqAccrRx", "241"},
                                           {"TextFreqAccrTx", "18"},
                                           {"TextRssiThr", "72"},
                                           {"CommandCalibBp", "Calibrate Kirk Module"}};
    for (auto field = differing.begin(); field != differing.end(); ++field)
        QCOMPARE(field.key() + "=" + shown[field.key()], field.key() + "=" + field.value());
    QCOMPARE(shown["TextBeltpackId"], "100000");
    QCOMPARE(bench_->settings(), "[Settings]\nRfModule=1\n");
}

// At the pace of a real line the window has to wait within every reply.
void TestReading::realLine() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5", "--pace", "19200"});
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().pointer(), "hourglass", kReadLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"), kSuccess, kReadLimitMs);
    QCOMPARE(bench_->program().pointer(), "normal");
    QCOMPARE(bench_->unit().received().size(), 25);
}

void TestReading::silentUnit() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5", "--fault", "no-reply"});
    QVERIFY(bench_->start());
    QElapsedTimer clock;
    clock.start();
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(), kNoResponse, kReadLimitMs);
    const qint64 silenceMs = clock.elapsed();
    QCOMPARE(bench_->program().text("LblStatus"), "Error communicating with Beltpack.");
    QCOMPARE(bench_->program().pointer(), "normal");
    QCOMPARE(bench_->unit().received(), QStringList({"# 0139", "# 0101"}));  // 2 s each
    QVERIFY2(silenceMs >= 3998 && silenceMs < 5000, qPrintable(QString::number(silenceMs)));
    QCOMPARE(bench_->settings(), "[Settings]\nRfModule=1\n");
    bench_->program().clickOk();
    QCOMPARE(bench_->program().box(), "");
    QVERIFY(bench_->program().isRunning());
}

void TestReading::linesBeforeTheVersion() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5", "--version-lines", "7", "--version-text", "12.3"});
    QVERIFY(bench_->start());
    readAndSucceed();
    QCOMPARE(bench_->program().text("TextDectVerBP"), "12.3");
}

// A unit that never stops talking must not freeze the window: it answers, and
// it can be left.
void TestReading::windowLivesInAFlood() {
    const PseudoTerminal terminal;
    QVERIFY(terminal.linkAs(bench_->portLink(1)));
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QByteArray sent;
    QTRY_VERIFY_WITH_TIMEOUT((sent += terminal.arrived()).contains("# 0139"), kReadLimitMs);
    std::atomic<bool> stop = false;
    std::thread flood([&] { terminal.flood(stop); });
    const auto stopFlood = qScopeGuard([&] {
        stop = true;
        flood.join();
    });
    QElapsedTimer timer;
    for (int i = 0; i < 20; ++i) {
        timer.start();
        QVERIFY(bench_->program().isWindowUp());
        QVERIFY2(timer.elapsed() < kLivelyMs, qPrintable(QString::number(timer.elapsed())));
    }
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
}

// The window system adds the program's own name to a title that does not end
// with it, once it has been given one; what stands on the title bars is the
// captions alone.
void TestReading::titles() {
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
    QVERIFY(bench_->start());
    const QJsonObject names = bench_->program().ask({{"do", "program"}}).toObject();
    const auto onTitleBar = [&names](const QString& caption) {
        const QString shown = names["displayName"].toString();
        const bool added = shown != names["name"].toString() && !caption.endsWith(shown);
        return added ? caption + " - " + shown : caption;
    };
    QCOMPARE(onTitleBar(bench_->program().get("FrmMain", "windowTitle").toString()), "Quorvex Config");
    bench_->program().clickMenu("mnuHelp", "mnuAbout");
    QTRY_VERIFY_WITH_TIMEOUT(
        bench_->program().box().startsWith("information \"About Quorvex Config\" [OK]: "), kReadLimitMs);
    bench_->program().clickOk();
    bench_->program().clickMenu("mnuFile", "mnuComPort");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList("ComSelect"), kReadLimitMs);
    QCOMPARE(onTitleBar(bench_->program().get("ComSelect", "windowTitle").toString()), "Select Serial Port");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestReading, QCoreApplication)
#include "test_reading.moc"
