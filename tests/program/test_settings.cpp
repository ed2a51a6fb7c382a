#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTest>

#include "tests/support/bench_top.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kStartLimitMs = 10'000;
}

/// The stored settings of the program as it is shipped: the file itself, read
/// and written.
class TestSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { bench_.reset(); }
    void nothingStored();
    void choicesAreStored();
    void storedPortIsOpened();
    void portChangedOnDisk();
    void moduleChangedOnDisk();
    void readStoresTheModule();
    void folderIsMade();
    void homeFolder();
    void portDialog();
    void hoverTextsTellTheDevice();
    void busyPort();
    void absentPort();

private:
    void openDialog(const QString& item, const QString& dialog);
    void closeDialog(const QString& button, const QString& dialog);

    std::unique_ptr<BenchTop> bench_;
};

void TestSettings::init() {
    bench_ = std::make_unique<BenchTop>();
    QVERIFY(bench_->plugIn(1, {"beltpack", "--module", "kirk"}).isReady());
}

void TestSettings::openDialog(const QString& item, const QString& dialog) {
    bench_->program().clickMenu("mnuFile", item);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList(dialog), kStartLimitMs);
}

void TestSettings::closeDialog(const QString& button, const QString& dialog) {
    bench_->program().click(button);
    QTRY_VERIFY_WITH_TIMEOUT(!bench_->program().dialogs().contains(dialog), kStartLimitMs);
}

void TestSettings::nothingStored() {
    QVERIFY(bench_->start());
    QCOMPARE(bench_->program().text("LabelComPort"), "COM1");
    QCOMPARE(bench_->program().text("CommandCalibBp"), "Calibrate RM5 Module");
    QVERIFY(!QFile::exists(bench_->settingsFile()));
}

void TestSettings::choicesAreStored() {
    QVERIFY(QFile::link(bench_->portLink(1), bench_->portLink(12)));
    QVERIFY(bench_->start());
    openDialog("mnuComPort", "ComSelect");
    bench_->pickPort(12);
    closeDialog("CmdOK", "ComSelect");
    QCOMPARE(bench_->program().text("LabelComPort"), "COM12");
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=12\n");
    openDialog("mnuRfModule", "FormRfModule");
    bench_->program().key("FormRfModule", Qt::Key_Up);
    QTRY_VERIFY_WITH_TIMEOUT(bench_->program().get("OptionKirk", "checked").toBool(), kStartLimitMs);
    closeDialog("OKButton", "FormRfModule");
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=12\nRfModule=1\n");
    QCOMPARE(bench_->program().text("CommandCalibBp"), "Calibrate Kirk Module");
    // The next start knows both.
    QVERIFY(bench_->start());
    QCOMPARE(bench_->program().text("LabelComPort"), "COM12");
    QCOMPARE(bench_->program().text("CommandCalibBp"), "Calibrate Kirk Module");
}

void TestSettings::storedPortIsOpened() {
    QVERIFY(QFile::link(bench_->portLink(1), bench_->portLink(3)));
    bench_->writeSettings("[Settings]\nComPort=3\nRfModule=1\n");
    QVERIFY(bench_->start());
    QCOMPARE(bench_->program().text("LabelComPort"), "COM3");
    QCOMPARE(bench_->program().text("CommandCalibAAA"), "Calibrate Kirk Module A");
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=3\nRfModule=1\n");
}

void TestSettings::portChangedOnDisk() {
    QVERIFY(bench_->start());
    for (const int number : {7, 2, 12}) {
        bench_->writeSettings("[Settings]\nComPort=" + QByteArray::number(number) + "\n");
        openDialog("mnuComPort", "ComSelect");
        const QString expected = "COM" + QString::number(number);
        QCOMPARE(bench_->program().get("ComboCom", "currentText").toString(), expected);
        closeDialog("CmdCancel", "ComSelect");
        // After a cancel the label tells the stored number.
        QCOMPARE(bench_->program().text("LabelComPort"), expected);
    }
    QVERIFY(QFile::remove(bench_->settingsFile()));
    openDialog("mnuComPort", "ComSelect");
    QCOMPARE(bench_->program().get("ComboCom", "currentText").toString(), "COM1");
}

void TestSettings::moduleChangedOnDisk() {
    QVERIFY(bench_->start());
    bench_->writeSettings("[Settings]\nRfModule=5\n");
    openDialog("mnuRfModule", "FormRfModule");
    QVERIFY(bench_->program().get("OptionKirk", "checked").toBool());
    closeDialog("OKButton", "FormRfModule");
    QCOMPARE(bench_->settings(), "[Settings]\nRfModule=1\n");
    bench_->writeSettings("[Settings]\nRfModule=0\n");
    openDialog("mnuRfModule", "FormRfModule");
    QVERIFY(bench_->program().get("OptionRm5", "checked").toBool());
    closeDialog("CancelButton", "FormRfModule");
    QCOMPARE(bench_->settings(), "[Settings]\nRfModule=1\n");
}

