#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QTabBar>
#include <QTabWidget>
#include <QWindow>

#include "form/button.h"
#include "simulator/active_antenna.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QStringList kWork{"CommandRdSettingsBp", "CommandRead",  "optionMIC",
                        "checkBattAlarm",      "BPHWRevision", "buttonSetProdSettiings"};
const QStringList kIdentity{
    "TextBeltpackId",     "CommandSetBpId", "TextEic",         "TextFpn", "TextFps",      "TextParkB",
    "CommandDefault",     "CommandHpPari",  "CommandSetSysID", "TextPli", "CmdUpdatePli", "TextDectVerBP",
    "CommandDectPPVerReq"};
const QStringList kCarrierBoxes{"TextRfCarrs", "CmdSetRfCarrs", "BPRegulations", "FCCCheckBox"};

/// Tells which stop is wrong; the lists are too long to be read in one line.
void compare(const QStringList& walked, const QStringList& expected) {
    for (qsizetype i = 0; i < std::max(walked.size(), expected.size()); ++i) {
        const QString stop = QStringLiteral("stop %1: ").arg(i);
        QCOMPARE(stop + walked.value(i, "none"), stop + expected.value(i, "none"));
    }
}

}  // namespace

/// The way of the Tab key through each page: every control that can be worked with, column by column, and
/// in each frame as one reads.
class TestTabOrder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void order_data();
    void order();
    void afterARead();
    void readingIsFirst();
    void keyboardAlone();

private:
    /// Names of what has the focus after each Tab, from the tab bar round to it again.
    QStringList walk(Qt::KeyboardModifiers modifiers);

    std::unique_ptr<Bench> bench_;
};

QStringList TestTabOrder::walk(Qt::KeyboardModifiers modifiers) {
    constexpr int kMost = 60;
    QWidget* bar = bench_->control<QTabWidget>("SSTab1").tabBar();
    bar->setFocus(Qt::TabFocusReason);
    QStringList names;
    for (int i = 0; i < kMost; ++i) {
        QTest::keyClick(bench_->window().windowHandle(), modifiers ? Qt::Key_Backtab : Qt::Key_Tab,
                        modifiers);
        const QWidget* focus = QApplication::focusWidget();
        if (focus == bar)
            return names;
        const QString name = focus ? focus->objectName() : QString("nothing");
        // The options are one stop, from which the arrow keys go on.
        names << (name.startsWith("optionMIC") ? QString("optionMIC") : name);
    }
    return names << "no end";
}

void TestTabOrder::order_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("BeltPack, RM5") << "BeltPack"
                                   << "0"
                                   << kWork + kIdentity + kCarrierBoxes +
                                          QStringList({"TextFMDev", "TextFreqAccr", "CommandCalibBp"});
    QTest::newRow("BeltPack, Kirk") << "BeltPack"
                                    << "1"
                                    << kWork + kIdentity + kCarrierBoxes +
                                           QStringList({"TextFMDev", "TextFreqAccrTx", "TextFreqAccr",
                                                        "TextFreqAccrRx", "TextRssiThr", "CommandCalibBp"});
    QTest::newRow("Active Antenna, RM5")
        << "Active Antenna"
        << "0"
        << QStringList({"CommandRdSettingsAA", "CommandSetTbr6", "TextFmDevA", "TextFreqAdjA",
                        "CommandCalibAAA", "TextFmDevB", "TextFreqAdjB", "CommandCalibAAB", "TextDectVer",
                        "CommandDectVerReq"});
    QTest::newRow("Active Antenna, Kirk")
        << "Active Antenna"
        << "1"
        << QStringList({"CommandRdSettingsAA", "CommandSetTbr6", "TextFmDevA", "TextFreqAdjTxA",
                        "TextFreqAdjA", "TextFreqAdjRxA", "CommandCalibAAA", "TextFmDevB", "TextFreqAdjTxB",
                        "TextFreqAdjB", "TextFreqAdjRxB", "CommandCalibAAB", "TextDectVer",
                        "CommandDectVerReq"});
    QTest::newRow("R-Screen") << "R-Screen"
                              << "0"
                              << QStringList({"screenDump", "ScreenDumpFName", "AutoIncrementOption",
                                              "autoIncValText", "CommandScreenDump"});
}

void TestTabOrder::order() {
    QFETCH(QString, page);
    QFETCH(QString, type);
    QFETCH(QStringList, expected);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    bench_->clickTab(page);
    compare(walk({}), expected);
    std::reverse(expected.begin(), expected.end());
    compare(walk(Qt::ShiftModifier), expected);
}

// The buttons that a read enables join in.
void TestTabOrder::afterARead() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    const QStringList expected{"CommandRdSettingsBp", "CommandWrite", "CommandRead",   "CommandSave",
                               "CommandSummary",      "optionMIC",    "checkBattAlarm"};
    QCOMPARE(walk({}).mid(0, expected.size()), expected);
}

// Reading leads and has the focus until something has been read; on the antenna's page too.
void TestTabOrder::readingIsFirst() {
    const auto leads = [this](const char* button) {
        return dynamic_cast<Button&>(bench_->control(button)).isLeading();
    };
    bench_->start();
    QCOMPARE(QApplication::focusWidget(), &bench_->control("CommandRdSettingsBp"));
    QVERIFY(leads("CommandRdSettingsBp"));
    const auto look = [this] { return bench_->control("CommandRdSettingsBp").grab().toImage(); };
    const QImage leading = look();

    bench_->click("CommandRdSettingsBp");  // nobody answers
    QVERIFY(leads("CommandRdSettingsBp"));
    sim::Beltpack beltpack(kRm5);
    bench_->wire.plugIn(&beltpack);
    bench_->click("CommandRdSettingsBp");
    QVERIFY(!leads("CommandRdSettingsBp"));
    QVERIFY(look() != leading);

    sim::ActiveAntenna antenna(kRm5);
    for (const char* button : {"CommandRdSettingsAA", "CommandSetTbr6"}) {
        renew(bench_);
        bench_->start();
        bench_->clickTab("Active Antenna");
        bench_->click(button);
        QVERIFY(leads("CommandRdSettingsAA"));
        bench_->wire.plugIn(&antenna);
        bench_->click(button);
        QVERIFY(!leads("CommandRdSettingsAA"));
    }
}

// From the start to a written Beltpack without the mouse.
void TestTabOrder::keyboardAlone() {
    const auto press = [this](Qt::Key key) { QTest::keyClick(bench_->window().windowHandle(), key); };
    bench_->startWith(kRm5);
    press(Qt::Key_Return);
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
    const auto goTo = [&](const char* control) {
        constexpr int kMost = 30;
        for (int i = 0; i < kMost && QApplication::focusWidget() != &bench_->control(control); ++i)
            press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), &bench_->control(control));
    };
    goTo("BPHWRevision");
    press(Qt::Key_Home);
    goTo("CommandWrite");
    press(Qt::Key_Return);
    QCOMPARE(bench_->status(), "green: Settings written to Beltpack successfully!");
    QCOMPARE(bench_->beltpack().value(0x15), "00");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTabOrder, QApplication)
#include "test_tab_order.moc"
