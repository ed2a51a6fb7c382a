#include <QLabel>

#include "tests/rscreen/screen_page.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QByteArray kDots(kFrameBytes, '.');  // without a character that begins a reply
constexpr std::int64_t kAtOnceMs = 100;

/// Something that opens in front of the window.
struct Front {
    const char* name;
    const char* opener;  ///< a menu item or a button
    const char* closer;  ///< the button; null for a message box
    QString entry;       ///< how its entry in the journal begins
};

const std::vector<Front>& fronts() {
    static const std::vector<Front> all{
        {"About", "mnuAbout", nullptr, "box information \"About Quorvex Config\" [OK]: "},
        {"module dialog", "mnuRfModule", "CancelButton",
         dialogEntry("FormRfModule", "Select Type Of RF Module")},
        {"port dialog", "mnuComPort", "CmdCancel", dialogEntry("ComSelect", "Select Serial Port")},
        {"failed read", "CommandRdSettingsBp", nullptr,
         failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.")},
        {"failed update", "CommandSetBpId", nullptr,
         failureEntry("Value could not read back from Beltpack!")},
        {"failed antenna read", "CommandRdSettingsAA", nullptr,
         failureEntry("No Response from Active Antenna!")},
    };
    return all;
}

}  // namespace

/// The picture goes on behind boxes and dialogs, which are left at once whatever a capture waits for.
class TestBehindBoxes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesOn_data() { rows(); }
    void goesOn();
    void closedOverACapture_data() { rows(); }
    void closedOverACapture();
    void openedAndClosedOverACapture_data() { rows(); }
    void openedAndClosedOverACapture();
    void closedBetweenTwoCaptures_data() { rows(); }
    void closedBetweenTwoCaptures();
    void takesNothingFromAReader_data();
    void takesNothingFromAReader();
    void takesNothingFromACalibration();

private:
    static void rows();
    QImage shown() { return page_->picture().image().convertToFormat(QImage::Format_RGB32); }
    void start(sim::RfModule module = kRm5);
    /// Opens it, does `inside` and closes it, if `inside` has not; returns when its handler has ended.
    void open(const Front& front, const std::function<void(QDialog&)>& inside);
    static void close(const Front& front, QDialog& dialog);
    /// A part of a frame, and a tick that waits for the rest while `deed` is done.
    void waitForTheRest(std::function<void()> deed);
    void demandRecovery();

    std::unique_ptr<ScreenPage> page_;
};

void TestBehindBoxes::rows() {
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < fronts().size(); ++i)
        QTest::newRow(fronts()[i].name) << static_cast<int>(i);
}

void TestBehindBoxes::start(sim::RfModule module) {
    page_.reset();
    page_ = std::make_unique<ScreenPage>(module);
    page_->timer().stop();  // its own ticks would come between
}

void TestBehindBoxes::close(const Front& front, QDialog& dialog) {
    if (front.closer)
        hand::click(*dialog.findChild<QWidget*>(front.closer));
    else
        hand::click(*dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Ok));
}

void TestBehindBoxes::open(const Front& front, const std::function<void(QDialog&)>& inside) {
    Bench& bench = page_->bench;
    bench.wire.answer("# 0101", "");
    const auto handling = [&](QDialog& dialog) {
        inside(dialog);
        if (dialog.isVisible())
            close(front, dialog);
    };
    if (front.closer)
        bench.person.plan(handling);
    else
        bench.person.beforeOk(handling);
    const QString opener = front.opener;
    if (opener == "CommandSetBpId")
        bench.control<QLineEdit>("TextBeltpackId").setText("77777");
    if (opener == "CommandRdSettingsAA")
        bench.clickTab("Active Antenna");
    if (opener.startsWith("mnu"))
        bench.clickMenu(opener);
    else
        bench.click(opener);
    bench.clickTab("BeltPack");
    bench.person.beforeOk({});
    QStringList happened = bench.journal.take();
    happened.removeAll("store RfModule=0");  // of the module dialog
    QCOMPARE(happened.size(), 1);
    QVERIFY2(happened.first().startsWith(front.entry), qPrintable(happened.first()));
}

void TestBehindBoxes::waitForTheRest(std::function<void()> deed) {
    page_->receive("sync" + kDots.first(100));
    page_->onceReceived(std::move(deed));
    page_->tick();
}

void TestBehindBoxes::demandRecovery() {
    page_->show(pictureBytes(77));
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(77)));
}

