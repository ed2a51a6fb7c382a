#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "form/one_item_list_widget.h"
#include "tests/support/image_view.h"
#include "tests/support/port_deeds.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kDeepest = 70;
const QString kRefused = "red: Too many operations are waiting for the unit; this one was not started.";
const QString kCalibrated = "black: Beltpack Calibrated successfully.";
const QString kCancelled = "black: Beltpack Calibration Cancelled.";

}  // namespace

/// Presses of "Request" on a silent unit wait inside each other. Whatever opens at any depth can be left,
/// and what has no room is refused before it does anything.
class TestDepth : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void dialogs();
    void calibration();
    void editors();
    void exits();
    void portChosen();
    void productionValues_data();
    void productionValues();

private:
    void start();
    /// Goes down to `deepest` and does `deed` at each depth on the way.
    void descend(int deepest, const std::function<void(int)>& deed, int depth = 1);
    void leave(const QString& button, const std::function<void(QDialog&)>& close, const QString& entry);
    void calibrate(const QString& way);

    std::unique_ptr<Bench> bench_;
};

void TestDepth::start() {
    renew(bench_);
    bench_->startWith(kRm5).addFault(sim::parseFault("no-version"));
    bench_->click("CommandRdSettingsBp");
    bench_->wire.forgetLines();
}

void TestDepth::descend(int deepest, const std::function<void(int)>& deed, int depth) {
    const auto isDown = std::make_shared<bool>(false);
    const auto below = [=, this] {
        if (*isDown)
            return;
        *isDown = true;
        deed(depth);
        if (depth < deepest && !QTest::currentTestFailed())
            descend(deepest, deed, depth + 1);
    };
    bench_->loop.inNextWait(below);
    bench_->click("CommandDectPPVerReq");
    if (*isDown)
        return;
    QCOMPARE(bench_->status(), kRefused);
    below();
}

void TestDepth::leave(const QString& opener, const std::function<void(QDialog&)>& close,
                      const QString& entry) {
    bench_->person.plan(close);
    if (opener.startsWith("mnu"))
        bench_->clickMenu(opener);
    else
        bench_->click(opener);
    QStringList happened = bench_->journal.take();
    happened.removeAll("store RfModule=0");  // of the module dialog
    QCOMPARE(happened, QStringList(entry));
}

void TestDepth::dialogs() {
    const auto by = [](const char* button) {
        return [button](QDialog& dialog) { hand::click(*dialog.findChild<QWidget*>(button)); };
    };
    const auto cancelFile = [](QDialog& dialog) {
        hand::click(*dialog.findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Cancel));
    };
    int seen = 0;
    descend(kDeepest, [&](int) {
        leave("mnuComPort", by("CmdCancel"), dialogEntry("ComSelect", "Select Serial Port"));
        leave("mnuRfModule", by("CancelButton"), dialogEntry("FormRfModule", "Select Type Of RF Module"));
        leave("CommandSummary", by("CommandOK"),
              dialogEntry("FormCfgSummary", "Registration Configuration Summary"));
        leave("CommandSave", cancelFile, dialogEntry("CommonDialog1", "Save settings..."));
        leave("CommandRead", cancelFile, dialogEntry("CommonDialog1", "Open File"));
        bench_->clickMenu("mnuAbout");
        const QStringList about = bench_->journal.take();
        QCOMPARE(about.size(), 1);
        QVERIFY(about.first().startsWith("box information \"About Quorvex Config\" [OK]: "));
        ++seen;
    });
    QCOMPARE(seen, kDeepest);
    QCOMPARE(bench_->text("TextDectVerBP"), "Unavailable");
}

void TestDepth::calibrate(const QString& way) {
    bench_->wire.forgetLines();
    bool isOpened = false;
    bench_->person.plan([&](QDialog& dialog) {
        isOpened = true;
        dialog.findChild<QTimer*>("Timer1")->setInterval(1);
        if (way == "Esc")
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        else if (way == "window button")
            dialog.close();
        else
            hand::click(*dialog.findChild<QWidget*>(way));
        QTRY_VERIFY(!dialog.isVisible());
    });
    bench_->click("CommandCalibBp");
    bench_->person.forgetPlans();
    const QStringList happened = bench_->journal.take();
    if (isOpened) {
        QCOMPARE(happened, QStringList(dialogEntry("FormCalib", "Calibrate Beltpack")));
        QCOMPARE(bench_->status(), way == "CommandOK" ? kCalibrated : kCancelled);
    } else {
        QCOMPARE(happened, QStringList());
        QCOMPARE(bench_->status(), kRefused);
        QCOMPARE(bench_->wire.lines(), QStringList());
    }
}

