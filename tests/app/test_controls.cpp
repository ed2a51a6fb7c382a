#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <QToolTip>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr char kBeltPack[] = "BeltPack";
constexpr char kAntenna[] = "Active Antenna";
constexpr char kRScreen[] = "R-Screen";

constexpr char kId[] = "Beltpack ID";
constexpr char kSystemId[] = "System ID (All Hex)";
constexpr char kPli[] = "Park Length Indicator (Hex)";
constexpr char kCarriers[] = "RF Carriers";
constexpr char kDect[] = "DECT Firmware Version Number";
constexpr char kCalibration[] = "Radio Module Calibration";
constexpr char kModuleA[] = "Module A (Timeslots 0, 4, 8)";
constexpr char kModuleB[] = "Module B (Timeslots 2, 6, 10)";

constexpr char kPliHover[] =
    "1F - conn to all AA on Matrix (normal); 12 - conn to all VGC Matrices; 27 - conn to just 1 AA";

struct Control {
    const char* page;   ///< "" outside the pages
    const char* frame;  ///< "" outside the frames
    const char* name;
    const char* kind;
    const char* text;  ///< caption, or what the field holds at the start
    const char* hover;
    bool enabled = true;
};

// The window before it is loaded: nothing is known of a port or a radio module yet.
constexpr Control kControls[] = {
    {kBeltPack, "", "CommandRdSettingsBp", "QPushButton", "&Read Settings From Beltpack",
     "Read Configuration Settings from Beltpack"},
    {kBeltPack, "", "CommandWrite", "QPushButton", "&Write Settings To Beltpack",
     "Write Configuration Settings to Beltpack", false},
    {kBeltPack, "", "CommandRead", "QPushButton", "Read &From File", "Read BP settings from saved file"},
    {kBeltPack, "", "CommandSave", "QPushButton", "Save &To File", "Saved read Beltpack settings to a file",
     false},
    {kBeltPack, "", "CommandSummary", "QPushButton", "&Summary", "View a summary of the Beltpack's Settings",
     false},
    {kBeltPack, kId, "Label1", "QLabel", "PSN (Serial Number)", ""},
    {kBeltPack, kId, "TextBeltpackId", "QLineEdit", "", "Beltpack's PMID (Decimal)"},
    {kBeltPack, kId, "CommandSetBpId", "QPushButton", "Update", "Send PSN to Beltpack"},
    {kBeltPack, kSystemId, "LabelEic", "QLabel", "EIC", ""},
    {kBeltPack, kSystemId, "LabelFpn", "QLabel", "FPN", "Fur Character Quorvex System ID"},
    {kBeltPack, kSystemId, "LabelFps", "QLabel", "FPS", ""},
    {kBeltPack, kSystemId, "LabelParkB", "QLabel", "PARK B", ""},
    {kBeltPack, kSystemId, "TextEic", "QLineEdit", "", "Equipment Installer's Code (00EC for Tarvin)"},
    {kBeltPack, kSystemId, "TextFpn", "QLineEdit", "", "Quorvex System ID (Only 2nd and 4th digits used)"},
    {kBeltPack, kSystemId, "TextFps", "QLineEdit", "", "Matrix System Number (0-F)"},
    {kBeltPack, kSystemId, "TextParkB", "QLineEdit", "", ""},
    {kBeltPack, kSystemId, "CommandDefault", "QPushButton", "Default", "Set the Default/Recommended PARK B"},
    {kBeltPack, kSystemId, "CommandHpPari", "QPushButton", "HP PARI",
     "Get the PARI to be set in the HP DECT Testset"},
    {kBeltPack, kSystemId, "CommandSetSysID", "QPushButton", "Update", "Send System Id to Beltpack"},
    {kBeltPack, kPli, "TextPli", "QLineEdit", "", kPliHover},
    {kBeltPack, kPli, "CmdUpdatePli", "QPushButton", "Update", "Send RF Carriers To BP"},
    {kBeltPack, kCarriers, "TextRfCarrs", "QLineEdit", "", ""},
    {kBeltPack, kCarriers, "CmdSetRfCarrs", "QPushButton", "Update", "Send RF Carriers To BP"},
    {kBeltPack, kCarriers, "LabelRegulations", "QLabel", "Regulations", ""},
    {kBeltPack, kCarriers, "BPRegulations", "QListWidget", nullptr, ""},
    {kBeltPack, kCarriers, "FCCCheckBox", "QCheckBox", "FCC Enable", ""},
    {kBeltPack, kDect, "TextDectVerBP", "QLineEdit", "", ""},
    {kBeltPack, kDect, "CommandDectPPVerReq", "QPushButton", "Request", ""},
    {kBeltPack, kCalibration, "TextFMDev", "QLineEdit", "", ""},
    {kBeltPack, kCalibration, "TextFreqAccr", "QLineEdit", "", ""},
    {kBeltPack, kCalibration, "TextFreqAccrRx", "QLineEdit", "", ""},
    {kBeltPack, kCalibration, "TextFreqAccrTx", "QLineEdit", "", ""},
    {kBeltPack, kCalibration, "TextRssiThr", "QLineEdit", "", ""},
    {kBeltPack, kCalibration, "CommandCalibBp", "QPushButton", "Calibrate", "Calibrate Beltpack"},
    {kBeltPack, kCalibration, "LabelFreqAccr", "QLabel", "Frequency Accuracy:", ""},
    {kBeltPack, kCalibration, "LabelRx", "QLabel", "Rx", ""},
    {kBeltPack, kCalibration, "LabelMid", "QLabel", "Mid", ""},
    {kBeltPack, kCalibration, "LabelTx", "QLabel", "Tx", ""},
    {kBeltPack, kCalibration, "LabelRssiThr", "QLabel", "RSSI Thr:", ""},
    {kBeltPack, "", "checkBattAlarm", "QCheckBox", "Battery Alarm", ""},
    {kBeltPack, "", "optionMICBal", "QRadioButton", "MIC Bal", ""},
    {kBeltPack, "", "optionMICUnBal", "QRadioButton", "MIC Unbal", ""},
    {kBeltPack, "", "optionMICElectret", "QRadioButton", "MIC Electret", ""},
    {kBeltPack, "", "buttonSetProdSettiings", "QPushButton", "Set Production Values", ""},
    {kBeltPack, "", "BPHWRevision", "QListWidget", nullptr, ""},
    {kBeltPack, "", "BPHWRevisionText", "QLabel", "HW REV:", ""},
    {kBeltPack, "", "Label12", "QLabel", "Defaults", ""},
    {kAntenna, "", "CommandRdSettingsAA", "QPushButton", "&Read Settings",
     "Read Active Antenna's Configuration settings."},
    {kAntenna, "", "CommandSetTbr6", "QPushButton", "&Read Settings and Set TBR6 mode",
     "Read Active Antenna's Configuration settings and set TBR6 mode."},
    {kAntenna, kModuleA, "TextFmDevA", "QLineEdit", "", ""},
    {kAntenna, kModuleA, "TextFreqAdjA", "QLineEdit", "", ""},
    {kAntenna, kModuleA, "TextFreqAdjRxA", "QLineEdit", "", ""},
    {kAntenna, kModuleA, "TextFreqAdjTxA", "QLineEdit", "", ""},
    {kAntenna, kModuleA, "CommandCalibAAA", "QPushButton", "Calibrate", "Calibrate Module A"},
    {kAntenna, kModuleA, "LabelFreqAdjA", "QLabel", "Frequency Accuracy:", ""},
    {kAntenna, kModuleA, "LabelRxA", "QLabel", "Rx", ""},
    {kAntenna, kModuleA, "LabelMidA", "QLabel", "Mid", ""},
    {kAntenna, kModuleA, "LabelTxA", "QLabel", "Tx", ""},
    {kAntenna, kModuleB, "TextFmDevB", "QLineEdit", "", ""},
    {kAntenna, kModuleB, "TextFreqAdjB", "QLineEdit", "", ""},
    {kAntenna, kModuleB, "TextFreqAdjRxB", "QLineEdit", "", ""},
    {kAntenna, kModuleB, "TextFreqAdjTxB", "QLineEdit", "", ""},
    {kAntenna, kModuleB, "CommandCalibAAB", "QPushButton", "Calibrate", "Calibrate Module B"},
    {kAntenna, kModuleB, "LabelFreqAdjB", "QLabel", "Frequency Accuracy:", ""},
    {kAntenna, kModuleB, "LabelRxB", "QLabel", "Rx", ""},
    {kAntenna, kModuleB, "LabelMidB", "QLabel", "Mid", ""},
    {kAntenna, kModuleB, "LabelTxB", "QLabel", "Tx", ""},
    {kAntenna, kDect, "TextDectVer", "QLineEdit", "", ""},
    {kAntenna, kDect, "CommandDectVerReq", "QPushButton", "Request", ""},
    {kRScreen, "", "Picture1", "QWidget", nullptr, ""},
    {kRScreen, "", "CommandScreenDump", "QPushButton", "Save", ""},
    {kRScreen, "", "screenDump", "QLineEdit", "", ""},
    {kRScreen, "", "ScreenDumpFName", "QLineEdit", "Grab1", ""},
    {kRScreen, "", "AutoIncrementOption", "QCheckBox", "Auto Increment", ""},
    {kRScreen, "", "autoIncValText", "QLineEdit", "0", ""},
    {kRScreen, "", "Label5", "QLabel", "Root Dir:", ""},
    {kRScreen, "", "Label6", "QLabel", "Filename:", ""},
    {"", "", "LblStatus", "QLabel", "", ""},
    {"", "", "LabelComPort", "QLabel", "No Comms", ""},
};