void TestBehindBoxes::goesOn() {
    QFETCH(int, row);
    start();
    open(fronts()[static_cast<std::size_t>(row)], [&](QDialog& dialog) {
        for (const int number : {1, 2, 3}) {
            page_->show(pictureBytes(number));
            QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(number)));
        }
        QVERIFY(dialog.isVisible());
    });
    demandRecovery();
}

void TestBehindBoxes::closedOverACapture() {
    QFETCH(int, row);
    const Front& front = fronts()[static_cast<std::size_t>(row)];
    start();
    std::int64_t closedAtMs = 0;
    open(front, [&](QDialog& dialog) {
        waitForTheRest([&] {
            close(front, dialog);
            closedAtMs = page_->bench.clock.nowMs;
        });
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(page_->bench.clock.nowMs - closedAtMs < kAtOnceMs);
    QCOMPARE(shown(), ScreenPage::drawn(kDots.first(100)));
    demandRecovery();
}

// What is half received below belongs to it still when it is closed without a tick.
void TestBehindBoxes::openedAndClosedOverACapture() {
    QFETCH(int, row);
    const Front& front = fronts()[static_cast<std::size_t>(row)];
    const bool talks = QString(front.opener).startsWith("Command");
    start();
    waitForTheRest([&] {
        open(front, [](QDialog&) {});
        page_->receive(kDots.sliced(100));
    });
    QCOMPARE(shown(), ScreenPage::drawn(talks ? kDots.first(100) : kDots));
    demandRecovery();
}

void TestBehindBoxes::closedBetweenTwoCaptures() {
    QFETCH(int, row);
    const Front& front = fronts()[static_cast<std::size_t>(row)];
    start();
    std::int64_t closedAtMs = 0;
    waitForTheRest([&] {
        open(front, [&](QDialog& dialog) {
            demandRecovery();
            waitForTheRest([&] {
                close(front, dialog);
                closedAtMs = page_->bench.clock.nowMs;
            });
        });
        QVERIFY(page_->bench.clock.nowMs - closedAtMs < kAtOnceMs);
    });
    QVERIFY(page_->bench.clock.nowMs - closedAtMs < kAtOnceMs);
    demandRecovery();
}

void TestBehindBoxes::takesNothingFromAReader_data() {
    QTest::addColumn<int>("row");
    for (const int row : {0, 1, 2})
        QTest::newRow(fronts()[static_cast<std::size_t>(row)].name) << row;
}

void TestBehindBoxes::takesNothingFromAReader() {
    QFETCH(int, row);
    start();
    std::size_t before = 0;
    std::size_t after = 1;
    page_->bench.duringExchange("! 0108", [&] {
        open(fronts()[static_cast<std::size_t>(row)], [&](QDialog&) {
            page_->receive(frame(2));
            page_->receive("");  // the reply is there as well
            before = page_->bench.wire.waiting();
            page_->tick();
            after = page_->bench.wire.waiting();
        });
    });
    page_->bench.click("CommandDectPPVerReq");
    QVERIFY(before > 500);
    QCOMPARE(after, before);
    QCOMPARE(page_->bench.text("TextDectVerBP"), "4.07");
    page_->tick();
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(2)));
}

void TestBehindBoxes::takesNothingFromACalibration() {
    start(kKirk);
    Bench& bench = page_->bench;
    bench.person.plan([&](QDialog& dialog) {
        dialog.findChild<QTimer*>("Timer1")->setInterval(1);
        const auto& rssi = *dialog.findChild<QLabel*>("LabelRssi");
        for (int reading = 0; reading < 5; ++reading) {
            const QString before = rssi.text();
            QTRY_VERIFY(rssi.text() != before);
            page_->receive("sync" + kDots + "\r\n");
            const std::size_t waiting = bench.wire.waiting();
            QVERIFY(waiting > 500);
            page_->tick();
            QCOMPARE(bench.wire.waiting(), waiting);
        }
        hand::click(*dialog.findChild<QWidget*>("CommandCancel"));
        QTRY_VERIFY(!dialog.isVisible());
    });
    bench.click("CommandCalibBp");
    QCOMPARE(bench.journal.take(), QStringList(dialogEntry("FormCalib", "Calibrate Beltpack")));
    QCOMPARE(bench.status(), "black: Beltpack Calibration Cancelled.");
    demandRecovery();
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestBehindBoxes, QApplication)
#include "test_behind_boxes.moc"