void TestDepth::calibration() {
    int seen = 0;
    QStringList refused;
    descend(kDeepest, [&](int depth) {
        for (const char* way : {"CommandOK", "CommandCancel", "Esc", "window button"}) {
            calibrate(way);
            if (bench_->status() == kRefused)
                refused << QString::number(depth);
        }
        ++seen;
    });
    QCOMPARE(seen, kDeepest);
    refused.removeDuplicates();
    QVERIFY(!refused.isEmpty());
    QVERIFY2(refused.first().toInt() > 20, qPrintable(refused.first()));
    QCOMPARE(refused.size(), kDeepest + 1 - refused.first().toInt());
}

void TestDepth::editors() {
    int seen = 0;
    descend(kDeepest, [&](int depth) {
        const char* const microphones[] = {"optionMICBal", "optionMICUnBal", "optionMICElectret"};
        const QString microphone = microphones[depth % 3];
        bench_->click(microphone);
        bench_->click("checkBattAlarm");
        for (const auto& [list, by] : {std::pair{"BPHWRevision", 120}, {"BPRegulations", -120}})
            hand::turnWheel(*bench_->control<OneItemListWidget>(list).viewport(), depth % 2 == 0 ? -by : by);
        const auto image = imageOf(*bench_);
        QVERIFY(bench_->control<QRadioButton>(microphone).isChecked());
        QCOMPARE(image.at("07"), QString("0%1        ").arg(depth % 3));
        const bool alarm = bench_->control<QCheckBox>("checkBattAlarm").isChecked();
        QCOMPARE(alarm, depth % 2 == 0);
        QCOMPARE(image.at("06"), alarm ? "01        " : "00        ");
        for (const auto& [list, number] : {std::pair{"BPHWRevision", "15"}, {"BPRegulations", "10"}}) {
            const int shown = bench_->control<OneItemListWidget>(list).topIndex();
            QCOMPARE(image.at(number), QString("0%1        ").arg(shown));
        }
        QCOMPARE(bench_->journal.take(), QStringList());
        ++seen;
    });
    QCOMPARE(seen, kDeepest);
}

void TestDepth::exits() {
    for (int depth = 1; depth <= kDeepest; ++depth) {
        start();
        descend(depth, [&](int at) {
            if (at == depth)
                bench_->clickMenu("mnuExit");
        });
        QCOMPARE(bench_->journal.take(), QStringList({"close", "end 0"}));
    }
}

void TestDepth::portChosen() {
    for (int depth = 1; depth <= kDeepest; ++depth) {
        start();
        std::int64_t chosenAtMs = 0;
        descend(depth, [&](int at) {
            if (at != depth)
                return;
            choosePort(*bench_, 2);
            chosenAtMs = bench_->clock.nowMs;
        });
        QCOMPARE(bench_->journal.take(), QStringList({dialogEntry("ComSelect", "Select Serial Port"), "close",
                                                      "open 2", "store ComPort=2"}));
        QCOMPARE(bench_->clock.nowMs, chosenAtMs);  // all of them are over
        bench_->beltpack().clearFaults();
        bench_->click("CommandDectPPVerReq");
        QCOMPARE(bench_->text("TextDectVerBP"), "4.07");
    }
}

void TestDepth::productionValues_data() {
    QTest::addColumn<int>("depth");
    for (const int depth : {1, 29, 30, 31, 32, 33, kDeepest})
        QTest::addRow("%d", depth) << depth;
}

void TestDepth::productionValues() {
    QFETCH(int, depth);
    const auto before = imageOf(*bench_);
    descend(depth, [&](int at) {
        if (at != depth)
            return;
        bench_->wire.forgetLines();
        bench_->click("buttonSetProdSettiings");
        if (bench_->status() == kRefused) {
            QVERIFY(depth > 20);
            QCOMPARE(bench_->wire.lines(), QStringList());
            QCOMPARE(imageOf(*bench_), before);
        } else {
            QVERIFY(depth < 32);
            QCOMPARE(bench_->status(), "green: Settings written to Beltpack successfully!");
            QCOMPARE(bench_->wire.lines().last(), "# 027E01");
            QVERIFY(imageOf(*bench_) != before);
        }
    });
    QCOMPARE(bench_->journal.take(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestDepth, QApplication)
#include "test_depth.moc"