QString frameOf(const QWidget& control) {
    for (const QWidget* parent = control.parentWidget(); parent; parent = parent->parentWidget()) {
        if (const auto* frame = qobject_cast<const QGroupBox*>(parent))
            return frame->title();
    }
    return {};
}

}  // namespace

/// What stands where in the window when nothing has happened yet.
class TestControls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void control_data();
    void control();
    void labels_data();
    void labels();
    void nothingElseToWorkWith();
    void pages();
    void caption();
    void menus_data();
    void menus();
    void nothingIsTicked();
    void screenTimerRuns();
    void hoverTextIsShown_data();
    void hoverTextIsShown();

private:
    QString pageOf(const QWidget& control);

    std::unique_ptr<Bench> bench_;
};

void TestControls::init() {
    renew(bench_);
    bench_->show();
}

QString TestControls::pageOf(const QWidget& control) {
    const auto& tabs = bench_->control<QTabWidget>("SSTab1");
    for (int i = 0; i < tabs.count(); ++i) {
        if (tabs.widget(i)->isAncestorOf(&control))
            return tabs.tabText(i);
    }
    return {};
}

void TestControls::control_data() {
    QTest::addColumn<int>("row");
    for (int i = 0; i < static_cast<int>(std::size(kControls)); ++i)
        QTest::newRow(kControls[i].name) << i;
}

