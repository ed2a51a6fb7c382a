#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
const QByteArray kBlankFrame(kFrameBytes, '.');  // without a character that begins a reply
}

/// The screen's ticks beside the window's other operations, which use the same port.
class TestBesideOthers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { page_ = std::make_unique<ScreenPage>(); }
    void cleanup();
    void tickInsideAnOperation();
    void ticksInsideAWholeRead();
    void versionInsideAFrame();
    void readInsideAFrame();
    void portIsChosenInsideAFrame();
    void boxInsideAFrame();

private:
    QImage shown() { return page_->picture().image().convertToFormat(QImage::Format_RGB32); }
    /// The next whole frame is shown.
    void demandRecovery();

    std::unique_ptr<ScreenPage> page_;
};

void TestBesideOthers::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
}

void TestBesideOthers::demandRecovery() {
    page_->show(pictureBytes(77));
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(77)));
}

void TestBesideOthers::tickInsideAnOperation() {
    page_->show(pictureBytes(1));
    std::size_t before = 0;
    std::size_t after = 1;
    page_->bench.duringExchange("! 0108", [&] {
        page_->receive(frame(2));
        page_->receive("");  // the reply is there as well
        before = page_->bench.wire.waiting();
        page_->tick();
        after = page_->bench.wire.waiting();
    });
    page_->bench.click("CommandDectPPVerReq");
    QCOMPARE(page_->bench.text("TextDectVerBP"), "4.07");
    QVERIFY(before > 500);
    QCOMPARE(after, before);
    page_->tick();
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(2)));
}

void TestBesideOthers::ticksInsideAWholeRead() {
    for (const QString& line : readLines(kRm5))
        page_->bench.duringExchange(line, [this] {
            page_->receive("");
            page_->tick();
        });
    page_->bench.click("CommandRdSettingsBp");
    QCOMPARE(page_->bench.status(), "green: Settings read from Beltpack successfully.");
    QCOMPARE(page_->bench.wire.lines(), readLines(kRm5));
    demandRecovery();
}

void TestBesideOthers::versionInsideAFrame() {
    page_->receive("sync" + kBlankFrame.first(100));
    page_->onceReceived([this] {
        page_->bench.click("CommandDectPPVerReq");
        page_->receive(kBlankFrame.sliced(100));
    });
    page_->tick();
    QCOMPARE(page_->bench.text("TextDectVerBP"), "4.07");
    QCOMPARE(shown(), ScreenPage::drawn(kBlankFrame.first(100)));
    page_->tick();  // takes the rest, in which there is no marker
    QCOMPARE(shown(), ScreenPage::drawn(kBlankFrame.first(100)));
    demandRecovery();
}

void TestBesideOthers::readInsideAFrame() {
    page_->receive("sync" + kBlankFrame.first(100));
    page_->onceReceived([this] { page_->bench.click("CommandRdSettingsBp"); });
    page_->tick();
    QCOMPARE(page_->bench.status(), "green: Settings read from Beltpack successfully.");
    QCOMPARE(page_->bench.wire.lines(), readLines(kRm5));
    QVERIFY(page_->bench.clock.nowMs < 10'000);  // the frame's own limit was not waited for
    demandRecovery();
}

// What the port that was left had begun, the other one does not complete.
void TestBesideOthers::portIsChosenInsideAFrame() {
    page_->receive("sync" + kBlankFrame.first(100));
    page_->bench.person.plan([](QDialog& dialog) { hand::click(*dialog.findChild<QWidget*>("CmdOK")); });
    page_->onceReceived([this] {
        page_->bench.clickMenu("mnuComPort");
        page_->receive(frame(5));
    });
    page_->tick();
    page_->bench.journal.take();
    QCOMPARE(shown(), ScreenPage::drawn(kBlankFrame.first(100)));
    page_->tick();
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(5)));
    demandRecovery();
}

void TestBesideOthers::boxInsideAFrame() {
    page_->receive("sync" + kBlankFrame.first(100));
    page_->onceReceived([this] {
        page_->bench.clickMenu("mnuAbout");
        page_->receive(kBlankFrame.sliced(100));
    });
    page_->tick();
    QCOMPARE(page_->bench.journal.take().size(), 1);
    QCOMPARE(shown(), ScreenPage::drawn(kBlankFrame));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestBesideOthers, QApplication)
#include "test_beside_others.moc"