void TestSettings::readStoresTheModule() {
    bench_->writeSettings("[Settings]\nComPort=1\nRfModule=0\n");
    QVERIFY(bench_->start());
    bench_->program().click("CommandRdSettingsBp");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("LblStatus"),
                              "Settings read from Beltpack successfully.", kStartLimitMs);
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=1\nRfModule=1\n");
}

void TestSettings::folderIsMade() {
    const QTemporaryDir folder;
    const QString deep = folder.filePath("not/yet/there");
    Program program({{"QUORVEX_PORTS", QFileInfo(bench_->portLink(1)).path()}, {"XDG_CONFIG_HOME", deep}});
    QTRY_VERIFY_WITH_TIMEOUT(program.isWindowUp(), kStartLimitMs);
    program.click("CommandRdSettingsBp");
    QTRY_VERIFY_WITH_TIMEOUT(program.text("LblStatus").endsWith("successfully."), kStartLimitMs);
    QFile file(deep + "/QuorvexCfg.conf");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "[Settings]\nRfModule=1\n");
}

void TestSettings::homeFolder() {
    const QTemporaryDir home;
    Program program({{"QUORVEX_PORTS", QFileInfo(bench_->portLink(1)).path()},
                     {"XDG_CONFIG_HOME", ""},
                     {"HOME", home.path()}});
    QTRY_VERIFY_WITH_TIMEOUT(program.isWindowUp(), kStartLimitMs);
    program.click("CommandRdSettingsBp");
    QTRY_VERIFY_WITH_TIMEOUT(program.text("LblStatus").endsWith("successfully."), kStartLimitMs);
    QFile file(home.filePath(".config/QuorvexCfg.conf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "[Settings]\nRfModule=1\n");
}

void TestSettings::portDialog() {
    QVERIFY(bench_->start());
    openDialog("mnuComPort", "ComSelect");
    QStringList items;
    for (const QJsonValue& item : bench_->program().ask({{"do", "items"}, {"name", "ComboCom"}}).toArray())
        items << item.toString();
    QCOMPARE(items, QStringList({"COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8", "COM9",
                                 "COM10", "COM11", "COM12"}));
    bench_->program().key("ComSelect", Qt::Key_Escape);
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList(), kStartLimitMs);
    QVERIFY(!QFile::exists(bench_->settingsFile()));
}

void TestSettings::hoverTextsTellTheDevice() {
    QVERIFY(bench_->start());
    const QString device = QFileInfo(bench_->portLink(1)).canonicalFilePath();
    QVERIFY(device.startsWith("/dev/pts/"));
    QCOMPARE(bench_->program().get("LabelComPort", "toolTip").toString(), device);
    // After a cancel the label tells the stored number, its hover text still the port that is open.
    bench_->writeSettings("[Settings]\nComPort=5\n");
    openDialog("mnuComPort", "ComSelect");
    closeDialog("CmdCancel", "ComSelect");
    QCOMPARE(bench_->program().text("LabelComPort"), "COM5");
    QCOMPARE(bench_->program().get("LabelComPort", "toolTip").toString(), device);
}

// Two programs cannot share a port: the second one says so and offers another.
void TestSettings::busyPort() {
    QVERIFY(bench_->start());
    Program second({{"QUORVEX_PORTS", QFileInfo(bench_->portLink(1)).path()},
                    {"XDG_CONFIG_HOME", QFileInfo(bench_->settingsFile()).path()}});
    QTRY_COMPARE_WITH_TIMEOUT(second.box(), "critical \"Quorvex Config\" [OK]: Could not open COM 1",
                              kStartLimitMs);
    second.clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(second.dialogs(), QStringList("ComSelect"), kStartLimitMs);
    second.click("CmdCancel");
    QTRY_COMPARE_WITH_TIMEOUT(second.text("LabelComPort"), "No Comms", kStartLimitMs);
    const QString holder = QString("In use by quorvex-config (%1)").arg(bench_->program().id());
    QTRY_VERIFY_WITH_TIMEOUT(second.get("LabelComPort", "toolTip").toString().contains(holder),
                             kStartLimitMs);
    bench_->program().click("CommandDectPPVerReq");
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().text("TextDectVerBP"), "4.07", kStartLimitMs);
}

void TestSettings::absentPort() {
    bench_->writeSettings("[Settings]\nComPort=9\n");
    bench_->run();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().box(),
                              "critical \"Quorvex Config\" [OK]: Could not open COM 9", kStartLimitMs);
    QVERIFY(bench_->program().isWindowUp());
    bench_->program().clickOk();
    QTRY_COMPARE_WITH_TIMEOUT(bench_->program().dialogs(), QStringList("ComSelect"), kStartLimitMs);
    QCOMPARE(bench_->program().get("ComboCom", "currentText").toString(), "COM9");
    bench_->pickPort(1);
    closeDialog("CmdOK", "ComSelect");
    QCOMPARE(bench_->program().text("LabelComPort"), "COM1");
    QCOMPARE(bench_->settings(), "[Settings]\nComPort=1\n");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettings, QCoreApplication)
#include "test_settings.moc"