void TestControls::control() {
    QFETCH(int, row);
    const Control& expected = kControls[row];
    const auto found = bench_->window().findChildren<QWidget*>(expected.name);
    QCOMPARE(found.size(), 1);
    const QWidget& control = *found.first();
    QVERIFY2(control.inherits(expected.kind), control.metaObject()->className());
    QCOMPARE(pageOf(control), expected.page);
    QCOMPARE(frameOf(control), expected.frame);
    if (expected.text)
        QCOMPARE(control.property("text").toString(), expected.text);
    QCOMPARE(control.toolTip(), expected.hover);
    QCOMPARE(control.isEnabled(), expected.enabled);
    if (const auto* list = qobject_cast<const QListWidget*>(&control))
        QCOMPARE(list->count(), 0);
}

// Labels that only their frame and caption tell apart, with the field that each names.
void TestControls::labels_data() {
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("hover");
    const auto row = [](const char* frame, const char* caption, const char* field, const char* hover = "") {
        QTest::addRow("%s, %s", frame, caption)
            << QString(frame) << QString(caption) << QString(field) << QString(hover);
    };
    row(kId, "PSN (Serial Number)", "TextBeltpackId");
    row(kSystemId, "EIC", "TextEic");
    row(kSystemId, "FPN", "TextFpn", "Fur Character Quorvex System ID");
    row(kSystemId, "FPS", "TextFps");
    row(kSystemId, "PARK B", "TextParkB");
    row(kCarriers, "Regulations", "BPRegulations");
    row(kCalibration, "FM Dev:", "TextFMDev");
    row(kCalibration, "Frequency Accuracy:", "TextFreqAccr");
    row(kCalibration, "Rx", "TextFreqAccrRx");
    row(kCalibration, "Mid", "TextFreqAccr");
    row(kCalibration, "Tx", "TextFreqAccrTx");
    row(kCalibration, "RSSI Thr:", "TextRssiThr");
    row(kModuleA, "FM Deviation:", "TextFmDevA");
    row(kModuleA, "Frequency Accuracy:", "TextFreqAdjA");
    row(kModuleA, "Rx", "TextFreqAdjRxA");
    row(kModuleA, "Mid", "TextFreqAdjA");
    row(kModuleA, "Tx", "TextFreqAdjTxA");
    row(kModuleB, "FM Deviation:", "TextFmDevB");
    row(kModuleB, "Frequency Accuracy:", "TextFreqAdjB");
    row(kModuleB, "Rx", "TextFreqAdjRxB");
    row(kModuleB, "Mid", "TextFreqAdjB");
    row(kModuleB, "Tx", "TextFreqAdjTxB");
    row("", "HW REV:", "BPHWRevision");
    row("", "Root Dir:", "screenDump");
    row("", "Filename:", "ScreenDumpFName");
}

void TestControls::labels() {
    QFETCH(QString, frame);
    QFETCH(QString, caption);
    QFETCH(QString, field);
    QFETCH(QString, hover);
    QList<const QLabel*> found;
    for (const QLabel* label : bench_->window().findChildren<QLabel*>()) {
        if (label->text() == caption && frameOf(*label) == frame)
            found << label;
    }
    QCOMPARE(found.size(), 1);
    QVERIFY(found.first()->buddy());
    QCOMPARE(found.first()->buddy()->objectName(), field);
    QCOMPARE(found.first()->toolTip(), hover);
}

void TestControls::nothingElseToWorkWith() {
    QSet<QString> known;
    for (const Control& control : kControls)
        known << control.name;
    for (const QWidget* control : bench_->window().findChildren<QWidget*>()) {
        const bool works =
            qobject_cast<const QPushButton*>(control) || qobject_cast<const QLineEdit*>(control) ||
            qobject_cast<const QCheckBox*>(control) || qobject_cast<const QRadioButton*>(control) ||
            qobject_cast<const QListWidget*>(control) || qobject_cast<const QComboBox*>(control);
        QVERIFY2(!works || known.contains(control->objectName()), qPrintable(control->objectName()));
    }
}

void TestControls::pages() {
    const auto& tabs = bench_->control<QTabWidget>("SSTab1");
    QStringList captions;
    for (int i = 0; i < tabs.count(); ++i)
        captions << tabs.tabText(i);
    QCOMPARE(captions, QStringList({kBeltPack, kAntenna, kRScreen}));
    QCOMPARE(tabs.currentIndex(), 0);
}

void TestControls::caption() {
    QCOMPARE(bench_->window().windowTitle(), "Quorvex Config");
    QCOMPARE(bench_->window().objectName(), "FrmMain");
}

void TestControls::menus_data() {
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("file") << "mnuFile"
                          << "&File"
                          << QStringList({"mnuComPort &COM Port", "mnuRfModule &RF Module Type",
                                          "mnuDash1 ----", "mnuExit &Exit"});
    QTest::newRow("help") << "mnuHelp"
                          << "&Help" << QStringList({"mnuAbout &About"});
}

void TestControls::menus() {
    QFETCH(QString, menu);
    QFETCH(QString, caption);
    QFETCH(QStringList, items);
    const auto& found = bench_->control<QMenu>(menu);
    QCOMPARE(found.title(), caption);
    QVERIFY(bench_->window().menuBar()->actions().contains(found.menuAction()));
    QStringList shown;
    for (const QAction* item : found.actions()) {
        shown << item->objectName() + " " + (item->isSeparator() ? "----" : item->text());
        QVERIFY(item->isEnabled());
    }
    QCOMPARE(shown, items);
    QStringList bar;
    for (const QAction* title : bench_->window().menuBar()->actions())
        bar << title->text();
    QCOMPARE(bar, QStringList({"&File", "&Help"}));
}

void TestControls::nothingIsTicked() {
    for (const QAbstractButton* button : bench_->window().findChildren<QAbstractButton*>()) {
        if (qobject_cast<const QCheckBox*>(button) || qobject_cast<const QRadioButton*>(button))
            QVERIFY2(!button->isChecked(), qPrintable(button->objectName()));
    }
}

void TestControls::screenTimerRuns() {
    const auto& timer = bench_->control<QTimer>("RScreenTimer");
    QVERIFY(timer.isActive());
    QVERIFY(!timer.isSingleShot());
    QCOMPARE(timer.interval(), 250);
}

void TestControls::hoverTextIsShown_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("hover");
    QTest::newRow("button") << "CommandRdSettingsBp"
                            << "Read Configuration Settings from Beltpack";
    QTest::newRow("disabled button") << "CommandWrite"
                                     << "Write Configuration Settings to Beltpack";
    QTest::newRow("field") << "TextPli" << QString(kPliHover);
}

void TestControls::hoverTextIsShown() {
    QFETCH(QString, control);
    QFETCH(QString, hover);
    auto& target = bench_->control(control);
    const QPoint middle = target.rect().center();
    QHelpEvent rest(QEvent::ToolTip, middle, target.mapToGlobal(middle));
    QApplication::sendEvent(&target, &rest);
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), hover);
    QToolTip::hideText();
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestControls, QApplication)
#include "test_controls.moc"
